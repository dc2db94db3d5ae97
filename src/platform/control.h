#pragma once
// The base of every control: a Qt widget placed in a window (or a frame) with its geometry in
// twips, its design name as the Qt object name, the common properties, and the classic events
// (Click, DblClick, MouseDown/MouseUp/MouseMove, KeyPress, Change) delivered to the window's
// handlers through the handler boundary.

#include "colors.h"
#include "form.h"
#include "key_codes.h"
#include "twips.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <cstdint>
#include <functional>
#include <vector>

namespace platform {

using Handler = std::function<void()>;
// button (1 left, 2 right, 4 middle), shift state, x and y in twips
using MouseHandler = std::function<void(int button, int shift, double x, double y)>;
// The character code; set it to 0 to swallow the key.
using KeyPressHandler = std::function<void(std::int16_t& keyAscii)>;

template <class T>
class ControlArray;

class Control : public QObject {
    Q_OBJECT
public:
    ~Control() override;

    // The control's Qt widget, for the platform and the tests.
    QWidget* widget() const { return m_widget; }
    QString Name() const { return m_widget->objectName(); }
    int Index() const { return m_index; } // -1 outside a control array

    int Left() const;
    void setLeft(int twips);
    int Top() const;
    void setTop(int twips);
    int Width() const;
    void setWidth(int twips);   // a negative size raises "Invalid property value" (380)
    int Height() const;
    void setHeight(int twips);
    void Move(int left, int top, int width, int height);

    bool Visible() const { return !m_widget->isHidden(); }
    void setVisible(bool visible) { m_widget->setVisible(visible); }
    bool Enabled() const { return m_widget->isEnabled(); }
    void setEnabled(bool enabled) { m_widget->setEnabled(enabled); }

    OleColor ForeColor() const { return m_foreColor; }
    void setForeColor(OleColor color);
    OleColor BackColor() const { return m_backColor; }
    void setBackColor(OleColor color);
    void setFont(const QString& name, double points, bool bold = false);
    // 0 transparent (what is behind shows through), 1 opaque in BackColor.
    void setBackStyle(int style);
    void setToolTipText(const QString& text) { m_widget->setToolTip(text); }
    // The name screen readers and UI automation know the control by.
    void setAccessibleName(const QString& name) { m_widget->setAccessibleName(name); }

    // 0 brings the control to the front, 1 sends it behind its siblings.
    void ZOrder(int position);
    void SetFocus() { m_widget->setFocus(); }
    // false: Tab passes the control by, and a click does not take the keyboard either (a display
    // that leaves the keyboard with the control that handles the keys).
    void setTabStop(bool stop);

    void onClick(Handler h) { m_click = std::move(h); }
    void onDblClick(Handler h) { m_dblClick = std::move(h); }
    void onMouseDown(MouseHandler h) { m_mouseDown = std::move(h); }
    void onMouseUp(MouseHandler h) { m_mouseUp = std::move(h); }
    void onMouseMove(MouseHandler h) { m_mouseMove = std::move(h); }
    void onKeyPress(KeyPressHandler h) { m_keyPress = std::move(h); }
    void onChange(Handler h) { m_change = std::move(h); }

Q_SIGNALS:
    // Every caption or text written by the program, also when it equals the one shown.
    void textWritten(const QString& text);

protected:
    Control(Container& parent, const char* name, QWidget* widget, TwipsRect rect);

    // Controls whose widget reports clicks itself (buttons, check boxes) turn this off.
    void setSynthesizedClick(bool on) { m_synthesizedClick = on; }
    // Listens to a further widget inside this one (a combo box's editor).
    void watch(QWidget* inner);
    // Takes key presses only from this widget inside the control.
    void setKeyTarget(QWidget* target) { m_keyTarget = target; }
    void raiseClick() { raiseEvent(m_click); }
    void raiseChange() { raiseEvent(m_change); }
    void raiseEvent(const Handler& handler);
    virtual void applyColors();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    template <class T>
    friend class ControlArray;
    void setIndex(int index);
    // Whether another control of the window takes the keyboard with Tab.
    bool anotherTabStop() const;

    QPointer<QWidget> m_widget;
    QPoint m_origin; // the container's client origin, in pixels
    QWidget* m_keyTarget = nullptr;
    int m_index = -1;
    TwipsMemo m_left, m_top, m_width, m_height;
    OleColor m_foreColor = vbButtonText;
    OleColor m_backColor = vbButtonFace;
    bool m_ownBackColor = false;
    bool m_ownForeColor = false;
    Qt::FocusPolicy m_tabStopFocus = Qt::StrongFocus; // the focus it takes as a tab stop
    bool m_synthesizedClick = true;
    bool m_pressed = false;

    Handler m_click, m_dblClick, m_change;
    MouseHandler m_mouseDown, m_mouseUp, m_mouseMove;
    KeyPressHandler m_keyPress;
};

// The order Tab walks the given controls of one window in, as their TabIndex 0, 1, 2, ... give it.
void SetTabOrder(const std::vector<Control*>& controls);

} // namespace platform
