#include "controls.h"

#include "errors.h"
#include "symbol_glyphs.h"

#include <algorithm>

#include <QCheckBox>
#include <QFontInfo>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextOption>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>

namespace platform {

// Label ---------------------------------------------------------------------------------

Label::Label(Container& parent, const char* name, TwipsRect rect, const QString& caption)
    : Control(parent, name, new QLabel(caption), rect)
{
    label()->setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

QLabel* Label::label() const { return static_cast<QLabel*>(widget()); }
QString Label::Caption() const { return label()->text(); }
void Label::setCaption(const QString& caption)
{
    if (label()->text() != caption) // the same text again needs no repaint
        label()->setText(caption);
    Q_EMIT textWritten(caption);
}
void Label::setWordWrap(bool wrap) { label()->setWordWrap(wrap); }

namespace {
Qt::Alignment across(Alignment alignment)
{
    switch (alignment) {
    case vbRightJustify: return Qt::AlignRight;
    case vbCenter: return Qt::AlignHCenter;
    default: return Qt::AlignLeft;
    }
}
} // namespace

void Label::setAlignment(Alignment alignment, Vertical vertical)
{
    label()->setAlignment(across(alignment) | (vertical == Vertical::Bottom ? Qt::AlignBottom : Qt::AlignTop));
}

// TextBox -------------------------------------------------------------------------------

namespace {
QWidget* makeTextWidget(TextBox::Lines lines)
{
    if (lines == TextBox::Lines::Multi)
        return new QPlainTextEdit;
    return new QLineEdit;
}
} // namespace

TextBox::TextBox(Container& parent, const char* name, TwipsRect rect, const QString& text, Lines lines)
    : Control(parent, name, makeTextWidget(lines), rect)
{
    if (lines == Lines::Multi) {
        m_multi = static_cast<QPlainTextEdit*>(widget());
        m_multi->setTabChangesFocus(true); // as the classic box: Tab moves on, it types nothing
        QObject::connect(m_multi->document(), &QTextDocument::contentsChange, this,
                         [this](int position, int removed, int added) { followChange(position, removed, added); });
        setText(text);
        watch(m_multi->viewport());
        QObject::connect(m_multi, &QPlainTextEdit::textChanged, this, [this] { raiseChange(); });
    } else {
        m_single = static_cast<QLineEdit*>(widget());
        setText(text);
        QObject::connect(m_single, &QLineEdit::textChanged, this, [this] { raiseChange(); });
    }
}

QString TextBox::shown() const
{
    if (!m_multi)
        return m_single->text();
    // A classic multi-line box holds its line breaks as CR LF, typed ones included, and every
    // other character as it stands (a no-break space stays one).
    if (followed())
        return m_crlf.text();
    return CrLfText::withCrLf(m_multi->toPlainText());
}

bool TextBox::followed() const
{
    if (!m_crlf.following()) {
        const QTextDocument* document = m_multi->document();
        m_crlf.start(document->toRawText(), document->characterCount());
    }
    return m_crlf.following();
}

void TextBox::followChange(int position, int removed, int added)
{
    QTextDocument* document = m_multi->document();
    m_crlf.follow(position, removed, added, document->characterCount(), [document](int from, int to) {
        QTextCursor cursor(document);
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        return cursor.selectedText();
    });
}

QString TextBox::Text() const
{
    return m_text.read(shown());
}

// Every text the program writes to a text box, for following a window from outside
// (QT_LOGGING_RULES="glidepath.text=true"): "Window.Control: text".
Q_LOGGING_CATEGORY(lcText, "glidepath.text", QtWarningMsg)

void TextBox::setText(const QString& text)
{
    qCInfo(lcText).noquote() << widget()->window()->objectName() + QLatin1Char('.') + Name() + QLatin1String(": ") + text;
    if (m_multi)
        m_multi->setPlainText(text);
    else
        m_single->setText(text);
    m_text.wrote(text, shown());
}

void TextBox::setLocked(bool locked)
{
    if (m_multi)
        m_multi->setReadOnly(locked);
    else
        m_single->setReadOnly(locked);
}

void TextBox::setAlignment(Alignment alignment)
{
    if (m_multi)
        m_multi->document()->setDefaultTextOption(QTextOption(across(alignment)));
    else
        m_single->setAlignment(across(alignment) | Qt::AlignVCenter);
}

void TextBox::setScrollBars(ScrollBars bars)
{
    if (!m_multi)
        return;
    const bool horizontal = bars & vbHorizontal;
    m_multi->setVerticalScrollBarPolicy(bars & vbVertical ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    m_multi->setHorizontalScrollBarPolicy(horizontal ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    m_multi->setLineWrapMode(horizontal ? QPlainTextEdit::NoWrap : QPlainTextEdit::WidgetWidth);
}

// CommandButton -------------------------------------------------------------------------

CommandButton::CommandButton(Container& parent, const char* name, TwipsRect rect, const QString& caption)
    : Control(parent, name, new QPushButton(caption), rect), m_caption(caption)
{
    setSynthesizedClick(false);
    QObject::connect(button(), &QPushButton::clicked, this, [this] { raiseClick(); });
}

bool CommandButton::eventFilter(QObject* watched, QEvent* event)
{
    // KeyPress first (its handler may swallow the key); then Enter clicks. Space is the
    // button's own.
    if (Control::eventFilter(watched, event))
        return true;
    if (event->type() == QEvent::FontChange && watched == widget())
        showCaption();
    if (event->type() == QEvent::KeyPress && watched == widget()) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) &&
            (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier &&
            !key->isAutoRepeat()) {
            button()->click();
            return true;
        }
    }
    return false;
}

QPushButton* CommandButton::button() const { return static_cast<QPushButton*>(widget()); }

void CommandButton::setCaptionFillsFace()
{
    button()->setStyleSheet(QStringLiteral("padding: 0px"));
}
void CommandButton::setCaption(const QString& caption)
{
    m_caption = caption;
    showCaption();
}

void CommandButton::showCaption()
{
    const QFont font = button()->font();
    if (isSymbolFont(font.family()) && m_caption.size() == 1) {
        const int size = QFontInfo(font).pixelSize() + 4;
        const QPixmap glyph = symbolGlyph(font.family(), m_caption.at(0), size, button()->palette().color(QPalette::ButtonText));
        if (!glyph.isNull()) {
            button()->setText(QString());
            button()->setIcon(QIcon(glyph));
            button()->setIconSize(glyph.size());
            return;
        }
    }
    button()->setIcon(QIcon());
    button()->setText(m_caption);
}

// Image ---------------------------------------------------------------------------------

Image::Image(Container& parent, const char* name, TwipsRect rect, Fit fit)
    : Control(parent, name, new QLabel, rect), m_fit(fit)
{
    label()->setScaledContents(fit == Fit::Stretch);
}

QLabel* Image::label() const { return static_cast<QLabel*>(widget()); }

void Image::setPicture(const QPixmap& picture)
{
    m_picture = picture;
    label()->setPixmap(picture);
    if (m_fit == Fit::Natural && !picture.isNull()) {
        setWidth(toTwipsX(picture.width()));
        setHeight(toTwipsY(picture.height()));
    }
}

// CheckBox ------------------------------------------------------------------------------

CheckBox::CheckBox(Container& parent, const char* name, TwipsRect rect, const QString& caption)
    : Control(parent, name, new QCheckBox(caption), rect)
{
    box()->setTristate(false);
    setBackColor(vbButtonFace); // opaque, as a classic check box is
    setSynthesizedClick(false);
    QObject::connect(box(), &QCheckBox::clicked, this, [this] { raiseClick(); });
}

QCheckBox* CheckBox::box() const { return static_cast<QCheckBox*>(widget()); }
QString CheckBox::Caption() const { return box()->text(); }

int CheckBox::Value() const
{
    switch (box()->checkState()) {
    case Qt::Checked: return 1;
    case Qt::PartiallyChecked: return 2;
    default: return 0;
    }
}

void CheckBox::setValue(int value)
{
    if (value < 0 || value > 2)
        raiseError(ErrInvalidPropertyValue);
    if (value == 2)
        box()->setTristate(true);
    box()->setCheckState(value == 1 ? Qt::Checked : value == 2 ? Qt::PartiallyChecked : Qt::Unchecked);
}

// ComboBox ------------------------------------------------------------------------------

ComboBox::ComboBox(Container& parent, const char* name, TwipsRect rect, const QString& text)
    : Control(parent, name, new QComboBox, rect)
{
    combo()->setEditable(true);
    combo()->setInsertPolicy(QComboBox::NoInsert);
    setText(text);
    watch(combo()->lineEdit()); // clicks land on the editor
    // Keys come to the box itself: it is its editor's focus proxy, and hands each key to the
    // editor by calling it directly, past any filter there.
    setKeyTarget(combo());
    QObject::connect(combo(), &QComboBox::editTextChanged, this, [this] { raiseChange(); });
}

QComboBox* ComboBox::combo() const { return static_cast<QComboBox*>(widget()); }
QString ComboBox::Text() const
{
    return m_text.read(combo()->currentText());
}

void ComboBox::setText(const QString& text)
{
    combo()->setEditText(text);
    m_text.wrote(text, combo()->currentText());
}
void ComboBox::AddItem(const QString& item) { combo()->addItem(item); }
int ComboBox::ListCount() const { return combo()->count(); }

// ListBox -------------------------------------------------------------------------------

ListBox::ListBox(Container& parent, const char* name, TwipsRect rect)
    : Control(parent, name, new QListWidget, rect)
{
    watch(list()->viewport());
}

QListWidget* ListBox::list() const { return static_cast<QListWidget*>(widget()); }
void ListBox::AddItem(const QString& item) { list()->addItem(item); }
void ListBox::Clear() { list()->clear(); }
int ListBox::ListCount() const { return list()->count(); }
// The selected entry. Qt's current item alone selects nothing: the list gives one to itself
// when it takes the focus and moves it beside an entry removed, where the classic list box
// leaves no entry selected.
int ListBox::ListIndex() const
{
    const QList<QListWidgetItem*> selected = list()->selectedItems();
    return selected.isEmpty() ? -1 : list()->row(selected.first());
}

void ListBox::setListIndex(int index)
{
    list()->clearSelection();
    list()->setCurrentRow(index);
}

void ListBox::RemoveItem(int index)
{
    if (index < 0 || index >= list()->count())
        raiseError(ErrInvalidProcedureCall);
    delete list()->takeItem(index);
    list()->clearSelection();
}

QString ListBox::List(int index) const
{
    const QListWidgetItem* item = list()->item(index);
    return item ? item->text() : QString();
}

QString ListBox::Text() const
{
    return List(ListIndex());
}

// Frame ---------------------------------------------------------------------------------

Frame::Frame(Container& parent, const char* name, TwipsRect rect, const QString& caption)
    : Control(parent, name, new QGroupBox(caption), rect)
{
}

void Frame::setCaption(const QString& caption) { static_cast<QGroupBox*>(widget())->setTitle(caption); }

// PictureBox ----------------------------------------------------------------------------

PictureBox::PictureBox(Container& parent, const char* name, TwipsRect rect)
    : Control(parent, name, new QLabel, rect)
{
    label()->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setBackColor(vbButtonFace);
}

QLabel* PictureBox::label() const { return static_cast<QLabel*>(widget()); }
void PictureBox::setPicture(const QPixmap& picture) { label()->setPixmap(picture); }

// ScrollBar and Slider ------------------------------------------------------------------

ScrollBar::ScrollBar(Container& parent, const char* name, TwipsRect rect, Orientation orientation)
    : ScrollBar(parent, name, rect,
                new QScrollBar(orientation == Orientation::Horizontal ? Qt::Horizontal : Qt::Vertical))
{
}

ScrollBar::ScrollBar(Container& parent, const char* name, TwipsRect rect, QAbstractSlider* slider)
    : Control(parent, name, slider, rect)
{
    slider->setRange(0, 32767);
    QObject::connect(slider, &QAbstractSlider::valueChanged, this, [this] { raiseChange(); });
}

QAbstractSlider* ScrollBar::slider() const { return static_cast<QAbstractSlider*>(widget()); }
int ScrollBar::Min() const { return slider()->minimum(); }
int ScrollBar::Max() const { return slider()->maximum(); }
void ScrollBar::setRange(int min, int max) { slider()->setRange(min, max); }
int ScrollBar::Value() const { return slider()->value(); }

void ScrollBar::setValue(int value)
{
    if (value < slider()->minimum() || value > slider()->maximum())
        raiseError(ErrInvalidPropertyValue);
    slider()->setValue(value);
}

Slider::Slider(Container& parent, const char* name, TwipsRect rect)
    : ScrollBar(parent, name, rect, new QSlider(Qt::Horizontal))
{
}

} // namespace platform
