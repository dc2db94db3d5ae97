#pragma once
// SendKeys: keystrokes for the window that has the keyboard, as if typed, after the handler
// that sends them returns. The classic notation: "^" Ctrl, "%" Alt, "+" Shift before a key;
// a key is a character or a name in braces ({ENTER}, {TAB}, {ESC}, {F1} ... {F12}).

#include <QString>

namespace platform {

void SendKeys(const QString& keys);

} // namespace platform
