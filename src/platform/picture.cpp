#include "picture.h"

#include "errors.h"
#include "files.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <cstdlib>
#include <limits>
#include <vector>

namespace platform {
namespace {

quint32 little(const QByteArray& bytes, int at, int size)
{
    quint32 value = 0;
    for (int i = size - 1; i >= 0; --i)
        value = value << 8 | quint8(bytes[at + i]);
    return value;
}

} // namespace

bool truncatedBitmap(const QByteArray& file)
{
    const QByteArray head = file.left(34);
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
    const qint64 rows = std::abs(height);
    if (rows != 0 && row > (std::numeric_limits<qint64>::max() - offset) / rows)
        return true; // more pixels than any file holds
    return file.size() < qint64(offset) + row * rows;
}

namespace {

// Every window shows the theme's Main.BMP: loads of the same bytes share one decoded picture
// instead of a copy each. Known by their digest, so a file rewritten in place is read afresh.
struct Loaded {
    QByteArray digest;
    QPixmap picture;
};

std::vector<Loaded>& loadedPictures()
{
    static std::vector<Loaded> loaded;
    return loaded;
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
    QFile input(file);
    if (!input.open(QIODevice::ReadOnly))
        raiseError(ErrPathFileAccess);
    QByteArray bytes = input.readAll();
    const QByteArray digest = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
    auto& loaded = loadedPictures();
    std::erase_if(loaded, [](const Loaded& l) { return l.picture.isDetached(); }); // held by no window
    for (const Loaded& l : loaded) {
        if (l.digest == digest)
            return l.picture;
    }
    if (truncatedBitmap(bytes))
        raiseError(ErrInvalidPicture);
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    const QImage image = reader.read();
    if (image.isNull())
        raiseError(ErrInvalidPicture);
    const QPixmap picture = QPixmap::fromImage(image);
    loaded.push_back({digest, picture});
    return picture;
}

} // namespace platform
