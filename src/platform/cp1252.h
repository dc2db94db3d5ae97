#pragma once
// 8-bit text in the Windows-1252 code page, the program's files' encoding. Every byte from 0
// to 255 decodes to one character and encodes back to the same byte; the five bytes the code
// page leaves undefined stand for the C1 control characters of the same value.

#include <QByteArray>
#include <QString>

namespace platform {

QString decodeAnsi(const QByteArray& bytes);
// Characters outside the code page become '?', as the classic runtime writes them.
QByteArray encodeAnsi(const QString& text);

} // namespace platform
