#pragma once

#include <QString>

namespace platform {

// Paths are joined by plain concatenation and may use either slash; this desktop's file
// functions take forward slashes.
QString nativePath(const QString& path);

// The user's desktop folder (the classic desktop's "C:\Windows\Desktop\"), or the home folder
// where there is none.
QString DesktopFolder();

} // namespace platform
