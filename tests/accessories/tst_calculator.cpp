// The calculator: its state machine walked key by key through every edge of its design, then
// the real window driven with the mouse and the keyboard (typing on "=" is shown end to end):
// the focus each key leaves, Enter and Space on the focused key, the keys that click, the
// trapped overflow and the faults that end the program.

#include "accessories/calculator.h"
#include "platform/errors.h"
#include "support/input.h"
#include "support/test_main.h"
#include "support/program.h"

#include <QApplication>
#include <QTest>

using namespace platform;

namespace {

// Keys as tokens: "7", ".", "+", "=", "Back", "C", "CE", "+/-", "1/X", "%", "Sqrt", "MC", "M+",
// "MS", "MR"; "k:..." types each character on the keyboard ("k:\b" is backspace).
QStringList keys(const QString& sequence)
{
    return sequence.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

// A number typed digit by digit.
QStringList digits(const QString& number)
{
    QStringList out;
    for (const QChar c : number)
        out << QString(c);
    return out;
}

struct Outcome {
    QString display;
    QString mark;
    double memory = 0;
    double operand1 = 0;
    int untrapped = 0; // the error that ended the sequence, 0 for none
    QStringList reports;
};

Outcome run(const QStringList& tokens)
{
    CalculatorEngine c;
    Outcome out;
    const QStringList functions{"+/-", "1/X", "%", "Sqrt"}, memory{"MC", "M+", "MS", "MR"}, cancels{"Back", "C", "CE"};
    const QStringList operators(std::begin(CalculatorEngine::kOperators), std::end(CalculatorEngine::kOperators));
    try {
        for (const QString& t : tokens) {
            if (t.startsWith(QLatin1String("k:")))
                for (const QChar ch : t.mid(2))
                    c.keyPress(ch.unicode());
            else if (t.size() == 1 && t[0].isDigit())
                c.digit(t.toInt());
            else if (t == QLatin1String("."))
                c.dot();
            else if (t == QLatin1String("="))
                c.equal([&](const QString& d) { out.reports << d; });
            else if (functions.contains(t))
                c.function(int(functions.indexOf(t)));
            else if (memory.contains(t))
                c.memory(int(memory.indexOf(t)));
            else if (cancels.contains(t))
                c.cancel(int(cancels.indexOf(t)));
            else if (operators.contains(t))
                c.operatorKey(int(operators.indexOf(t)));
            else
                qFatal("unknown key %s", qPrintable(t));
        }
    } catch (const RuntimeError& e) {
        out.untrapped = e.number();
    }
    out.display = c.display;
    out.mark = c.memoryMark;
    out.memory = c.Memory;
    out.operand1 = c.Operand1;
    return out;
}

const QString kOneE200 = QStringLiteral("1") + QString(200, QLatin1Char('0'));
const QString kOneE308 = QStringLiteral("1") + QString(308, QLatin1Char('0'));

// The calculator on the screen with the keyboard on "=", as it opens.
CalculatorFRM* openCalculator(Program& p)
{
    CalculatorFRM* calc = p.open<CalculatorFRM>();
    if (calc && !QTest::qWaitFor([&] { return QApplication::focusWidget() == calc->cmdEqual.widget(); }))
        qWarning("the calculator opened without the keyboard on =");
    return calc;
}

} // namespace

class TestCalculator : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void stateMachine_data();
    void stateMachine();
    void overflowKeepsOperand1();
    void keyboardAndMouse();
    void untrappedFaultsEndTheProgram_data();
    void untrappedFaultsEndTheProgram();
};

