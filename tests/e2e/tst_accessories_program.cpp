// The accessories in the real program, as a person uses them: through the main window's menus
// with the X server's keyboard and mouse. A calculation typed on the keyboard, a doodle drawn
// with the mouse, notes surviving a restart with their CR LF growth, an MP3 file played through
// the sound server and the first question cancelled, the about box in a colour code, and the
// readme missing.

#include "e2e/real_program.h"
#include "support/http_server.h"

#include <QImage>
#include <QProcess>
#include <QTest>

namespace {

constexpr int kTwipsPerPixel = 15; // the test screen runs at 96 dpi
const QStringList kCalculator{"Left", "Left", "Down", "Down", "Return"};
const QStringList kNotePad{"Left", "Left", "Down", "Down", "Down", "Return"};
const QStringList kMP3Player{"Left", "Return"};
const QStringList kDoodlePad{"Left", "Down", "Return"};
const QStringList kAbout{"Up", "Up", "Return"};
const QStringList kReadme{"Up", "Up", "Up", "Return"};

} // namespace

class TestAccessoriesProgram : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void calculationTypedOnTheKeyboard();
    void doodleDrawnWithTheMouse();
    void notesSurviveARestart();
    void mp3PlayedAndFirstQuestionCancelled();
    void aboutBoxInAColourCode();
    void readmeMissing();

private:
    HttpServer m_server;
};

void TestAccessoriesProgram::calculationTypedOnTheKeyboard()
{
    RealProgram program;
    const unsigned long main = program.openOn(m_server);
    QVERIFY(main);
    program.chooseMenu(main, kCalculator);
    const unsigned long calc = program.waitForWindow(QStringLiteral("Calculator"));
    QVERIFY(calc);
    QTRY_COMPARE(program.activeWindow(), calc);
    // The keyboard goes to "=" from the start, and back to it after every key; Enter, the
    // keypad's Enter and Space press it.
    program.type(QStringLiteral("12+30"));
    QTRY_COMPARE(program.lastText(QStringLiteral("CalculatorFRM.txtDisplay")), QStringLiteral("30"));
    program.key(QStringLiteral("Return"));
    QTRY_COMPARE(program.lastText(QStringLiteral("CalculatorFRM.txtDisplay")), QStringLiteral("42"));
    program.key(QStringLiteral("Return")); // the result with itself
    QTRY_COMPARE(program.lastText(QStringLiteral("CalculatorFRM.txtDisplay")), QStringLiteral("84"));
    program.type(QStringLiteral("9/0"));
    program.key(QStringLiteral("space"));
    QTRY_COMPARE(program.lastText(QStringLiteral("CalculatorFRM.txtDisplay")), QStringLiteral("0"));
    program.type(QStringLiteral("1.5*2"));
    program.key(QStringLiteral("KP_Enter"));
    QTRY_COMPARE(program.lastText(QStringLiteral("CalculatorFRM.txtDisplay")), QStringLiteral("3"));
    program.type(QStringLiteral("7"));
    program.key(QStringLiteral("BackSpace"));
    QTRY_COMPARE(program.lastText(QStringLiteral("CalculatorFRM.txtDisplay")), QStringLiteral("0"));
    QVERIFY(program.running());
}

void TestAccessoriesProgram::doodleDrawnWithTheMouse()
{
    RealProgram program;
    const unsigned long main = program.openOn(m_server);
    QVERIFY(main);
    const qsizetype from = program.moments().size();
    program.chooseMenu(main, kDoodlePad);
    const unsigned long pad = program.waitForWindow(QStringLiteral("Doodle [Double Click To Get Options Window]"));
    QVERIFY(pad);
    QVERIFY(program.waitForMoment(QStringLiteral("painted DoodleFRM"), from));
    const QPoint start = program.inner(pad).topLeft() + QPoint(100, 250);
    // Held down and moved: a stroke across the window, ten pixels at a time.
    QProcess::execute(QStringLiteral("xdotool"), {"mousemove", QString::number(start.x()), QString::number(start.y()), "mousedown", "1"});
    for (int i = 1; i <= 30; ++i)
        QProcess::execute(QStringLiteral("xdotool"), {"mousemove", QString::number(start.x() + 10 * i), QString::number(start.y())});
    QProcess::execute(QStringLiteral("xdotool"), {"mouseup", "1"});
    // The stroke's pixels are the pen's black; above it the window's face.
    auto blackAlong = [&](const QImage& screen) {
        int black = 0;
        for (int x = start.x() + 10; x < start.x() + 290; ++x)
            black += screen.pixelColor(x, start.y()).lightness() < 40;
        return black;
    };
    QImage screen;
    QTRY_VERIFY2(blackAlong(screen = program.screenShot()) > 250, qPrintable(QString::number(blackAlong(screen))));
    QVERIFY(screen.pixelColor(start.x() + 150, start.y() - 20).lightness() > 150);
}

