// Delimited fields of any text: the reader always ends, each field is a piece of the input,
// and no field holds a delimiter unless it was quoted.

#include "platform/cp1252.h"
#include "platform/errors.h"
#include "platform/field_reader.h"

#include <cstdint>
#include <cstdlib>

using namespace platform;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = decodeAnsi(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    FieldReader reader(text);
    qsizetype fields = 0;
    while (!reader.atEnd()) {
        const QString field = reader.next();
        if (++fields > text.size() + 1)
            std::abort(); // every field consumes input
        if (field.contains(QLatin1Char('\n')) || field.contains(QLatin1Char('\r'))) {
            if (!text.contains(QLatin1Char('"')))
                std::abort();
        } else if (!text.contains(field)) {
            std::abort();
        }
    }
    try {
        reader.next();
        std::abort(); // past the end must raise
    } catch (const RuntimeError& e) {
        if (e.number() != ErrInputPastEndOfFile)
            std::abort();
    }
    return 0;
}
