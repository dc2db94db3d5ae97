// Profiles of any bytes: reading never crashes, and a value written is read back as written
// (for names a profile can hold: no line breaks, brackets at the start, '=' or edge blanks).

#include "platform/cp1252.h"
#include "platform/profile.h"

#include <QList>

#include <cstdint>
#include <cstdlib>

using namespace platform;

namespace {

bool holdable(const QString& name, bool isKey)
{
    if (name.isEmpty() || name.trimmed() != name)
        return false;
    for (const QChar c : name)
        if (c == QLatin1Char('\r') || c == QLatin1Char('\n') || c == QChar(0) || (isKey && c == QLatin1Char('=')) ||
            (!isKey && c == QLatin1Char(']')))
            return false;
    return !(isKey && name.startsWith(QLatin1Char('[')));
}

bool holdableValue(const QString& value)
{
    if (value.trimmed() != value || value.contains(QLatin1Char('\r')) || value.contains(QLatin1Char('\n')))
        return false;
    // A value in a pair of quotes loses them on reading.
    return !(value.size() >= 2 && (value.front() == QLatin1Char('"') || value.front() == QLatin1Char('\'')) &&
             value.back() == value.front());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // Layout: three short fields separated by NUL, then the profile text.
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const QList<QByteArray> parts = bytes.split('\0');
    if (parts.size() < 4)
        return 0;
    const QString section = decodeAnsi(parts[0]);
    const QString key = decodeAnsi(parts[1]);
    const QString value = decodeAnsi(parts[2]);
    const QString text = decodeAnsi(bytes.mid(parts[0].size() + parts[1].size() + parts[2].size() + 3));

    (void)profileValue(text, section, key);
    const QString written = profileWithValue(text, section, key, value);
    if (holdable(section, false) && holdable(key, true) && holdableValue(value)) {
        const auto back = profileValue(written, section, key);
        if (!back || *back != value)
            std::abort();
    }
    return 0;
}
