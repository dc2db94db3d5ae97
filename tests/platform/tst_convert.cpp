// The conversions' edges: where number text switches to exponent form, what the lenient and
// the strict readers accept, the rounding rules and the 16-bit overflow.

#include "platform/colors.h"
#include "platform/convert.h"
#include "platform/errors.h"

#include <QLocale>
#include <QTest>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <functional>

using namespace platform;

Q_DECLARE_METATYPE(std::function<void()>)

class TestConvert : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void doubleToText_data();
    void doubleToText();
    void singleToText_data();
    void singleToText();
    void val_data();
    void val();
    void textToDouble_data();
    void textToDouble();
    void rounding_data();
    void rounding();
    void overflow_data();
    void overflow();
    void formatTwoDigits_data();
    void formatTwoDigits();
    void palette();
    void randomSource();
};

// Every case runs on a desktop whose decimal separator is a comma: the text form of a number
// must not follow it.
void TestConvert::initTestCase()
{
    QVERIFY2(std::setlocale(LC_ALL, "de_DE.UTF-8"), "the de_DE.UTF-8 locale is missing (scripts/setup.sh makes it)");
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    char probe[16];
    std::snprintf(probe, sizeof probe, "%.1f", 1.5);
    QCOMPARE(QByteArray(probe), QByteArray("1,5"));
}

void TestConvert::doubleToText_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0.0 << "0";
    QTest::newRow("integer") << 12000.0 << "12000";
    QTest::newRow("fifteen") << 15.0 << "15";
    QTest::newRow("negative fraction") << -1.5 << "-1.5";
    QTest::newRow("15 digits stay plain") << 123456789012345.0 << "123456789012345";
    QTest::newRow("1E+15") << 1e15 << "1E+15";
    QTest::newRow("1.2E+15") << 1.2e15 << "1.2E+15";
    QTest::newRow("small plain") << 0.000056789 << "0.000056789";
    QTest::newRow("small exponent") << 5.6789e-12 << "5.6789E-12";
    QTest::newRow("exponent two digits") << 1.0 / 30000 << "3.33333333333333E-05";
    QTest::newRow("a third") << 1.0 / 3 << "0.333333333333333";
    QTest::newRow("two thirds rounds") << 2.0 / 3 << "0.666666666666667";
    QTest::newRow("binary noise hidden") << 0.1 + 0.2 << "0.3";
    QTest::newRow("huge") << 1e100 << "1E+100";
    QTest::newRow("negative tiny") << -2.5e-20 << "-2.5E-20";
    QTest::newRow("rounding carries") << 999999999999999.9 << "1E+15";
}

void TestConvert::doubleToText()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(DoubleToText(value), text);
}

void TestConvert::singleToText_data()
{
    QTest::addColumn<float>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("twips") << 12000.0f << "12000";
    QTest::newRow("six thousand") << 6000.0f << "6000";
    QTest::newRow("one and a half") << 1.5f << "1.5";
    QTest::newRow("tenth") << 0.1f << "0.1";
    QTest::newRow("third") << 1.0f / 3 << "0.3333333";
    QTest::newRow("small") << 1.5e-8f << "1.5E-08";
    QTest::newRow("large") << 123456789.0f << "1.234568E+08";
}

void TestConvert::singleToText()
{
    QFETCH(float, value);
    QFETCH(QString, text);
    QCOMPARE(SingleToText(value), text);
}

void TestConvert::val_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("leading number") << "  12abc" << 12.0;
    QTest::newRow("blanks inside") << "1 2 3" << 123.0;
    QTest::newRow("exponent") << "-3.5e2x" << -350.0;
    QTest::newRow("D exponent") << "2D3" << 2000.0;
    QTest::newRow("no number") << "abc" << 0.0;
    QTest::newRow("empty") << "" << 0.0;
    QTest::newRow("leading point") << ".5" << 0.5;
    QTest::newRow("comma stops") << "1,5" << 1.0;
    QTest::newRow("second point stops") << "12.34.56" << 12.34;
    QTest::newRow("bare exponent letter") << "7e" << 7.0;
    QTest::newRow("hex") << "&HFF" << 255.0;
    QTest::newRow("four hex digits are an Integer") << "&HFFFF" << -1.0;
    QTest::newRow("hex Integer's lowest") << "&H8000" << -32768.0;
    QTest::newRow("five hex digits are a Long") << "&H10000" << 65536.0;
    QTest::newRow("leading zero makes a Long") << "&H0FFFF" << 65535.0;
    QTest::newRow("eight hex digits") << "&HFFFFFFFF" << -1.0;
    QTest::newRow("octal") << "&o17" << 15.0;
    QTest::newRow("octal Integer") << "&O177777" << -1.0;
    QTest::newRow("octal Long") << "&O200000" << 65536.0;
    QTest::newRow("sign only") << "-" << 0.0;
}

void TestConvert::val()
{
    QFETCH(QString, text);
    QFETCH(double, value);
    QCOMPARE(Val(text), value);
}