void TestAccessoriesProgram::notesSurviveARestart()
{
    RealProgram program;
    program.write(QStringLiteral("Notes.TXT"), "abc");
    unsigned long main = program.openOn(m_server);
    QVERIFY(main);
    program.chooseMenu(main, kNotePad);
    const unsigned long pad = program.waitForWindow(QStringLiteral("Notepad (Automaticly Saves, Each Keystroke)"));
    QVERIFY(pad);
    QTRY_COMPARE(program.read(QStringLiteral("Notes.TXT")), QByteArray("abc\r\n")); // saved as it opens
    QTRY_COMPARE(program.activeWindow(), pad);
    program.type(QStringLiteral("Hi "));
    QTRY_COMPARE(program.read(QStringLiteral("Notes.TXT")), QByteArray("Hi abc\r\n"));

    // The program ends (File, Exit) and starts again: the note comes back one CR LF longer.
    program.chooseMenu(main, {"Up", "Return"});
    QVERIFY(program.waitForExit());
    main = program.openOn(m_server);
    QVERIFY(main);
    program.chooseMenu(main, kNotePad);
    QVERIFY(program.waitForWindow(QStringLiteral("Notepad (Automaticly Saves, Each Keystroke)")));
    QTRY_COMPARE(program.read(QStringLiteral("Notes.TXT")), QByteArray("Hi abc\r\n\r\n"));
}

void TestAccessoriesProgram::mp3PlayedAndFirstQuestionCancelled()
{
    RealProgram program;
    const unsigned long main = program.openOn(m_server);
    QVERIFY(main);
    // The intro's music has ended (it plays the same file).
    QTRY_VERIFY_WITH_TIMEOUT(!program.playing().contains(QStringLiteral("Glidepath Default")), 15000);
    // Misc., MP3 Player: the question comes first; the name of a file that is not there opens
    // silently, with no message of any kind.
    program.chooseMenu(main, kMP3Player);
    QVERIFY(program.answerFileDialog(program.path(QStringLiteral("No Such Tune.mp3"))));
    const unsigned long player = program.waitForWindow(QStringLiteral("MP3 Player"));
    QVERIFY(player);
    QCOMPARE(program.moments().filter(QStringLiteral("message ")), QStringList{});
    // Another file through the open-folder button (4080, 750, 375 x 1440 twips) plays.
    program.click(player, QPoint((4080 + 187) / kTwipsPerPixel, (750 + 720) / kTwipsPerPixel));
    QVERIFY(program.answerFileDialog(program.path(QStringLiteral("Default/Intro.MP3"))));
    QTRY_VERIFY_WITH_TIMEOUT(program.playing().contains(QStringLiteral("Glidepath Default")), 5000);
    // Closed with its X: the playing ends with it.
    qsizetype from = program.moments().size();
    program.click(player, QPoint(program.inner(player).width() - 12, 12));
    QVERIFY(program.waitForMoment(QStringLiteral("unloaded MP3PlayerFRM"), from));
    QTRY_VERIFY_WITH_TIMEOUT(!program.playing().contains(QStringLiteral("Glidepath Default")), 5000);

    // Again, and cancelled: the player unloads itself and is never painted.
    from = program.moments().size();
    program.chooseMenu(main, kMP3Player);
    const unsigned long question = program.waitForWindow(QStringLiteral("Open"));
    QVERIFY(question);
    QTRY_COMPARE(program.activeWindow(), question);
    program.key(QStringLiteral("Escape"));
    QVERIFY(program.waitForMoment(QStringLiteral("unloaded MP3PlayerFRM"), from));
    QVERIFY2(!program.moments().mid(from).contains(QStringLiteral("painted MP3PlayerFRM")), qPrintable(program.moments().mid(from).join(" | ")));
    QVERIFY(program.running());
}

void TestAccessoriesProgram::aboutBoxInAColourCode()
{
    RealProgram program;
    program.write(QStringLiteral("ForeC.INI"), "2");
    const unsigned long main = program.openOn(m_server);
    QVERIFY(main);
    program.chooseMenu(main, kAbout);
    const unsigned long about = program.waitForWindow(QStringLiteral("About This Application"));
    QVERIFY(about);
    // The title "Glide Path" across the top (0, 0, 6495 x 435 twips): its letters in the code's
    // black over the teal background, and no white.
    const QRect title(program.inner(about).topLeft(), QSize(6495 / kTwipsPerPixel, 435 / kTwipsPerPixel));
    auto count = [&](const QImage& screen, bool dark) {
        int n = 0;
        for (int y = title.top(); y <= title.bottom(); ++y)
            for (int x = title.left(); x <= title.right(); ++x) {
                const QColor c = screen.pixelColor(x, y);
                n += dark ? c.lightness() < 30 : c.red() > 225 && c.green() > 225 && c.blue() > 225;
            }
        return n;
    };
    QImage screen;
    QTRY_VERIFY(count(screen = program.screenShot(), true) > 50);
    QCOMPARE(count(screen, false), 0);
}

void TestAccessoriesProgram::readmeMissing()
{
    RealProgram program;
    QFile::remove(program.path(QStringLiteral("readme.TXT")));
    const unsigned long main = program.openOn(m_server);
    QVERIFY(main);
    program.chooseMenu(main, kReadme);
    // The message, above everything, with the keyboard; the viewer waits for its OK.
    const unsigned long message = program.waitForActiveOtherThan(main);
    QVERIFY(message);
    QVERIFY(program.waitForMoment(QStringLiteral("message Sorry, The Readme File (In The Same Directory As Glidepath.exe, Named ''readme.txt'') Cannot be Found.")));
    QVERIFY(!program.moments().contains(QStringLiteral("painted ReadMeFRM")));
    program.activate(message);
    program.key(QStringLiteral("Return"));
    QVERIFY(program.waitForGone(message));
    QVERIFY(program.waitForWindow(QStringLiteral("Read Me ")));
    QTRY_COMPARE(program.lastText(QStringLiteral("ReadMeFRM.Data")), QStringLiteral("Glide Path - By: Marlo. Enjoy."));
}

QTEST_GUILESS_MAIN(TestAccessoriesProgram)
#include "tst_accessories_program.moc"
