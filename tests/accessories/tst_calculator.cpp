// The calculator: its state machine walked key by key through every edge of its design, then
// the real window driven with the real keyboard and mouse: the key table's layout, the focus
// that returns to "=", Enter and Space on the focused key, the trapped overflow and the faults
// that end the program.

#include "accessories/calculator.h"
#include "startup/theme_selector.h"
#include "platform/convert.h"
#include "platform/errors.h"
#include "platform/sounds.h"
#include "support/input.h"
#include "support/test_runtime.h"

#include <QApplication>
#include <QFontInfo>
#include <QLineEdit>
#include <QTest>

#include <cmath>

using namespace platform;

namespace {

const QString kThemes = QStringLiteral(GLIDEPATH_SOURCE_DIR "/themes");

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
    const QStringList functions{"+/-", "1/X", "%", "Sqrt"};
    const QStringList memory{"MC", "M+", "MS", "MR"};
    const QStringList cancels{"Back", "C", "CE"};
    try {
        for (const QString& t : tokens) {
            if (t.startsWith(QLatin1String("k:"))) {
                for (const QChar ch : t.mid(2))
                    c.keyPress(ch.unicode());
            } else if (t.size() == 1 && t[0].isDigit()) {
                c.digit(t.toInt());
            } else if (t == QLatin1String(".")) {
                c.dot();
            } else if (t == QLatin1String("=")) {
                c.equal([&](const QString& d) { out.reports << d; });
            } else if (functions.contains(t)) {
                c.function(int(functions.indexOf(t)));
            } else if (memory.contains(t)) {
                c.memory(int(memory.indexOf(t)));
            } else if (cancels.contains(t)) {
                c.cancel(int(cancels.indexOf(t)));
            } else {
                bool found = false;
                for (int i = 0; i < 4; ++i)
                    if (t == CalculatorEngine::kOperators[i]) {
                        c.operatorKey(i);
                        found = true;
                    }
                if (!found)
                    qFatal("unknown key %s", qPrintable(t));
            }
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
CalculatorFRM& openCalculator()
{
    form<ThemeSelector>().TPath.setText(kThemes + "/Default");
    CalculatorFRM& calc = form<CalculatorFRM>();
    calc.Show();
    if (!QTest::qWaitForWindowActive(calc.widget()))
        qWarning("the calculator did not become active");
    if (!QTest::qWaitFor([&] { return QApplication::focusWidget() == calc.cmdEqual.widget(); }))
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
    void keyTable_data();
    void keyTable();
    void calculationTypedOnTheKeyboard();
    void enterAndSpacePressTheFocusedKey();
    void clickedKeysAndSounds();
    void overflowShowsTheMessageBox();
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
    row("sqrt of 4", keys("4 Sqrt"), "2");
    row("MS right after an operator empties the memory", keys("3 MS C 5 + MS"), "5", "", 0);
    row("dot on a fresh display", keys("."), "0.");
    row("second dot changes nothing", keys(". ."), "0.");
    row("letter typed on 0 empties the display", keys("k:a"), "");
    row("backspace typed on 0 empties the display", keys("k:\b"), "");

    // The consequences the design requires.
    row("= with no operator", keys("="), "0");
    row("= with no operator after digits", keys("4 2 ="), "0");
    row("repeated * squares", keys("3 * = ="), "81");
    row("repeated - gives 0", keys("2 + 3 = C 5 - 3 = ="), "0");
    row("repeated / gives 1", keys("8 / 2 = ="), "1");
    row("percent: 5 is a half", keys("2 0 0 + 5 %"), "100");
    row("percent: 100 is a tenth", keys("2 0 0 + 1 0 0 %"), "20");
    row("percent: negative reads as 0", keys("2 0 0 + 5 +/- %"), "0");
    row("percent: decimal reads as a tenth", keys("2 0 0 + 1 . 5 %"), "20");
    row("percent before any operator", keys("5 0 %"), "0");
    row("first digit replaces 0", keys("0 7"), "7");
    row("0.5 keeps growing", keys(". 5 7"), "0.57");
    row("0.05", keys("0 . 0 5"), "0.05");
    row("no digit limit", keys("1 2 3 4 5 6 7 8 9 0 1 2 3 4 5 6 7 8"), "123456789012345678");
    row("digit after = starts a new number", keys("2 + 3 = 4"), "4");
    row("dot after = starts 0.", keys("2 + 3 = ."), "0.");
    row("+/-", keys("5 +/-"), "-5");
    row("+/- of 0", keys("+/-"), "0");
    row("1/X", keys("4 1/X"), "0.25");
    row("1/X of 0 does nothing", keys("1/X"), "0");
    row("1/X of 3 to 15 digits", keys("3 1/X"), "0.333333333333333");
    row("exponent form", keys("1 0 0 0 0 0 0 0 * 1 0 0 0 0 0 0 0 0 ="), "1E+15");
    row("Back removes the last digit", keys("1 2 3 Back"), "12");
    row("Back on one digit gives 0", keys("5 Back"), "0");
    row("Back on -5 leaves -", keys("5 +/- Back"), "-");
    row("- reads as 0", keys("5 +/- Back + 2 ="), "2");
    row("Back cannot edit a result", keys("7 + 8 = Back"), "15");
    row("C keeps the pending operator", keys("7 + 8 C 2 ="), "2");
    row("CE keeps the first operand", keys("7 + 8 CE 2 ="), "9");
    row("Error reads as 0", keys("0 Sqrt + 2 ="), "2");
    row("M+ marks and adds", keys("5 M+ M+"), "5", "M", 10);
    row("M+ on 0 does nothing", keys("M+"), "0", "", 0);
    row("MS stores", keys("4 2 MS"), "42", "M", 42);
    row("MS on 0 does nothing", keys("MS"), "0", "", 0);
    row("MC empties", keys("4 2 MS MC"), "42", "", 0);
    row("MR recalls without a new number", keys("5 M+ C MR 3"), "53", "M", 5);
    row("MR of 0 then a digit", keys("MR 3"), "3");

    // The keyboard handler: its steps run one after the other for every key.
    row("typed calculation", keys("k:12+30 ="), "42");
    row("typed operators", keys("k:6*7 ="), "42");
    row("typed minus on 0", keys("k:-5 ="), "-5");
    row("typed decimals", keys("k:5.5+.5 ="), "6");
    row("typed dot on 0", keys("k:."), "0.");
    row("typed 0.05", keys("k:0.05"), "0.05");
    row("typed backspace", keys("k:12\b"), "1");
    row("typed letter elsewhere does nothing", keys("k:12a"), "12");
    row("typed = is not mapped", keys("k:2+3="), "3");
    row("typed division by zero", keys("k:9/0 ="), "0");

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

void TestCalculator::keyTable_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QRect>("twips");
    QTest::addColumn<double>("points");
    QTest::addColumn<bool>("bold");
    auto key = [](const char* name, int index, const char* caption, int left, int top, int width = 495,
                  double points = 12, bool bold = false) {
        QTest::addRow("%s(%d) %s", name, index, caption)
            << QString::fromLatin1(name) << index << QString::fromLatin1(caption) << QRect(left, top, width, 495)
            << points << bold;
    };
    key("cmdCancel", 0, "Back", 720, 600, 975);
    key("cmdCancel", 2, "CE", 1800, 600, 975);
    key("cmdCancel", 1, "C", 2880, 600, 735);
    key("cmdMemory", 0, "MC", 120, 1200, 495, 12, true);
    key("cmdMemory", 3, "MR", 120, 1800, 495, 12, true);
    key("cmdMemory", 2, "MS", 120, 2400, 495, 12, true);
    key("cmdMemory", 1, "M+", 120, 3000, 495, 12, true);
    const int columns[] = {720, 1320, 1920};
    for (int d = 1; d <= 9; ++d)
        key("numero", d, qPrintable(QString::number(d)), columns[(d - 1) % 3], 2400 - (d - 1) / 3 * 600);
    key("numero", 0, "0", 720, 3000);
    key("cmdDot", -1, ".", 1320, 3000);
    key("cmdFunction", 0, "+/-", 1920, 3000, 495, 8.25);
    key("operator", 0, "/", 2520, 1200);
    key("operator", 3, "*", 2520, 1800);
    key("operator", 2, "-", 2520, 2400);
    key("operator", 1, "+", 2520, 3000);
    key("cmdFunction", 3, "Sqrt", 3120, 1200, 495, 6.75);
    key("cmdFunction", 2, "%", 3120, 1800);
    key("cmdFunction", 1, "1/X", 3120, 2400, 495, 8.25);
    key("cmdEqual", -1, "=", 3120, 3000);
}

void TestCalculator::keyTable()
{
    QFETCH(QString, name);
    QFETCH(int, index);
    QFETCH(QString, caption);
    QFETCH(QRect, twips);
    QFETCH(double, points);
    QFETCH(bool, bold);
    TestRuntime t;
    form<ThemeSelector>().TPath.setText(kThemes + "/Default");
    CalculatorFRM& calc = form<CalculatorFRM>();
    CommandButton* key = nullptr;
    if (name == QLatin1String("cmdDot"))
        key = &calc.cmdDot;
    else if (name == QLatin1String("cmdEqual"))
        key = &calc.cmdEqual;
    else if (name == QLatin1String("cmdCancel"))
        key = &calc.cmdCancel(index);
    else if (name == QLatin1String("cmdMemory"))
        key = &calc.cmdMemory(index);
    else if (name == QLatin1String("numero"))
        key = &calc.numero(index);
    else if (name == QLatin1String("cmdFunction"))
        key = &calc.cmdFunction(index);
    else if (name == QLatin1String("operator"))
        key = &calc.operator_(index);
    QVERIFY(key);
    QCOMPARE(key->Name(), name);
    QCOMPARE(key->Index(), index);
    QCOMPARE(key->Caption(), caption);
    QCOMPARE(QRect(key->Left(), key->Top(), key->Width(), key->Height()), twips);
    QCOMPARE(key->widget()->font().pointSizeF(), points);
    QCOMPARE(key->widget()->font().bold(), bold);
    // The window's own parts: the display, the mark, the background and the client area.
    QCOMPARE(QRect(calc.txtDisplay.Left(), calc.txtDisplay.Top(), calc.txtDisplay.Width(), calc.txtDisplay.Height()),
             QRect(120, 120, 3495, 375));
    QCOMPARE(calc.txtDisplay.Text(), QStringLiteral("0"));
    QCOMPARE(QPoint(calc.lblMem.Left(), calc.lblMem.Top()), QPoint(120, 600));
    QVERIFY(calc.lblMem.widget()->font().bold());
    QCOMPARE(QRect(calc.ImageOne.Left(), calc.ImageOne.Top(), calc.ImageOne.Width(), calc.ImageOne.Height()),
             QRect(0, 0, 3735, 3615));
    QVERIFY(!calc.ImageOne.Picture().isNull());
    QCOMPARE(calc.widget()->size(), QSize(3735 / 15, 3615 / 15));
    QCOMPARE(calc.Caption(), QStringLiteral("Calculator"));
    // "=" is first in the tab order: the window opens with the keyboard on it.
    calc.Show();
    QVERIFY(QTest::qWaitForWindowActive(calc.widget()));
    QTRY_COMPARE(QApplication::focusWidget(), calc.cmdEqual.widget());
}

void TestCalculator::calculationTypedOnTheKeyboard()
{
    TestRuntime t;
    CalculatorFRM& calc = openCalculator();
    QCOMPARE(QApplication::focusWidget(), calc.cmdEqual.widget());
    // Typed into the window, as a person types: the keys reach "=", which has the keyboard.
    input::typeInto(calc, QStringLiteral("12+30"));
    QCOMPARE(calc.txtDisplay.Text(), QStringLiteral("30"));
    QCOMPARE(QApplication::focusWidget(), calc.cmdEqual.widget()); // back on "=" after every key
    input::keyInto(calc, Qt::Key_Return);
    QCOMPARE(calc.txtDisplay.Text(), QStringLiteral("42"));
    input::keyInto(calc, Qt::Key_Return); // result + result
    QCOMPARE(calc.txtDisplay.Text(), QStringLiteral("84"));
    input::typeInto(calc, QStringLiteral("1.5*2"));
    input::keyInto(calc, Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(calc.txtDisplay.Text(), QStringLiteral("3"));
    input::typeInto(calc, QStringLiteral("7"));
    input::keyInto(calc, Qt::Key_Backspace);
    QCOMPARE(calc.txtDisplay.Text(), QStringLiteral("0"));
    QCOMPARE(QApplication::focusWidget(), calc.cmdEqual.widget());
    input::typeInto(calc, QStringLiteral("a"));
    QCOMPARE(calc.txtDisplay.Text(), QString());
    QVERIFY(t.untrappedErrors.isEmpty());
}

void TestCalculator::enterAndSpacePressTheFocusedKey()
{
    TestRuntime t;
    CalculatorFRM& calc = openCalculator();
    input::typeInto(calc, QStringLiteral("6*7"));
    input::keyInto(calc, Qt::Key_Space);
    QCOMPARE(calc.txtDisplay.Text(), QStringLiteral("42"));
    // A key that keeps the focus: CE clicked with the mouse keeps it, and Enter presses it again.
    input::typeInto(calc, QStringLiteral("5"));
    input::click(calc.cmdMemory(1)); // M+
    QCOMPARE(QApplication::focusWidget(), calc.cmdMemory(1).widget());
    QCOMPARE(calc.state.Memory, 5.0);
    input::keyInto(calc, Qt::Key_Return);
    QCOMPARE(calc.state.Memory, 10.0);
    input::keyInto(calc, Qt::Key_Space);
    QCOMPARE(calc.state.Memory, 15.0);
    QCOMPARE(calc.lblMem.Caption(), QStringLiteral("M"));
    // Keys typed now go to M+, not to "=": the keyboard handler is on "=" alone.
    input::typeInto(calc, QStringLiteral("9"));
    QCOMPARE(calc.txtDisplay.Text(), QStringLiteral("5"));
}

void TestCalculator::clickedKeysAndSounds()
{
    TestRuntime t;
    form<ThemeSelector>().TPath.setText(kThemes + "/Default");
    QStringList sounds;
    QObject::connect(&t.runtime().sounds(), &WavePlayer::requested, [&](const QString& p) { sounds << p.section('/', -1); });
    CalculatorFRM& calc = form<CalculatorFRM>();
    QCOMPARE(sounds, QStringList{"OpenWIN.WAV"});
    calc.Show();
    QVERIFY(QTest::qWaitForWindowExposed(calc.widget()));
    sounds.clear();
    for (Control* key : std::initializer_list<Control*>{&calc.numero(2), &calc.numero(0), &calc.operator_(2), &calc.numero(5),
                                                         &calc.cmdEqual})
        input::click(*key);
    QCOMPARE(calc.txtDisplay.Text(), QStringLiteral("15"));
    QCOMPARE(sounds, (QStringList{"Click.WAV", "Click.WAV", "Click.WAV"})); // the digits alone click
    // Function and memory keys keep the focus they took; digits give it back to "=".
    input::click(calc.cmdFunction(0));
    QCOMPARE(calc.txtDisplay.Text(), QStringLiteral("-15"));
    QCOMPARE(QApplication::focusWidget(), calc.cmdFunction(0).widget());
    input::click(calc.numero(1));
    QCOMPARE(QApplication::focusWidget(), calc.cmdEqual.widget());
    QCOMPARE(calc.txtDisplay.Text(), QStringLiteral("1")); // "=" left NewNumber set
    // A click into the display leaves the keyboard on "=".
    input::click(calc.txtDisplay);
    QCOMPARE(QApplication::focusWidget(), calc.cmdEqual.widget());
    // The window closes without a sound of its own.
    sounds.clear();
    Unload(calc);
    QVERIFY(sounds.isEmpty());
}

void TestCalculator::overflowShowsTheMessageBox()
{
    TestRuntime t;
    CalculatorFRM& calc = openCalculator();
    input::typeInto(calc, kOneE200 + "*");
    input::keyInto(calc, Qt::Key_Return);
    QCOMPARE(calc.txtDisplay.Text(), QStringLiteral("Error!!!"));
    QCOMPARE(t.dialogs->messageBoxes, QStringList{"Overflow"});
    QCOMPARE(t.dialogs->messageBoxTitles, QStringList{"Glide Path Calculator"});
    QCOMPARE(t.dialogs->messageBoxStyles, QList<int>{vbCritical});
    QVERIFY(t.untrappedErrors.isEmpty());
    // The next number starts afresh.
    input::typeInto(calc, QStringLiteral("4"));
    QCOMPARE(calc.txtDisplay.Text(), QStringLiteral("4"));
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
    TestRuntime t;
    CalculatorFRM& calc = openCalculator();
    input::typeInto(calc, typed);
    const QStringList functions{"+/-", "1/X", "%", "Sqrt"};
    const QStringList memory{"MC", "M+", "MS", "MR"};
    for (const QString& k : clicked.split(' '))
        input::click(functions.contains(k) ? calc.cmdFunction(int(functions.indexOf(k))) : calc.cmdMemory(int(memory.indexOf(k))));
    QCOMPARE(t.untrappedErrors, QList<int>{error});
    QVERIFY(t.runtime().ended());
}

QTEST_MAIN(TestCalculator)
#include "tst_calculator.moc"
