#pragma once
// The conversions the windows use, each under its own name: the classic runtime has several
// that look alike and differ at the edges, and the windows depend on those edges.

#include <QString>
#include <cstdint>

namespace platform {

// Double to text as the classic runtime writes it (CStr): up to 15 significant digits, no
// leading blank; exponent form ("1E+15", "5.6789E-12") once the plain form would need more
// than 15 digits, so 0.000056789 stays plain.
QString DoubleToText(double value);
// The same for a single-precision value, with 7 significant digits.
QString SingleToText(float value);

// Val: the leading number of a text, blanks anywhere ignored, "." as the decimal point,
// "&H"/"&O" prefixes for hexadecimal and octal; a text that starts with anything else is 0.
double Val(const QString& text);

// CDbl of a text: locale-aware (the desktop's decimal and group separators) and strict; a text
// that is not a number raises "Type mismatch" (13).
double TextToDouble(const QString& text);

// Banker's rounding: halves go to the even neighbour (2.5 -> 2, 3.5 -> 4).
double RoundHalfEven(double value);

// CInt: rounds half to even into a 16-bit integer; out of range raises "Overflow" (6).
std::int16_t ToInteger(double value);

// CLng: rounds half to even into a 32-bit integer; out of range raises "Overflow" (6).
std::int32_t ToLong(double value);

// Format(value, "00"): rounded half away from zero, at least two digits.
QString FormatTwoDigits(double value);

// The classic 16-bit signed Integer: arithmetic that leaves -32768..32767 raises "Overflow".
class Integer {
public:
    constexpr Integer() = default;
    Integer(int value); // raises Overflow when out of range
    constexpr int value() const { return m_value; }
    Integer operator+(Integer other) const { return Integer(m_value + other.m_value); }
    Integer operator-(Integer other) const { return Integer(m_value - other.m_value); }
    Integer& operator+=(Integer other) { return *this = *this + other; }
    Integer& operator-=(Integer other) { return *this = *this - other; }
    auto operator<=>(const Integer&) const = default;

private:
    std::int16_t m_value = 0;
};

// Seconds since midnight, with the fraction (the runtime's Timer).
double SecondsSinceMidnight();
// The time of day in the desktop's time format, seconds included (the runtime's Time).
QString TimeOfDayText();

// A seedable uniform source of numbers in [0, 1) (the runtime's Rnd and Randomize): a 24-bit
// linear congruential generator, so a given seed gives the same sequence on every machine.
class RandomSource {
public:
    explicit RandomSource(std::uint32_t state = 0x50000) : m_state(state & kMask) {}
    void Randomize(double seed);
    double Rnd();

private:
    static constexpr std::uint32_t kMask = 0xFFFFFF;
    std::uint32_t m_state;
};

} // namespace platform
