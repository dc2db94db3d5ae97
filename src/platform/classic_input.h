#pragma once
// What the classic events receive from Qt's input events: the button codes, the shift state
// and the character code of a key press.

#include "cp1252.h"
#include "key_codes.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace platform {

inline int classicButton(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton: return 1;
    case Qt::RightButton: return 2;
    case Qt::MiddleButton: return 4;
    default: return 0;
    }
}

// The buttons held, as a move reports them (Qt's move events name no button of their own).
inline int classicButtons(Qt::MouseButtons buttons)
{
    return (buttons & Qt::LeftButton ? 1 : 0) | (buttons & Qt::RightButton ? 2 : 0) |
           (buttons & Qt::MiddleButton ? 4 : 0);
}

inline int classicShift(Qt::KeyboardModifiers modifiers)
{
    return (modifiers & Qt::ShiftModifier ? 1 : 0) | (modifiers & Qt::ControlModifier ? 2 : 0) |
           (modifiers & Qt::AltModifier ? 4 : 0);
}

// The character code a key press delivers to KeyPress, or -1 for keys that deliver none.
inline int keyAscii(const QKeyEvent& key)
{
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return vbKeyReturn;
    case Qt::Key_Backspace: return vbKeyBack;
    case Qt::Key_Escape: return vbKeyEscape;
    case Qt::Key_Tab: return vbKeyTab;
    default: break;
    }
    const QString text = key.text();
    if (text.size() != 1)
        return -1;
    return static_cast<unsigned char>(encodeAnsi(text).at(0));
}

} // namespace platform
