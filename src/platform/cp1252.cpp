#include "cp1252.h"

#include <array>
#include <unordered_map>

namespace platform {
namespace {

// Bytes 0x80..0x9F; everything else maps to the code point of the same value.
constexpr std::array<char16_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

const std::unordered_map<char16_t, char>& reverseTable()
{
    static const auto table = [] {
        std::unordered_map<char16_t, char> t;
        for (int i = 0; i < 32; ++i)
            t.emplace(kHighControls[i], static_cast<char>(0x80 + i));
        return t;
    }();
    return table;
}

} // namespace

QString decodeAnsi(const QByteArray& bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    QChar* out = text.data();
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        *out++ = (b >= 0x80 && b < 0xA0) ? QChar(kHighControls[b - 0x80]) : QChar(b);
    }
    return text;
}

QByteArray encodeAnsi(const QString& text)
{
    // Latin-1 first (fast on long texts: a note pad writes its whole note on every keystroke),
    // then the characters that the code page places elsewhere or lacks.
    QByteArray bytes = text.toLatin1();
    const auto* in = reinterpret_cast<const char16_t*>(text.utf16());
    const qsizetype size = text.size();
    bool elsewhere = false; // a branch-free pass first: most texts have no such character
    for (qsizetype i = 0; i < size; ++i)
        elsewhere |= char16_t(in[i] - 0x80) < 0x20 || in[i] > 0xFF;
    if (!elsewhere)
        return bytes;
    char* out = bytes.data();
    for (qsizetype i = 0; i < size; ++i) {
        const char16_t u = in[i];
        if (char16_t(u - 0x80) < 0x20 || u > 0xFF) {
            const auto it = reverseTable().find(u);
            out[i] = it != reverseTable().end() ? it->second : '?';
        }
    }
    return bytes;
}

} // namespace platform
