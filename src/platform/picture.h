#pragma once
// Pictures loaded from bitmap files (the runtime's LoadPicture).

#include <QPixmap>
#include <QString>

namespace platform {

// A missing file raises "File not found" (53), a file that is no picture "Invalid picture"
// (481); the empty path gives the empty picture.
QPixmap LoadPicture(const QString& path);

} // namespace platform
