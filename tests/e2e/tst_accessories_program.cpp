// The accessories in the real program, as a person uses them: through the main window's menus
// with the X server's keyboard and mouse. A calculation typed on the keyboard, a doodle drawn
// with the mouse, notes surviving a restart with their CR LF growth, an MP3 file played through
// the sound server and the first question cancelled, the about box in a colour code, the readme
// missing, and the access phrase opening the hidden page.

#include "e2e/real_program.h"
#include "support/http_server.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTest>

namespace {

constexpr int kTwipsPerPixel = 15; // the test screen runs at 96 dpi

// The main window settled on the loopback server's titled page.
unsigned long openMainWindow(RealProgram& program, const HttpServer& server)
{
    program.write(QStringLiteral("HomePage.TXT"), server.url(QStringLiteral("/titled")).toString().toLatin1() + "\r\n");
    return program.openMainWindow();
}

const QStringList kCalculator{"Left", "Left", "Down", "Down", "Return"};
const QStringList kNotePad{"Left", "Left", "Down", "Down", "Down", "Return"};
const QStringList kMP3Player{"Left", "Return"};
const QStringList kDoodlePad{"Left", "Down", "Return"};
const QStringList kAbout{"Up", "Up", "Return"};
const QStringList kReadme{"Up", "Up", "Up", "Return"};

// The screen as it is now.
QImage screenShot()
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("screen.png"));
    QProcess::execute(QStringLiteral("import"), {"-window", "root", file});
    return QImage(file);
}

// The sound server's playing (not corked) streams of the program, by media name.
QStringList playingStreams()
{
    QProcess pactl;
    pactl.start(QStringLiteral("pactl"), {QStringLiteral("list"), QStringLiteral("sink-inputs")});
    pactl.waitForFinished(5000);
    QStringList playing;
    for (const QString& block : QString::fromUtf8(pactl.readAllStandardOutput()).split(QStringLiteral("Sink Input #"))) {
        if (!block.contains(QStringLiteral("application.name = \"glidepath\"")) || !block.contains(QStringLiteral("Corked: no")))
            continue;
        const qsizetype at = block.indexOf(QStringLiteral("media.name = \""));
        playing << (at < 0 ? QString() : block.mid(at + 14).section(QLatin1Char('"'), 0, 0));
    }
    return playing;
}

} // namespace

class TestAccessoriesProgram : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void calculationTypedOnTheKeyboard();
    void doodleDrawnWithTheMouse();
    void notesSurviveARestart();
    void mp3PlayedAndFirstQuestionCancelled();
    void aboutBoxInAColourCode_data();
    void aboutBoxInAColourCode();
    void readmeMissing();
    void accessPhraseOpensTheHiddenPage();

private:
    HttpServer m_server;
};

void TestAccessoriesProgram::calculationTypedOnTheKeyboard()
{
    RealProgram program;
    program.useTheme();
    const unsigned long main = openMainWindow(program, m_server);
    QVERIFY(main);
    program.chooseMenu(main, kCalculator);
    const unsigned long calc = program.waitForWindow(QStringLiteral("Calculator"));
    QVERIFY(calc);
    QTRY_COMPARE(program.activeWindow(), calc);
    // The keyboard goes to "=" from the start; Enter presses it.
    program.type(QStringLiteral("12+30"));
    QTRY_COMPARE(program.lastText(QStringLiteral("CalculatorFRM.txtDisplay")), QStringLiteral("30"));
    program.key(QStringLiteral("Return"));
    QTRY_COMPARE(program.lastText(QStringLiteral("CalculatorFRM.txtDisplay")), QStringLiteral("42"));
    program.key(QStringLiteral("Return")); // the result with itself
    QTRY_COMPARE(program.lastText(QStringLiteral("CalculatorFRM.txtDisplay")), QStringLiteral("84"));
    program.type(QStringLiteral("9/0"));
    program.key(QStringLiteral("space"));
    QTRY_COMPARE(program.lastText(QStringLiteral("CalculatorFRM.txtDisplay")), QStringLiteral("0"));
    QVERIFY(program.running());
}

