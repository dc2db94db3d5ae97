#pragma once
// The standard controls: label, text box, command button, image, check box, combo box,
// list box, frame, line, shape, picture box, scroll bar and slider. Each is a thin Control
// over one Qt widget with the classic property names.

#include "control.h"
#include "crlf_text.h"

#include <QPixmap>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QCheckBox;
class QComboBox;
class QListWidget;
class QGroupBox;
class QAbstractSlider;

namespace platform {

// Text as the program wrote it, for one-line boxes that cannot show all of it (line breaks):
// read back exactly as written until the box shows something else.
class WrittenText {
public:
    QString read(const QString& shown) const { return shown == m_shown ? m_written : shown; }
    void wrote(const QString& written, const QString& shown)
    {
        m_written = written;
        m_shown = shown;
    }

private:
    QString m_written;
    QString m_shown;
};

// The Alignment property: where a caption or text stands across its control.
enum Alignment : int { vbLeftJustify = 0, vbRightJustify = 1, vbCenter = 2 };

// The ScrollBars property of a multi-line text box.
enum ScrollBars : int { vbSBNone = 0, vbHorizontal = 1, vbVertical = 2, vbBoth = 3 };

class Label : public Control {
public:
    Label(Container& parent, const char* name, TwipsRect rect, const QString& caption = {});
    QString Caption() const;
    void setCaption(const QString& caption);
    // The text stands at the top unless told to stand at the bottom.
    enum class Vertical { Top, Bottom };
    void setAlignment(Alignment alignment, Vertical vertical = Vertical::Top);
    void setWordWrap(bool wrap);

private:
    QLabel* label() const;
};

// Text written by the program comes back exactly as written (WrittenText); a multi-line box
// gives its typed line breaks as CR LF.
class TextBox : public Control {
public:
    enum class Lines { Single, Multi };
    TextBox(Container& parent, const char* name, TwipsRect rect, const QString& text = {},
            Lines lines = Lines::Single);
    QString Text() const;
    void setText(const QString& text);
    void setLocked(bool locked);
    // A one-line box's text stands in the middle of its height.
    void setAlignment(Alignment alignment);
    // Shown always where asked for, never where not; a multi-line box without a horizontal bar
    // wraps its lines (a one-line box has none).
    void setScrollBars(ScrollBars bars);

private:
    QString shown() const;

    // A multi-line box's text as CR LF text, followed through every change its document
    // reports; false where it could not be and the text is read whole.
    bool followed() const;
    void followChange(int position, int removed, int added);

    QLineEdit* m_single = nullptr;
    QPlainTextEdit* m_multi = nullptr;
    WrittenText m_text;
    mutable CrLfText m_crlf;
};

// Space or Enter presses the button that has the focus, as on the classic desktop. A caption
// in a symbol font the desktop lacks ("Wingdings") shows its symbol as a picture.
class CommandButton : public Control {
public:
    CommandButton(Container& parent, const char* name, TwipsRect rect, const QString& caption);
    QString Caption() const { return m_caption; }
    void setCaption(const QString& caption);
    // The caption may take the whole face: the classic button's bevel is narrower than this
    // desktop's button margins, which would clip a caption designed to fill its key.
    void setCaptionFillsFace();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPushButton* button() const;
    void showCaption();

    QString m_caption;
};

// A picture from a bitmap: at its natural size, which then sets the control's size, or
// stretched over the control.
class Image : public Control {
public:
    enum class Fit { Natural, Stretch };
    Image(Container& parent, const char* name, TwipsRect rect, Fit fit = Fit::Natural);
    const QPixmap& Picture() const { return m_picture; }
    void setPicture(const QPixmap& picture);

private:
    QLabel* label() const;
    QPixmap m_picture;
    Fit m_fit;
};

class CheckBox : public Control {
public:
    CheckBox(Container& parent, const char* name, TwipsRect rect, const QString& caption = {});
    // 0 unchecked, 1 checked, 2 grey
    int Value() const;
    void setValue(int value);
    QString Caption() const;

private:
    QCheckBox* box() const;
};

// A drop-down combo box with editable text; text written by the program comes back exactly
// as written (WrittenText).
class ComboBox : public Control {
public:
    ComboBox(Container& parent, const char* name, TwipsRect rect, const QString& text = {});
    QString Text() const;
    void setText(const QString& text);
    void AddItem(const QString& item);
    int ListCount() const;

private:
    QComboBox* combo() const;
    WrittenText m_text;
};

class ListBox : public Control {
public:
    ListBox(Container& parent, const char* name, TwipsRect rect);
    void AddItem(const QString& item);
    // An index outside the list raises "Invalid procedure call" (5).
    void RemoveItem(int index);
    void Clear();
    int ListCount() const;
    QString List(int index) const; // "" outside the list
    int ListIndex() const;         // -1: nothing selected
    void setListIndex(int index);
    QString Text() const;          // the selected item, or ""

private:
    QListWidget* list() const;
};

// A container with a caption, for grouping controls.
class Frame : public Control, public Container {
public:
    Frame(Container& parent, const char* name, TwipsRect rect, const QString& caption = {});
    QWidget* containerWidget() override { return widget(); }
    void setCaption(const QString& caption);
};

class PictureBox : public Control, public Container {
public:
    PictureBox(Container& parent, const char* name, TwipsRect rect);
    QWidget* containerWidget() override { return widget(); }
    void setPicture(const QPixmap& picture);

private:
    QLabel* label() const;
};

class ScrollBar : public Control {
public:
    enum class Orientation { Horizontal, Vertical };
    ScrollBar(Container& parent, const char* name, TwipsRect rect, Orientation orientation);
    int Min() const;
    int Max() const;
    void setRange(int min, int max);
    int Value() const;
    void setValue(int value);

protected:
    ScrollBar(Container& parent, const char* name, TwipsRect rect, QAbstractSlider* slider);
    QAbstractSlider* slider() const;
};

class Slider : public ScrollBar {
public:
    Slider(Container& parent, const char* name, TwipsRect rect);
};

} // namespace platform
