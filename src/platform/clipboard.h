#pragma once

#include <QString>

namespace platform {

// The clipboard's SetText: puts the text there without clearing it first.
void ClipboardSetText(const QString& text);

} // namespace platform