void TestAccessoriesProgram::doodleDrawnWithTheMouse()
{
    RealProgram program;
    program.useTheme();
    const unsigned long main = openMainWindow(program, m_server);
    QVERIFY(main);
    program.chooseMenu(main, kDoodlePad);
    const unsigned long pad = program.waitForWindow(QStringLiteral("Doodle [Double Click To Get Options Window]"));
    QVERIFY(pad);
    QTest::qWait(500);
    const QRect inner = program.inner(pad);
    const QPoint from = inner.topLeft() + QPoint(100, 250);
    // Held down and moved: a stroke across the window, ten pixels at a time.
    QProcess::execute(QStringLiteral("xdotool"), {"mousemove", QString::number(from.x()), QString::number(from.y()), "mousedown", "1"});
    for (int i = 1; i <= 30; ++i)
        QProcess::execute(QStringLiteral("xdotool"), {"mousemove", QString::number(from.x() + 10 * i), QString::number(from.y())});
    QProcess::execute(QStringLiteral("xdotool"), {"mouseup", "1"});
    QTest::qWait(500);
    const QImage screen = screenShot();
    QVERIFY(!screen.isNull());
    // The stroke's pixels are the pen's black; above it the window's face.
    int black = 0;
    for (int x = from.x() + 10; x < from.x() + 290; ++x)
        black += screen.pixelColor(x, from.y()).lightness() < 40;
    QVERIFY2(black > 250, qPrintable(QString::number(black)));
    QVERIFY(screen.pixelColor(from.x() + 150, from.y() - 20).lightness() > 150);
}

void TestAccessoriesProgram::notesSurviveARestart()
{
    RealProgram program;
    program.useTheme();
    program.write(QStringLiteral("Notes.TXT"), "abc");
    unsigned long main = openMainWindow(program, m_server);
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
    main = openMainWindow(program, m_server);
    QVERIFY(main);
    program.chooseMenu(main, kNotePad);
    QVERIFY(program.waitForWindow(QStringLiteral("Notepad (Automaticly Saves, Each Keystroke)")));
    QTRY_COMPARE(program.read(QStringLiteral("Notes.TXT")), QByteArray("Hi abc\r\n\r\n"));
}

void TestAccessoriesProgram::mp3PlayedAndFirstQuestionCancelled()
{
    RealProgram program;
    program.useTheme();
    const unsigned long main = openMainWindow(program, m_server);
    QVERIFY(main);
    // The intro's music has ended (it plays the same file).
    QTRY_VERIFY_WITH_TIMEOUT(!playingStreams().contains(QStringLiteral("Glidepath Default")), 15000);
    // Misc., MP3 Player: the question comes first; a file typed into it plays.
    program.chooseMenu(main, kMP3Player);
    unsigned long question = program.waitForWindow(QStringLiteral("Open"));
    QVERIFY(question);
    QTRY_COMPARE(program.activeWindow(), question);
    program.type(program.path(QStringLiteral("Default/Intro.MP3")));
    program.key(QStringLiteral("Return"));
    const unsigned long player = program.waitForWindow(QStringLiteral("MP3 Player"));
    QVERIFY(player);
    QTRY_VERIFY_WITH_TIMEOUT(playingStreams().contains(QStringLiteral("Glidepath Default")), 5000);
    // Closed with its X: the playing ends with it.
    const QRect inner = program.inner(player);
    program.click(player, QPoint(inner.width() - 12, 12));
    QVERIFY(program.waitForGone(player));

    // Again, and cancelled: no player window.
    program.chooseMenu(main, kMP3Player);
    question = program.waitForWindow(QStringLiteral("Open"));
    QVERIFY(question);
    QTRY_COMPARE(program.activeWindow(), question);
    program.key(QStringLiteral("Escape"));
    QVERIFY(program.waitForGone(question));
    QCOMPARE(program.waitForWindow(QStringLiteral("MP3 Player"), 2000), 0ul);
    QVERIFY(program.running());
}

