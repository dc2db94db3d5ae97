// Wave sounds through the real sound server: a sound starts playing, a new one cuts off the
// old, a missing or broken file plays the default sound.

#include "platform/sounds.h"
#include "platform/win32.h"
#include "support/test_runtime.h"

#include <QSignalSpy>
#include <QSoundEffect>
#include <QTest>

using namespace platform;

class TestSounds : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void played_data();
    void played();
    void newSoundCutsOffTheOld();
    void noDefaultWhenAskedNot();

private:
    static QString theme(const QString& file) { return QStringLiteral(GLIDEPATH_SOURCE_DIR "/themes/Default/") + file; }
};

void TestSounds::played_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("expectDefault");
    QTest::newRow("theme click") << "Click.WAV" << false;
    QTest::newRow("missing file") << "NoSuch.WAV" << true;
    QTest::newRow("not a wave") << "Main.BMP" << true;
    QTest::newRow("an MP3 is no wave") << "Intro.MP3" << true;
}

void TestSounds::played()
{
    QFETCH(QString, file);
    QFETCH(bool, expectDefault);
    TestRuntime t;
    WavePlayer& player = t.runtime().sounds();
    QSignalSpy started(&player, &WavePlayer::started);
    // Backslashes are accepted as separators.
    QString path = theme(file);
    path.replace(QLatin1String("/Default/"), QLatin1String("\\Default\\"));
    sndPlaySoundA(path, SND_ASYNC);
    QCOMPARE(player.lastRequested(), path);
    QTRY_COMPARE_WITH_TIMEOUT(started.count(), 1, 10000);
    QCOMPARE(started.at(0).at(0).toString(), expectDefault ? WavePlayer::defaultSound() : theme(file));
}

void TestSounds::newSoundCutsOffTheOld()
{
    TestRuntime t;
    WavePlayer& player = t.runtime().sounds();
    QSignalSpy started(&player, &WavePlayer::started);
    player.play(theme("OpenWIN.WAV"));
    QTRY_COMPARE_WITH_TIMEOUT(started.count(), 1, 10000);
    player.play(theme("CloseWIN.WAV"));
    QTRY_COMPARE_WITH_TIMEOUT(started.count(), 2, 10000);
    QCOMPARE(started.at(1).at(0).toString(), theme("CloseWIN.WAV"));
    QCOMPARE(player.lastPlaying(), theme("CloseWIN.WAV"));
    // Only one sound at a time: the first one's effect is gone.
    QTRY_COMPARE(player.findChildren<QSoundEffect*>().size(), 1);
}

void TestSounds::noDefaultWhenAskedNot()
{
    TestRuntime t;
    WavePlayer& player = t.runtime().sounds();
    QSignalSpy started(&player, &WavePlayer::started);
    sndPlaySoundA(theme("NoSuch.WAV"), SND_ASYNC | SND_NODEFAULT);
    QTest::qWait(500);
    QCOMPARE(started.count(), 0);
    QCOMPARE(player.lastPlaying(), QString());
}

QTEST_MAIN(TestSounds)
#include "tst_sounds.moc"
