// The MP3 player: the file asked for as it opens, played through the sound server, the player's
// own transport driven with the mouse, another file through OpenMore, the fixed initial folder,
// a cancelled first question closing the window, MiniMe and ExitMe.

#include "accessories/mp3_player.h"
#include "startup/theme_selector.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/sounds.h"
#include "support/input.h"
#include "support/test_runtime.h"

#include <QAudioOutput>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMediaPlayer>
#include <QProcess>
#include <QTest>

using namespace platform;

namespace {

const QString kThemes = QStringLiteral(GLIDEPATH_SOURCE_DIR "/themes");

// The sound server's streams of this process that are playing (not corked), by media name.
QStringList playingStreams()
{
    QProcess pactl;
    pactl.start(QStringLiteral("pactl"), {QStringLiteral("list"), QStringLiteral("sink-inputs")});
    pactl.waitForFinished(5000);
    QStringList playing;
    const QString pid = QString::number(QCoreApplication::applicationPid());
    for (const QString& block : QString::fromUtf8(pactl.readAllStandardOutput()).split(QStringLiteral("Sink Input #"))) {
        if (!block.contains(QStringLiteral("application.process.id = \"") + pid + "\"") ||
            !block.contains(QStringLiteral("Corked: no")))
            continue;
        const qsizetype at = block.indexOf(QStringLiteral("media.name = \""));
        playing << (at < 0 ? QString() : block.mid(at + 14).section(QLatin1Char('"'), 0, 0));
    }
    return playing;
}

// Opens the player as its menu entry does, errors ignored (the one ignored in err); null when
// it closed itself.
MP3PlayerFRM* openPlayer(int* err = nullptr)
{
    form<ThemeSelector>().TPath.setText(kThemes + "/Default");
    MP3PlayerFRM* player = nullptr;
    runHandler([&] {
        OnErrorResumeNext next;
        next([&] {
            player = &form<MP3PlayerFRM>();
            player->Show();
        });
        if (err)
            *err = next.Err();
    });
    if (player && !QTest::qWaitForWindowExposed(player->widget()))
        qWarning("the player was not exposed");
    return player;
}

// Two MP3 files in a folder of their own.
class Tunes {
public:
    Tunes()
    {
        QFile::copy(kThemes + "/Default/Intro.MP3", dir.filePath("first.mp3"));
        QFile::copy(kThemes + "/Midnight/Intro.MP3", dir.filePath("second.MP3"));
    }
    QString first() const { return dir.filePath("first.mp3"); }
    QString second() const { return dir.filePath("second.MP3"); }
    QTemporaryDir dir;
};

void clickPart(MP3PlayerFRM& window, MediaPlayer::Part part, double along = 0.5)
{
    const QRect r = window.Player.partRect(part);
    input::click(window.Player, Qt::LeftButton, QPoint(r.left() + int(r.width() * along), r.center().y()));
}

} // namespace

class TestMP3Player : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cancelledFirstQuestionClosesTheWindow();
    void chosenFilePlaysThroughTheSoundServer();
    void transportControls();
    void openMoreAsksAfresh();
    void desktopFolder_data();
    void desktopFolder();
    void miniMeAndExitMe();
};

void TestMP3Player::cancelledFirstQuestionClosesTheWindow()
{
    TestRuntime t;
    QStringList sounds;
    QObject::connect(&t.runtime().sounds(), &WavePlayer::requested, [&](const QString& p) { sounds << p.section('/', -1); });
    int ignored = 0;
    QVERIFY(!openPlayer(&ignored));
    QCOMPARE(ignored, int(ErrObjectWasUnloaded)); // gone before it could be shown
    QVERIFY(t.untrappedErrors.isEmpty());
    QVERIFY(!t.runtime().forms().isLoaded<MP3PlayerFRM>());
    QCOMPARE(sounds, (QStringList{"OpenWIN.WAV", "Click.WAV", "CloseWIN.WAV"}));
    QCOMPARE(t.dialogs->fileRequests.size(), 1);
    const FileDialogRequest& asked = t.dialogs->fileRequests[0];
    QVERIFY(!asked.save);
    QCOMPARE(asked.filter, QStringLiteral("MP3 Files (*.MP3)|*.MP3"));
    QCOMPARE(asked.initDir, platform::DesktopFolder());
    QCOMPARE(asked.fileName, QString());
}

