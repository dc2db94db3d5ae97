#pragma once
// The character codes a KeyPress handler receives for the keys that have no letter, under their
// classic names.

namespace platform {

enum KeyCode : int { vbKeyBack = 8, vbKeyTab = 9, vbKeyReturn = 13, vbKeyEscape = 27 };

} // namespace platform
