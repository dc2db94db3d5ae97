#include "picture.h"

#include "errors.h"
#include "files.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <cstdlib>

namespace platform {
namespace {

quint32 little(const QByteArray& bytes, int at, int size)
{
    quint32 value = 0;
    for (int i = size - 1; i >= 0; --i)
        value = value << 8 | quint8(bytes[at + i]);
    return value;
}

// A bitmap file whose pixels end before their rows do: the image reader fills the missing rows
// in silently, where a picture cut short must not load at all.
bool truncatedBitmap(QFile& file)
{
    const QByteArray head = file.peek(34);
    if (head.size() < 34 || !head.startsWith("BM") || little(head, 14, 4) < 40)
        return false; // not a bitmap with a full header: the reader decides
    const quint32 offset = little(head, 10, 4);
    const qint64 width = qint32(little(head, 18, 4));
    const qint64 height = qint32(little(head, 22, 4));
    const quint32 bits = little(head, 28, 2);
    const quint32 compression = little(head, 30, 4);
    if (compression != 0 && compression != 3)
        return false; // run-length rows have no fixed size
    const qint64 row = (bits * std::abs(width) + 31) / 32 * 4;
    return file.size() < qint64(offset) + row * std::abs(height);
}

} // namespace

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
    QFile bytes(file);
    if (!bytes.open(QIODevice::ReadOnly))
        raiseError(ErrPathFileAccess);
    if (truncatedBitmap(bytes))
        raiseError(ErrInvalidPicture);
    QImageReader reader(&bytes);
    const QImage image = reader.read();
    if (image.isNull())
        raiseError(ErrInvalidPicture);
    return QPixmap::fromImage(image);
}

} // namespace platform
