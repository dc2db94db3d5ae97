#pragma once

#include <QString>

namespace platform {

// Paths are joined by plain concatenation and may use either slash; this desktop's file
// functions take forward slashes.
QString nativePath(const QString& path);

} // namespace platform
