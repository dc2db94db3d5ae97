// The Windows-1252 codec on any input: bytes decoded and encoded again are the same bytes; any
// text encodes to one byte per character, each either the character's own or '?', and those
// bytes decode to the text with only the '?' places changed.

#include "platform/cp1252.h"

#include <cstdint>
#include <cstdlib>

using namespace platform;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const QString text = decodeAnsi(bytes);
    if (text.size() != bytes.size() || encodeAnsi(text) != bytes)
        std::abort();

    // The same bytes read as UTF-16 text: any character at all, surrogates included.
    const QString any(reinterpret_cast<const QChar*>(data), qsizetype(size / 2));
    const QByteArray encoded = encodeAnsi(any);
    if (encoded.size() != any.size())
        std::abort();
    const QString back = decodeAnsi(encoded);
    for (qsizetype i = 0; i < any.size(); ++i)
        if (back[i] != any[i] && encoded[i] != '?')
            std::abort();
    return 0;
}
