#include "paths.h"

#include <QDir>
#include <QStandardPaths>

namespace platform {

QString nativePath(const QString& path)
{
    QString p = path;
    p.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return p;
}

QString DesktopFolder()
{
    const QString desktop = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    return QDir(desktop).exists() ? desktop : QDir::homePath();
}

} // namespace platform
