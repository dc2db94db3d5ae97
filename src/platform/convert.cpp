#include "convert.h"

#include "errors.h"

#include <QLocale>
#include <QTime>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

namespace platform {
namespace {

// Classic text of a binary floating-point value with the given number of significant digits.
// Built in one character buffer: the browser status window turns two numbers into text on every
// timer tick.
QString classicNumberText(double value, int digits)
{
    if (value == 0 || std::isnan(value))
        return QStringLiteral("0");
    if (std::isinf(value))
        return value > 0 ? QStringLiteral("1.#INF") : QStringLiteral("-1.#INF");

    // to_chars, unlike printf, never follows the desktop's locale: the text form of a number
    // is the same on every desktop.
    char scientific[64];
    const char* const end = std::to_chars(scientific, scientific + sizeof scientific, std::fabs(value),
                                          std::chars_format::scientific, digits - 1).ptr;
    // scientific: d.ddddde[+-]xx
    const char* const e = std::find(static_cast<const char*>(scientific), end, 'e');
    int exponent = 0;
    std::from_chars(e + 1 + (e[1] == '+'), end, exponent);
    char mantissa[64];
    int n = 0;
    for (const char* p = scientific; p != e; ++p)
        if (*p != '.')
            mantissa[n++] = *p;
    while (n > 1 && mantissa[n - 1] == '0')
        --n;

    char text[128];
    int t = 0;
    const auto put = [&](char c) { text[t++] = c; };
    const auto putDigits = [&](int from, int to) {
        for (int i = from; i < to; ++i)
            put(mantissa[i]);
    };
    if (value < 0)
        put('-');
    const bool plain = exponent >= 0 ? exponent < digits : (-exponent - 1) + n <= digits;
    if (!plain) {
        put(mantissa[0]);
        if (n > 1) {
            put('.');
            putDigits(1, n);
        }
        put('E');
        put(exponent < 0 ? '-' : '+');
        const int magnitude = std::abs(exponent);
        if (magnitude < 10)
            put('0');
        t = int(std::to_chars(text + t, text + sizeof text, magnitude).ptr - text);
    } else if (exponent >= 0) {
        if (n <= exponent + 1) {
            putDigits(0, n);
            for (int i = n; i < exponent + 1; ++i)
                put('0');
        } else {
            putDigits(0, exponent + 1);
            put('.');
            putDigits(exponent + 1, n);
        }
    } else {
        put('0');
        put('.');
        for (int i = 0; i < -exponent - 1; ++i)
            put('0');
        putDigits(0, n);
    }
    return QString::fromLatin1(text, t);
}

bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('\n') ||
           c == QLatin1Char('\r');
}

} // namespace

QString DoubleToText(double value)
{
    return classicNumberText(value, 15);
}

QString SingleToText(float value)
{
    return classicNumberText(static_cast<double>(value), 7);
}

double Val(const QString& text)
{
    QString s;
    for (const QChar c : text)
        if (!isBlank(c))
            s += c;

    if (s.size() >= 2 && s[0] == QLatin1Char('&')) {
        const QChar kind = s[1].toUpper();
        int base = kind == QLatin1Char('H') ? 16 : kind == QLatin1Char('O') ? 8 : 0;
        if (base == 0)
            return 0;
        // Digits past 32 bits shift out, as in a Long register: a long literal never overflows.
        std::uint32_t result = 0;
        int digitCount = 0;
        for (qsizetype i = 2; i < s.size(); ++i) {
            const int digit = s[i].isDigit() && s[i].unicode() < 128 ? s[i].unicode() - '0'
                              : (s[i].toUpper() >= QLatin1Char('A') && s[i].toUpper() <= QLatin1Char('F'))
                                  ? s[i].toUpper().unicode() - 'A' + 10
                                  : -1;
            if (digit < 0 || digit >= base)
                break;
            result = result * std::uint32_t(base) + std::uint32_t(digit);
            ++digitCount;
        }
        // As the classic runtime reads them: a value that fits 16 bits (up to four hex digits,
        // six octal ones) is an Integer, so &HFFFF is -1; a longer one is a 32-bit Long.
        const bool integer = base == 16 ? digitCount <= 4 : result <= 0xFFFF && digitCount <= 6;
        if (integer)
            return static_cast<double>(static_cast<std::int16_t>(static_cast<std::uint16_t>(result)));
        return static_cast<double>(static_cast<std::int32_t>(result));
    }

    qsizetype i = 0;
    QString number;
    if (i < s.size() && (s[i] == QLatin1Char('+') || s[i] == QLatin1Char('-')))
        number += s[i++];
    bool digits = false;
    while (i < s.size() && s[i].isDigit() && s[i].unicode() < 128) {
        number += s[i++];
        digits = true;
    }
    if (i < s.size() && s[i] == QLatin1Char('.')) {
        number += s[i++];
        while (i < s.size() && s[i].isDigit() && s[i].unicode() < 128) {
            number += s[i++];
            digits = true;
        }
    }
    if (!digits)
        return 0;
    if (i < s.size() && (s[i].toUpper() == QLatin1Char('E') || s[i].toUpper() == QLatin1Char('D'))) {
        QString exponent = QStringLiteral("e");
        qsizetype j = i + 1;
        if (j < s.size() && (s[j] == QLatin1Char('+') || s[j] == QLatin1Char('-')))
            exponent += s[j++];
        bool expDigits = false;
        while (j < s.size() && s[j].isDigit() && s[j].unicode() < 128) {
            exponent += s[j++];
            expDigits = true;
        }
        if (expDigits)
            number += exponent;
    }
    return number.toDouble();
}