void TestCalculator::stateMachine_data()
{
    QTest::addColumn<QStringList>("tokens");
    QTest::addColumn<QString>("display");
    QTest::addColumn<QString>("mark");
    QTest::addColumn<double>("memory");
    QTest::addColumn<int>("untrapped");
    QTest::addColumn<QStringList>("reports");
    const QStringList none;
    auto row = [&](const char* name, const QStringList& tokens, const QString& display, const QString& mark = {},
                   double memory = 0, int untrapped = 0, const QStringList& reports = {}) {
        QTest::newRow(name) << tokens << display << mark << memory << untrapped << reports;
    };

    // The edge cases of the design.
    row("7+8=", keys("7 + 8 ="), "15");
    row("7+8== reuses the result as both operands", keys("7 + 8 = ="), "30");
    row("9/0= shows 0", keys("9 / 0 ="), "0");
    row("no chained evaluation", keys("2 + 3 + 4 ="), "7");
    row("15% of 200", keys("2 0 0 + 1 5 %"), "30");
    row("then =", keys("2 0 0 + 1 5 % ="), "230");
    row("sqrt of 0 refused", keys("0 Sqrt"), "Error");
    row("MS right after an operator empties the memory", keys("3 MS C 5 + MS"), "5", "", 0);
    row("dot on a fresh display", keys("."), "0.");
    row("letter typed on 0 empties the display", keys("k:a"), "");
    row("backspace typed on 0 empties the display", keys("k:\b"), "");

    // The consequences the design requires.
    row("= with no operator after digits", keys("4 2 ="), "0");
    row("repeated * squares", keys("3 * = ="), "81");
    row("repeated / gives 1", keys("8 / 2 = ="), "1");
    row("percent: 5 is a half", keys("2 0 0 + 5 %"), "100");
    row("percent: negative reads as 0", keys("2 0 0 + 5 +/- %"), "0");
    row("percent: decimal reads as a tenth", keys("2 0 0 + 1 . 5 %"), "20");
    row("first digit replaces 0", keys("0 7"), "7");
    row("0.5 keeps growing", keys(". 5 7"), "0.57");
    row("no digit limit", keys("1 2 3 4 5 6 7 8 9 0 1 2 3 4 5 6 7 8"), "123456789012345678");
    row("digit after = starts a new number", keys("2 + 3 = 4"), "4");
    row("dot after = starts 0.", keys("2 + 3 = ."), "0.");
    row("1/X of 0 does nothing", keys("1/X"), "0");
    row("1/X of 3 to 15 digits", keys("3 1/X"), "0.333333333333333");
    row("exponent form", keys("1 0 0 0 0 0 0 0 * 1 0 0 0 0 0 0 0 0 ="), "1E+15");
    row("Back removes the last digit", keys("1 2 3 Back"), "12");
    row("Back on -5 leaves -", keys("5 +/- Back"), "-");
    row("- reads as 0", keys("5 +/- Back + 2 ="), "2");
    row("Back cannot edit a result", keys("7 + 8 = Back"), "15");
    row("C keeps the pending operator", keys("7 + 8 C 2 ="), "2");
    row("CE keeps the first operand", keys("7 + 8 CE 2 ="), "9");
    row("Error reads as 0", keys("0 Sqrt + 2 ="), "2");
    row("MS stores", keys("4 2 MS"), "42", "M", 42);
    row("MS on 0 does nothing", keys("MS"), "0", "", 0);
    row("MC empties", keys("4 2 MS MC"), "42", "", 0);
    row("MR recalls without a new number", keys("5 M+ C MR 3"), "53", "M", 5);

    // The keyboard handler: its steps run one after the other for every key.
    row("typed calculation", keys("k:12+30 ="), "42");
    row("typed decimals", keys("k:5.5+.5 ="), "6");
    row("typed 0.05", keys("k:0.05"), "0.05");
    row("typed backspace", keys("k:12\b"), "1");
    row("typed letter elsewhere does nothing", keys("k:12a"), "12");
    row("typed = is not mapped", keys("k:2+3="), "3");

    // Faults: "=" traps overflow; the other keys leave their faults to the handler boundary.
    row("overflow on =", QStringList(digits(kOneE200)) << "*" << "=", "Error!!!", "", 0, 0, QStringList{"Overflow"});
    row("overflow of a quotient", QStringList(digits(kOneE200)) << "/" << "." << digits(QString(199, QLatin1Char('0')) + "1") << "=",
        "Error!!!", "", 0, 0, QStringList{"Overflow"});
    row("after Error!!! the next number starts afresh", QStringList(digits(kOneE200)) << "*" << "=" << "+" << "5" << "=",
        "5", "", 0, 0, QStringList{"Overflow"});
    row("1/X beyond the range is untrapped", QStringList{"."} << digits(QString(320, QLatin1Char('0')) + "1") << "1/X",
        "0." + QString(320, QLatin1Char('0')) + "1", "", 0, ErrOverflow, none);
    row("M+ beyond the range is untrapped", QStringList(digits(kOneE308)) << "M+" << "M+", kOneE308, "M", 1e308,
        ErrOverflow, none);
    row("sqrt of a negative value", keys("4 +/- Sqrt"), "-4", "", 0, ErrInvalidProcedureCall, none);
    row("MS on Error", keys("0 Sqrt MS"), "Error", "M", 0, ErrTypeMismatch, none);
    row("MS on Error!!!", QStringList(digits(kOneE200)) << "*" << digits(kOneE200) << "=" << "MS", "Error!!!", "M", 0,
        ErrTypeMismatch, QStringList{"Overflow"});
    row("MS right after an operator on Error!!!", QStringList(digits(kOneE200)) << "*" << "=" << "MS", "Error!!!", "", 0, 0,
        QStringList{"Overflow"});
    row("MS on a lone minus", keys("5 +/- Back MS"), "-", "M", 0, ErrTypeMismatch, none);
    row("a number beyond the range", QStringList(digits("1" + QString(400, QLatin1Char('0')))) << "+",
        "1" + QString(400, QLatin1Char('0')), "", 0, ErrOverflow, none);
}

void TestCalculator::stateMachine()
{
    QFETCH(QStringList, tokens);
    QFETCH(QString, display);
    QFETCH(QString, mark);
    QFETCH(double, memory);
    QFETCH(int, untrapped);
    QFETCH(QStringList, reports);
    const Outcome out = run(tokens);
    QCOMPARE(out.display, display);
    QCOMPARE(out.mark, mark);
    QCOMPARE(out.memory, memory);
    QCOMPARE(out.untrapped, untrapped);
    QCOMPARE(out.reports, reports);
}