void TestAccessoriesProgram::aboutBoxInAColourCode_data()
{
    QTest::addColumn<QByteArray>("code");
    QTest::addColumn<bool>("black");
    QTest::newRow("no code: white") << QByteArray() << false;
    QTest::newRow("2: black") << QByteArray("2") << true;
}

void TestAccessoriesProgram::aboutBoxInAColourCode()
{
    QFETCH(QByteArray, code);
    QFETCH(bool, black);
    RealProgram program;
    program.useTheme();
    if (!code.isEmpty())
        program.write(QStringLiteral("ForeC.INI"), code);
    const unsigned long main = openMainWindow(program, m_server);
    QVERIFY(main);
    program.chooseMenu(main, kAbout);
    const unsigned long about = program.waitForWindow(QStringLiteral("About This Application"));
    QVERIFY(about);
    QTest::qWait(800);
    const QImage screen = screenShot();
    // The title "Glide Path" across the top (0, 0, 6495 x 435 twips): its letters in the
    // code's colour over the teal background.
    const QRect title(program.inner(about).topLeft(), QSize(6495 / kTwipsPerPixel, 435 / kTwipsPerPixel));
    int dark = 0, light = 0;
    for (int y = title.top(); y <= title.bottom(); ++y)
        for (int x = title.left(); x <= title.right(); ++x) {
            const QColor c = screen.pixelColor(x, y);
            dark += c.lightness() < 30;
            light += c.red() > 225 && c.green() > 225 && c.blue() > 225;
        }
    QVERIFY2(black ? dark > 50 && light == 0 : light > 50 && dark == 0, qPrintable(QStringLiteral("%1 dark, %2 light").arg(dark).arg(light)));
}

void TestAccessoriesProgram::readmeMissing()
{
    RealProgram program;
    program.useTheme();
    QFile::remove(program.path(QStringLiteral("readme.TXT")));
    const unsigned long main = openMainWindow(program, m_server);
    QVERIFY(main);
    program.chooseMenu(main, kReadme);
    // The message, above everything, with the keyboard; its OK by the keyboard.
    const unsigned long message = program.waitForActiveOtherThan(main);
    QVERIFY(message);
    QCOMPARE(program.waitForWindow(QStringLiteral("Read Me "), 500), 0ul); // the viewer waits for it
    program.activate(message);
    program.key(QStringLiteral("Return"));
    QVERIFY(program.waitForGone(message));
    QVERIFY(program.waitForWindow(QStringLiteral("Read Me ")));
    QTRY_COMPARE(program.lastText(QStringLiteral("ReadMeFRM.Data")), QStringLiteral("Glide Path - By: Marlo. Enjoy."));
}

void TestAccessoriesProgram::accessPhraseOpensTheHiddenPage()
{
    RealProgram program;
    program.useTheme();
    const unsigned long main = openMainWindow(program, m_server);
    QVERIFY(main);
    QTRY_VERIFY_WITH_TIMEOUT(!playingStreams().contains(QStringLiteral("Glidepath Default")), 15000);
    const int menuBar = program.inner(main).height() - 7095 / kTwipsPerPixel;
    program.click(main, QPoint(40, menuBar + (550 + 150) / kTwipsPerPixel));
    program.key(QStringLiteral("ctrl+a"));
    program.type(QStringLiteral("Crane at Dusk"));
    // Its last letter alone opens nothing; the key after it does.
    QCOMPARE(program.waitForWindow(QStringLiteral("Secret Place!"), 1500), 0ul);
    program.key(QStringLiteral("Return"));
    const unsigned long page = program.waitForWindow(QStringLiteral("Secret Place!"));
    QVERIFY(page);
    // The intro music plays again.
    QTRY_VERIFY_WITH_TIMEOUT(playingStreams().contains(QStringLiteral("Glidepath Default")), 5000);
}

QTEST_GUILESS_MAIN(TestAccessoriesProgram)
#include "tst_accessories_program.moc"