void TestMP3Player::chosenFilePlaysThroughTheSoundServer()
{
    TestRuntime t;
    Tunes tunes;
    t.dialogs->fileAnswer = [&](const FileDialogRequest&) { return tunes.first(); };
    MP3PlayerFRM* player = openPlayer();
    QVERIFY(player);
    QVERIFY(t.untrappedErrors.isEmpty());
    QVERIFY(player->Visible());
    QVERIFY(player->widget()->windowFlags() & Qt::WindowStaysOnTopHint);
    QCOMPARE(player->Caption(), QStringLiteral("MP3 Player"));
    QCOMPARE(player->Player.FileName(), tunes.first());
    QVERIFY(player->Player.AutoStart());
    // No play command: the file starts by itself, and the sound server plays it.
    QTRY_VERIFY_WITH_TIMEOUT(player->Player.isPlaying(), 10000);
    QTRY_VERIFY_WITH_TIMEOUT(playingStreams().contains(QStringLiteral("Glidepath Default")), 5000);
    QVERIFY(player->Player.displayText().startsWith(QStringLiteral("first.mp3\nPlaying\n0:0")));
}

void TestMP3Player::transportControls()
{
    TestRuntime t;
    Tunes tunes;
    t.dialogs->fileAnswer = [&](const FileDialogRequest&) { return tunes.first(); };
    MP3PlayerFRM* player = openPlayer();
    QVERIFY(player);
    MediaPlayer& p = player->Player;
    QTRY_VERIFY_WITH_TIMEOUT(p.isPlaying(), 10000);
    QTRY_VERIFY(p.Duration() > 0);
    QVERIFY(p.displayText().endsWith(QStringLiteral(" / 0:0") + QString::number(p.Duration() / 1000)));

    clickPart(*player, MediaPlayer::Part::PlayPause); // pause
    QTRY_COMPARE(p.player()->playbackState(), QMediaPlayer::PausedState);
    QVERIFY(p.displayText().contains(QStringLiteral("\nPaused\n")));
    const qint64 paused = p.Position();
    QTest::qWait(300);
    QCOMPARE(p.Position(), paused);

    // A click far along the position slider moves the tune on.
    clickPart(*player, MediaPlayer::Part::Position, 0.95);
    QTRY_VERIFY(p.Position() > paused);

    clickPart(*player, MediaPlayer::Part::PlayPause); // play again
    QTRY_VERIFY(p.isPlaying());
    clickPart(*player, MediaPlayer::Part::Stop);
    QTRY_COMPARE(p.player()->playbackState(), QMediaPlayer::StoppedState);
    QVERIFY(p.displayText().contains(QStringLiteral("\nStopped\n")));
    QTRY_COMPARE(p.Position(), qint64(0));

    // The volume: a click low on its slider turns it down, for the sound server's stream too.
    QCOMPARE(p.Volume(), 100);
    clickPart(*player, MediaPlayer::Part::Volume, 0.02);
    QVERIFY(p.Volume() < 100);
    QCOMPARE(qRound(p.player()->audioOutput()->volume() * 100), p.Volume());
}

void TestMP3Player::openMoreAsksAfresh()
{
    TestRuntime t;
    Tunes tunes;
    QString answer = tunes.first();
    t.dialogs->fileAnswer = [&](const FileDialogRequest&) { return answer; };
    MP3PlayerFRM* player = openPlayer();
    QVERIFY(player);
    QTRY_VERIFY_WITH_TIMEOUT(player->Player.isPlaying(), 10000);
    QStringList sounds;
    QObject::connect(&t.runtime().sounds(), &WavePlayer::requested, [&](const QString& p) { sounds << p.section('/', -1); });

    answer = tunes.second();
    input::click(player->OpenMore);
    QCOMPARE(sounds, (QStringList{"Click.WAV", "Click.WAV"}));
    QCOMPARE(t.dialogs->fileRequests.size(), 2);
    const FileDialogRequest& asked = t.dialogs->fileRequests[1];
    QCOMPARE(asked.filter, QStringLiteral("MP3 Files|*.MP3"));
    // The fixed folder again, not the folder of the file chosen before, and no name from it.
    QCOMPARE(asked.initDir, platform::DesktopFolder());
    QVERIFY(asked.initDir != tunes.dir.path());
    QCOMPARE(asked.fileName, QString());
    // The dialog's default property reads false: the window stays in view and plays the new tune.
    QCOMPARE(player->cdlGetFile.Action, 0);
    QVERIFY(player->Visible());
    QCOMPARE(player->Player.FileName(), tunes.second());
    QTRY_VERIFY_WITH_TIMEOUT(player->Player.isPlaying(), 10000);
    QTRY_VERIFY(player->Player.displayText().startsWith(QStringLiteral("second.MP3\n")));

    // Cancelled: the tune stopped before the question stays stopped, the window stays open.
    answer.clear();
    input::click(player->OpenMore);
    QTRY_VERIFY(!player->Player.isPlaying());
    QTest::qWait(500);
    QVERIFY(!player->Player.isPlaying());
    QVERIFY(player->Visible());
    QVERIFY(t.runtime().forms().isLoaded<MP3PlayerFRM>());
    QCOMPARE(t.dialogs->fileRequests.size(), 3);
    QVERIFY(t.untrappedErrors.isEmpty());
}