void TestCalculator::overflowKeepsOperand1()
{
    // The message box waits with "Error!!!" on the display, before NewNumber is set.
    CalculatorEngine c;
    c.display = kOneE200;
    c.operatorKey(3);
    c.NewNumber = false; // as after the second number's digits
    bool reported = false;
    c.equal([&](const QString&) {
        reported = true;
        QCOMPARE(c.display, QStringLiteral("Error!!!"));
        QVERIFY(!c.NewNumber);
    });
    QVERIFY(reported);
    QVERIFY(c.NewNumber);

    Outcome out = run(QStringList(digits(kOneE200)) << "*" << "=");
    QCOMPARE(out.operand1, 1e200);
    // A second "=" reads "Error!!!" as 0: the kept operand times 0.
    out = run(QStringList(digits(kOneE200)) << "*" << "=" << "=");
    QCOMPARE(out.display, QStringLiteral("0"));
    QCOMPARE(out.operand1, 0.0);
}

void TestCalculator::keyboardAndMouse()
{
    Program p;
    CalculatorFRM* calc = openCalculator(p);
    QVERIFY(calc);
    // An overflow on "=": the calculator's own message, and the next number starts afresh.
    input::typeInto(*calc->widget(), kOneE200 + "*");
    input::keyInto(*calc->widget(), Qt::Key_Return);
    QCOMPARE(calc->txtDisplay.Text(), QStringLiteral("Error!!!"));
    QCOMPARE(std::tuple(p.dialogs->messageBoxes, p.dialogs->messageBoxTitles, p.dialogs->messageBoxStyles),
             std::tuple(QStringList{"Overflow"}, QStringList{"Glide Path Calculator"}, QList<int>{vbCritical}));
    input::typeInto(*calc->widget(), QStringLiteral("4"));
    QCOMPARE(calc->txtDisplay.Text(), QStringLiteral("4"));
    // With the mouse: the digits alone click.
    auto focused = [&](Control& key) { return QApplication::focusWidget() == key.widget(); };
    p.log.clear();
    for (Control* key : std::initializer_list<Control*>{&calc->numero(2), &calc->numero(0), &calc->operator_(2),
                                                        &calc->numero(5), &calc->cmdEqual})
        input::click(*key);
    QCOMPARE(calc->txtDisplay.Text(), QStringLiteral("415"));
    QCOMPARE(p.log, (QStringList{"Click.WAV", "Click.WAV", "Click.WAV"}));
    // Function and memory keys keep the focus they took; digits give it back to "=".
    input::click(calc->cmdFunction(0));
    QCOMPARE(calc->txtDisplay.Text(), QStringLiteral("-415"));
    QVERIFY(focused(calc->cmdFunction(0)));
    input::click(calc->numero(1));
    QVERIFY(focused(calc->cmdEqual));
    QCOMPARE(calc->txtDisplay.Text(), QStringLiteral("1")); // "=" left a new number to start
    // A click into the display leaves the keyboard on "=".
    input::click(calc->txtDisplay);
    QVERIFY(focused(calc->cmdEqual));
    // M+ clicked keeps the keyboard: Enter and Space press it again, and typed keys go to it,
    // not to the keyboard handler, which is on "=" alone.
    input::click(calc->cmdMemory(1));
    input::keyInto(*calc->widget(), Qt::Key_Return);
    input::keyInto(*calc->widget(), Qt::Key_Space);
    QCOMPARE(std::pair(calc->state.Memory, calc->lblMem.Caption()), std::pair(3.0, QStringLiteral("M")));
    input::typeInto(*calc->widget(), QStringLiteral("9"));
    QCOMPARE(calc->txtDisplay.Text(), QStringLiteral("1"));
    QCOMPARE(p.untrappedErrors, QList<int>{});
}

void TestCalculator::untrappedFaultsEndTheProgram_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("clicked");
    QTest::addColumn<int>("error");
    QTest::newRow("square root of a negative value") << "4" << "+/- Sqrt" << int(ErrInvalidProcedureCall);
    QTest::newRow("MS on Error") << "0" << "Sqrt MS" << int(ErrTypeMismatch);
    QTest::newRow("1/X beyond the range") << "." + QString(320, QLatin1Char('0')) + "1" << "1/X" << int(ErrOverflow);
}

void TestCalculator::untrappedFaultsEndTheProgram()
{
    QFETCH(QString, typed);
    QFETCH(QString, clicked);
    QFETCH(int, error);
    Program p;
    CalculatorFRM* calc = openCalculator(p);
    QVERIFY(calc);
    input::typeInto(*calc->widget(), typed);
    const QStringList functions{"+/-", "1/X", "%", "Sqrt"};
    const QStringList memory{"MC", "M+", "MS", "MR"};
    for (const QString& k : clicked.split(' '))
        input::click(functions.contains(k) ? calc->cmdFunction(int(functions.indexOf(k))) : calc->cmdMemory(int(memory.indexOf(k))));
    QCOMPARE(p.untrappedErrors, QList<int>{error});
    QVERIFY(p.runtime().ended());
}

GLIDEPATH_TEST_MAIN(TestCalculator)
#include "tst_calculator.moc"
