#pragma once
// Pictures loaded from bitmap files (the runtime's LoadPicture).

#include <QPixmap>
#include <QString>

namespace platform {

// A missing file raises "File not found" (53), a file that is no picture "Invalid picture"
// (481); the empty path gives the empty picture.
QPixmap LoadPicture(const QString& path);

// A bitmap file whose pixels end before their rows do: the image reader fills the missing rows
// in silently, where a picture cut short must not load at all.
bool truncatedBitmap(const QByteArray& file);

} // namespace platform
