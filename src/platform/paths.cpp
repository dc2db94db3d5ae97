#include "paths.h"

namespace platform {

QString nativePath(const QString& path)
{
    QString p = path;
    p.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return p;
}

} // namespace platform