void TestMP3Player::desktopFolder_data()
{
    QTest::addColumn<bool>("hasDesktop");
    QTest::newRow("a desktop folder") << true;
    QTest::newRow("none: the home folder") << false;
}

void TestMP3Player::desktopFolder()
{
    QFETCH(bool, hasDesktop);
    QTemporaryDir home;
    if (hasDesktop)
        QVERIFY(QDir(home.path()).mkdir(QStringLiteral("Desktop")));
    const QByteArray oldHome = qgetenv("HOME");
    const QByteArray oldConfig = qgetenv("XDG_CONFIG_HOME");
    qputenv("HOME", home.path().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral(".config")).toLocal8Bit());
    const QString folder = platform::DesktopFolder();
    qputenv("HOME", oldHome);
    if (oldConfig.isEmpty())
        qunsetenv("XDG_CONFIG_HOME");
    else
        qputenv("XDG_CONFIG_HOME", oldConfig);
    QCOMPARE(folder, hasDesktop ? home.filePath(QStringLiteral("Desktop")) : home.path());
}

void TestMP3Player::miniMeAndExitMe()
{
    TestRuntime t;
    Tunes tunes;
    t.dialogs->fileAnswer = [&](const FileDialogRequest&) { return tunes.first(); };
    MP3PlayerFRM* player = openPlayer();
    QVERIFY(player);
    // The open-folder button: "1" in Wingdings, shown as its picture.
    QCOMPARE(player->OpenMore.Caption(), QStringLiteral("1"));
    QCOMPARE(player->OpenMore.widget()->font().family(), QStringLiteral("Wingdings"));
    const QImage face = player->OpenMore.widget()->grab().toImage();
    bool folder = false;
    for (int y = 0; y < face.height() && !folder; ++y)
        for (int x = 0; x < face.width() && !folder; ++x)
            folder = face.pixelColor(x, y).red() > 200 && face.pixelColor(x, y).blue() < 140;
    QVERIFY2(folder, "no open folder on the button");

    QTRY_VERIFY_WITH_TIMEOUT(player->Player.isPlaying(), 10000);
    QStringList sounds;
    QObject::connect(&t.runtime().sounds(), &WavePlayer::requested, [&](const QString& p) { sounds << p.section('/', -1); });
    input::click(player->MiniMe);
    QCOMPARE(player->WindowState(), int(vbMinimized));
    QCOMPARE(sounds, QStringList{"Click.WAV"});
    player->setWindowState(vbNormal);
    player->Show();
    QVERIFY(QTest::qWaitForWindowExposed(player->widget()));
    sounds.clear();
    QPointer<MP3PlayerFRM> gone(player);
    input::click(player->ExitMe);
    QCOMPARE(sounds, QStringList{"CloseWIN.WAV"}); // once: the second unload it asks for does nothing
    QVERIFY(!t.runtime().forms().isLoaded<MP3PlayerFRM>());
    QTRY_VERIFY(gone.isNull()); // and the playback ends with it
    QTRY_VERIFY_WITH_TIMEOUT(!playingStreams().contains(QStringLiteral("Glidepath Default")), 5000);
}

QTEST_MAIN(TestMP3Player)
#include "tst_mp3_player.moc"