double TextToDouble(const QString& text)
{
    const QString trimmed = text.trimmed();
    const QLocale locale;
    bool ok = false;
    double value = locale.toDouble(trimmed, &ok);
    if (!ok) {
        // Group separators in odd places ("1,2,34") are accepted by the classic runtime.
        QString ungrouped = trimmed;
        ungrouped.remove(locale.groupSeparator());
        value = locale.toDouble(ungrouped, &ok);
    }
    if (!ok || trimmed.isEmpty())
        raiseError(ErrTypeMismatch);
    return value;
}

double RoundHalfEven(double value)
{
    return std::nearbyint(value); // the default floating-point rounding mode is half to even
}

namespace {
// Rounds half to even into the integer type; out of its range is "Overflow".
template <class Int>
Int roundInto(double value)
{
    const double rounded = RoundHalfEven(value);
    if (!(rounded >= std::numeric_limits<Int>::min() && rounded <= std::numeric_limits<Int>::max()))
        raiseError(ErrOverflow);
    return static_cast<Int>(rounded);
}
} // namespace

std::int16_t ToInteger(double value)
{
    return roundInto<std::int16_t>(value);
}

std::int32_t ToLong(double value)
{
    return roundInto<std::int32_t>(value);
}

QString FormatTwoDigits(double value)
{
    const double rounded = std::round(value);
    const QString digits =
        QString::number(std::fabs(rounded), 'f', 0).rightJustified(2, QLatin1Char('0'));
    return rounded < 0 ? QLatin1Char('-') + digits : digits;
}

Integer::Integer(int value)
{
    if (value < std::numeric_limits<std::int16_t>::min() ||
        value > std::numeric_limits<std::int16_t>::max())
        raiseError(ErrOverflow);
    m_value = static_cast<std::int16_t>(value);
}

double SecondsSinceMidnight()
{
    return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

QString TimeOfDayText()
{
    QString format = QLocale().timeFormat(QLocale::LongFormat);
    format.remove(QLatin1Char('t')); // no time zone, as the classic Time shows none
    return QTime::currentTime().toString(format.trimmed());
}

void RandomSource::Randomize(double seed)
{
    // Mix the seed's bits into the middle of the state, as the classic Randomize does, so that
    // nearby seeds (successive clock readings) give different sequences.
    std::uint64_t bits;
    std::memcpy(&bits, &seed, sizeof bits);
    const auto high = static_cast<std::uint32_t>(bits >> 32);
    const std::uint32_t mixed = (high ^ (high >> 16) ^ static_cast<std::uint32_t>(bits)) & 0xFFFF;
    m_state = ((m_state & 0xFF00FF) | (mixed << 8)) & kMask;
}

double RandomSource::Rnd()
{
    m_state = (m_state * 0x43FD43FDu + 0xC39EC3u) & kMask;
    return m_state / 16777216.0;
}

} // namespace platform