void TestConvert::textToDouble_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("fails");
    QTest::newRow("plain") << "C" << "3.5" << 3.5 << false;
    QTest::newRow("blanks") << "C" << " 42 " << 42.0 << false;
    QTest::newRow("grouped") << "en_US" << "1,234.5" << 1234.5 << false;
    QTest::newRow("german comma") << "de_DE" << "3,5" << 3.5 << false;
    QTest::newRow("word") << "C" << "abc" << 0.0 << true;
    QTest::newRow("empty") << "C" << "" << 0.0 << true;
    QTest::newRow("trailing junk") << "C" << "1x" << 0.0 << true;
}

void TestConvert::textToDouble()
{
    QFETCH(QString, locale);
    QFETCH(QString, text);
    QFETCH(double, value);
    QFETCH(bool, fails);
    QLocale::setDefault(QLocale(locale));
    int error = 0;
    double result = 0;
    try {
        result = TextToDouble(text);
    } catch (const RuntimeError& e) {
        error = e.number();
    }
    QLocale::setDefault(QLocale::c());
    QCOMPARE(error, fails ? int(ErrTypeMismatch) : 0);
    if (!fails)
        QCOMPARE(result, value);
}

void TestConvert::rounding_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("halfEven");
    QTest::newRow("2.5 down") << 2.5 << 2.0;
    QTest::newRow("3.5 up") << 3.5 << 4.0;
    QTest::newRow("-2.5") << -2.5 << -2.0;
    QTest::newRow("0.5") << 0.5 << 0.0;
    QTest::newRow("2.4") << 2.4 << 2.0;
    QTest::newRow("2.6") << 2.6 << 3.0;
}

void TestConvert::rounding()
{
    QFETCH(double, value);
    QFETCH(double, halfEven);
    QCOMPARE(RoundHalfEven(value), halfEven);
    QCOMPARE(double(ToInteger(value)), halfEven);
    QCOMPARE(double(ToLong(value)), halfEven);
}

void TestConvert::overflow_data()
{
    QTest::addColumn<std::function<void()>>("statement");
    QTest::addColumn<bool>("overflows");
    QTest::newRow("CInt top") << std::function<void()>([] { ToInteger(32767.4); }) << false;
    QTest::newRow("CInt rounds past top") << std::function<void()>([] { ToInteger(32767.5); }) << true;
    QTest::newRow("CInt bottom half even") << std::function<void()>([] { ToInteger(-32768.5); }) << false;
    QTest::newRow("CInt below") << std::function<void()>([] { ToInteger(-32769); }) << true;
    QTest::newRow("CInt NaN") << std::function<void()>([] { ToInteger(std::nan("")); }) << true;
    QTest::newRow("Integer +1 at top") << std::function<void()>([] { Integer(32767) + Integer(1); }) << true;
    QTest::newRow("Integer -1 at bottom") << std::function<void()>([] { Integer(-32768) - Integer(1); }) << true;
    QTest::newRow("Integer inside") << std::function<void()>([] { Integer(32000) + Integer(767); }) << false;
    QTest::newRow("CLng past 2^31") << std::function<void()>([] { ToLong(2147483648.0); }) << true;
}

void TestConvert::overflow()
{
    QFETCH(std::function<void()>, statement);
    QFETCH(bool, overflows);
    int error = 0;
    try {
        statement();
    } catch (const RuntimeError& e) {
        error = e.number();
    }
    QCOMPARE(error, overflows ? int(ErrOverflow) : 0);
}

void TestConvert::formatTwoDigits_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0.0 << "00";
    QTest::newRow("one digit") << 5.0 << "05";
    QTest::newRow("half rounds away") << 2.5 << "03";
    QTest::newRow("three digits") << 99.6 << "100";
    QTest::newRow("rounds down") << 12.4 << "12";
    QTest::newRow("negative") << -3.0 << "-03";
}

void TestConvert::formatTwoDigits()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(FormatTwoDigits(value), text);
}

void TestConvert::palette()
{
    QCOMPARE(QBColor(0), 0x000000u);
    QCOMPARE(QBColor(1), 0x800000u);  // dark blue, stored as 0xBBGGRR
    QCOMPARE(QBColor(4), 0x000080u);  // dark red
    QCOMPARE(QBColor(7), 0xC0C0C0u);
    QCOMPARE(QBColor(12), 0x0000FFu); // light red
    QCOMPARE(QBColor(15), 0xFFFFFFu);
    QCOMPARE(RGB(255, 0, 0), 0x0000FFu);
    QCOMPARE(toQColor(RGB(1, 2, 3)), QColor(1, 2, 3));
    QVERIFY_THROWS_EXCEPTION(RuntimeError, QBColor(16));
}

void TestConvert::randomSource()
{
    RandomSource a, b;
    a.Randomize(12345.67);
    b.Randomize(12345.67);
    double sum = 0;
    bool inRange = true;
    for (int i = 0; i < 20000; ++i) {
        const double x = a.Rnd();
        inRange = inRange && x >= 0 && x < 1;
        QCOMPARE(x, b.Rnd());
        sum += x;
    }
    QVERIFY(inRange);
    QVERIFY(std::fabs(sum / 20000 - 0.5) < 0.02);

    RandomSource c;
    c.Randomize(12345.68); // the next clock reading gives another sequence
    RandomSource d;
    d.Randomize(12345.67);
    QVERIFY(c.Rnd() != d.Rnd());
}

QTEST_APPLESS_MAIN(TestConvert)
#include "tst_convert.moc"
