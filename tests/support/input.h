#pragma once
// Input as the window system delivers it. A person's key goes to the window that has the
// keyboard and there to its focus widget; a click goes to the window at a point and there to
// the widget under it. These helpers send every key and click through the control's QWindow,
// the path a real keyboard and mouse take, never straight into a widget inside a control.

#include "platform/control.h"
#include "platform/form.h"

#include <QPoint>
#include <QString>

namespace input {

// Shows the control's window if needed, makes it the active window and gives the control the
// keyboard focus, as a person clicking into it would. Fails the test when it cannot.
bool focus(platform::Control& control);

// Keys to the control: it is focused first, then each key travels through its window.
void type(platform::Control& control, const QString& text);
void key(platform::Control& control, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
// Keys to whatever has the keyboard in the window, without moving the focus.
void typeInto(QWidget& window, const QString& text);
void keyInto(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
inline void typeInto(platform::Form& window, const QString& text) { typeInto(*window.widget(), text); }
inline void keyInto(platform::Form& window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    keyInto(*window.widget(), key, modifiers);
}

// Clicks at a point of the control (its middle by default), delivered to its window there.
void click(platform::Control& control, Qt::MouseButton button = Qt::LeftButton, QPoint at = {-1, -1});
void doubleClick(platform::Control& control, QPoint at = {-1, -1});
// Presses, moves and releases at points of a window's client area, in pixels.
void press(platform::Form& window, QPoint at, Qt::MouseButton button = Qt::LeftButton);
void move(platform::Form& window, QPoint at); // with the buttons press() left held
void release(platform::Form& window, QPoint at, Qt::MouseButton button = Qt::LeftButton);
void click(platform::Form& window, QPoint at, Qt::MouseButton button = Qt::LeftButton);
void doubleClick(platform::Form& window, QPoint at);

} // namespace input
