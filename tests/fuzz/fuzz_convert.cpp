// The number conversions on any input. Text: the lenient reading (Val) always gives a number and
// the strict one (TextToDouble) gives a number or "Type mismatch", nothing else. Numbers (the
// first eight bytes as a double, the first four as a single): written as text and read back,
// each keeps its value to the digits its text form promises, and the text reads back to the same
// text; CInt and CLng give a value in range or "Overflow".

#include "platform/convert.h"
#include "platform/cp1252.h"
#include "platform/errors.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

using namespace platform;

namespace {

void expectError(int number, auto&& statement)
{
    try {
        statement();
    } catch (const RuntimeError& e) {
        if (e.number() != number)
            std::abort();
    }
}

// value and back agree to the relative precision of the text's significant digits.
void expectClose(double value, double back, double precision)
{
    if (!std::isfinite(value))
        return;
    if (value == 0) {
        if (back != 0)
            std::abort();
        return;
    }
    if (!(std::fabs(back - value) <= precision * std::fabs(value)))
        std::abort();
}

void numbers(double value, float single)
{
    const QString text = DoubleToText(value);
    // The largest doubles round, at 15 digits, past the largest double: no text brings them back.
    if (std::isfinite(value) && std::fabs(value) < 1.79769313486231e308) {
        const double back = Val(text);
        expectClose(value, back, 1e-14);
        if (DoubleToText(back) != text) // the text is stable once written
            std::abort();
        // The strict reading follows the desktop's separators; the fuzzer runs with ".".
        if (QLocale().decimalPoint() == QLatin1String("."))
            expectClose(value, TextToDouble(text), 1e-14);
    }
    const QString singleText = SingleToText(single);
    if (std::isfinite(single))
        expectClose(single, Val(singleText), 1e-6);

    for (const double v : {value, double(single)}) {
        expectError(ErrOverflow, [&] {
            const std::int16_t i = ToInteger(v);
            if (std::fabs(v - i) > 0.5)
                std::abort();
        });
        expectError(ErrOverflow, [&] {
            const std::int32_t l = ToLong(v);
            if (std::fabs(v - l) > 0.5)
                std::abort();
        });
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = decodeAnsi(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    (void)Val(text);
    expectError(ErrTypeMismatch, [&] { (void)TextToDouble(text); });

    double value = 0;
    float single = 0;
    std::memcpy(&value, data, std::min(size, sizeof value));
    std::memcpy(&single, data, std::min(size, sizeof single));
    numbers(value, single);
    // The number the text means, when it means one, as the windows mostly meet them.
    numbers(Val(text), float(Val(text)));
    return 0;
}
