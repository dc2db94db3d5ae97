// The real program on the desktops people run, each started by the test: a Wayland session with
// an X server beside it (a headless weston with XWayland), where the program runs on the X
// server: its windows are X windows and the intro stands in the middle of the screen; Wayland
// alone, where it starts and paints on Wayland; and a screen wider than the intro's closing
// effect can count in 16-bit twips, where the effect's overflow is reported and ends the program,
// a limit the README names. That compositor gives XWayland no input devices (and clicks through
// its X server crashed it): placement is read from the X side, nothing is clicked there.

#include "e2e/real_program.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace {

// A headless Wayland compositor with an X server beside it; display is empty when it never came.
class Weston {
public:
    Weston()
    {
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_runtime.path());
        m_process.setProcessEnvironment(env);
        m_process.start(QStringLiteral("weston"), {"--backend=headless-backend.so", "--use-pixman", "--xwayland", "--idle-time=0",
                                                   "--socket=glidepath", "--width=1280", "--height=1024"});
        static const QRegularExpression listening(QStringLiteral("xserver listening on display (:\\d+)"));
        // When it never comes, display stays empty: the tests say so.
        static_cast<void>(QTest::qWaitFor([&] {
            m_log += m_process.readAll();
            display = listening.match(QString::fromUtf8(m_log)).captured(1);
            return !display.isEmpty();
        }, 20000));
    }
    ~Weston()
    {
        m_process.terminate();
        m_process.waitForFinished(5000);
    }
    // The program, and the tools that look at it, on the session; with wayland alone no X server.
    void enter(RealProgram& program, bool withX) const
    {
        program.setEnvironment(QStringLiteral("XDG_RUNTIME_DIR"), m_runtime.path());
        program.setEnvironment(QStringLiteral("WAYLAND_DISPLAY"), QStringLiteral("glidepath"));
        program.setEnvironment(QStringLiteral("DISPLAY"), withX ? display : QString());
    }
    QString display;

private:
    QTemporaryDir m_runtime;
    QProcess m_process;
    QByteArray m_log;
};

} // namespace

class TestDesktops : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void waylandWithAnXServerBeside();
    void waylandAlone();
    void screenTooWideForTheIntrosEffect();
};

void TestDesktops::waylandWithAnXServerBeside()
{
    Weston weston;
    QVERIFY2(!weston.display.isEmpty(), "weston and its X server did not come up");
    RealProgram program;
    weston.enter(program, true);
    program.useTheme();
    program.start();
    QVERIFY(program.waitForMoment(QStringLiteral("painted IntroFRM")));
    // The intro is an X window of the program, in the middle of the screen.
    const unsigned long intro = program.waitForWindowLike(QStringLiteral(".*"));
    QVERIFY(intro);
    QPoint off;
    const bool centred = QTest::qWaitFor([&] {
        off = program.inner(intro).center() - program.screen().center();
        return off.manhattanLength() <= 2;
    }, 5000);
    QVERIFY2(centred, qPrintable(QStringLiteral("%1, %2 from the middle").arg(off.x()).arg(off.y())));
    QVERIFY(program.running());
}

void TestDesktops::waylandAlone()
{
    Weston weston;
    QVERIFY2(!weston.display.isEmpty(), "weston did not come up");
    RealProgram program;
    weston.enter(program, false);
    program.useTheme();
    program.start();
    QVERIFY(program.waitForMoment(QStringLiteral("painted IntroFRM")));
    QVERIFY(program.running());
}

void TestDesktops::screenTooWideForTheIntrosEffect()
{
    // 2,560 pixels at 96 dpi are 38,400 twips: past what a 16-bit count of twips holds.
    QTemporaryDir dir;
    const QString session = dir.filePath(QStringLiteral("session"));
    QProcessEnvironment wide = QProcessEnvironment::systemEnvironment();
    wide.insert(QStringLiteral("SIZE"), QStringLiteral("2560x1440"));
    QProcess start;
    start.setProcessEnvironment(wide);
    start.start(QStringLiteral("bash"), {QStringLiteral(GLIDEPATH_SOURCE_DIR "/scripts/session.sh"), "start", session, "free"});
    QVERIFY(start.waitForFinished(30000) && start.exitCode() == 0);
    QFile exports(session + "/env");
    QVERIFY(exports.open(QIODevice::ReadOnly));
    const QList<QByteArray> pairs = exports.readAll().simplified().split(' ').mid(1); // export A=1 B=2
    {
        RealProgram program;
        for (const QByteArray& pair : pairs)
            program.setEnvironment(QString::fromLocal8Bit(pair.left(pair.indexOf('='))), QString::fromLocal8Bit(pair.mid(pair.indexOf('=') + 1)));
        program.useTheme();
        program.start();
        QVERIFY(program.waitForMoment(QStringLiteral("painted IntroFRM")));
        program.clickScreen(program.screen().center());
        QTRY_VERIFY_WITH_TIMEOUT(program.errorOutput().contains("Run-time error '6':\n\nOverflow"), 30000);
        const unsigned long report = program.waitForWindow(QStringLiteral("Glidepath"));
        QVERIFY(report);
        program.activate(report);
        program.key(QStringLiteral("Return"));
        QVERIFY(program.waitForExit(15000));
        QCOMPARE(program.exitCode(), 1);
    }
    QProcess::execute(QStringLiteral("bash"), {QStringLiteral(GLIDEPATH_SOURCE_DIR "/scripts/session.sh"), "stop", session});
}

QTEST_GUILESS_MAIN(TestDesktops)
#include "tst_desktops.moc"
