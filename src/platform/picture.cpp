#include "picture.h"

#include "errors.h"
#include "files.h"

#include <QFileInfo>
#include <QImageReader>

namespace platform {

QPixmap LoadPicture(const QString& path)
{
    if (path.isEmpty())
        return {};
    const QString file = nativePath(path);
    const QFileInfo info(file);
    if (!info.exists())
        raiseError(ErrFileNotFound);
    if (!info.isFile() || !info.isReadable())
        raiseError(ErrPathFileAccess);
    QImageReader reader(file);
    const QImage image = reader.read();
    if (image.isNull())
        raiseError(ErrInvalidPicture);
    return QPixmap::fromImage(image);
}

} // namespace platform
