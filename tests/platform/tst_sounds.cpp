// Wave sounds through the real sound server: waves of every kind that people's tools write
// reach it at the level they hold, a new sound cuts off the old, and a missing file or one that
// nothing decodes plays the default sound.

#include "platform/sounds.h"
#include "platform/win32.h"
#include "support/test_runtime.h"

#include <QAudioSink>
#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

using namespace platform;

namespace {

constexpr quint16 Extensible = 0xFFFE;
constexpr double Levels[2] = {0.5, -0.25}; // a steady level a channel: what the server must hear
constexpr int CaptureRate = 44100;
constexpr double None = std::numeric_limits<double>::quiet_NaN();

QByteArray le(quint64 value, int bytes)
{
    QByteArray b;
    for (int i = 0; i < bytes; ++i)
        b += char(value >> 8 * i);
    return b;
}

QByteArray chunk(const char* id, const QByteArray& body, qint64 claimed = -1, bool pad = true)
{
    return QByteArray(id, 4) + le(claimed < 0 ? body.size() : claimed, 4) + body +
           QByteArray(pad ? body.size() % 2 : 0, '\0');
}

struct Shape {
    double seconds = 0.2;
    bool extensible = false;
    QByteArray before = {}; // chunks between the header and `fmt `
    bool dataFirst = false;
    bool data = true;
    qint64 dataClaims = -1; // the size the data chunk gives, when it lies
    qint64 fmtClaims = -1;
    QByteArray after = {}; // chunks after the last of the two
};

// A wave that holds each channel at its steady level. The adaptive codings start every block
// at silence and step the left channel up and the right one down as fast as they can: the
// server hears the loudest levels there are.
QByteArray wave(quint16 tag, int bits, int channels, int rate, const Shape& shape = {})
{
    const bool adaptive = tag == 0x0002 || tag == 0x0011;
    const int blockFrames = tag == 0x0011 ? 505 : 500; // of 256 bytes a channel
    const int blockAlign = adaptive ? 256 * channels : channels * bits / 8;
    QByteArray data;
    if (adaptive) {
        for (int frame = 0; frame < rate * shape.seconds; frame += blockFrames) {
            QByteArray block;
            if (tag == 0x0011) { // IMA: a sample and a step index a channel, then 4 bytes a channel in turn
                block += QByteArray(4 * channels, '\0');
                for (int group = 0; group < 63; ++group)
                    for (int c = 0; c < channels; ++c)
                        block += QByteArray(4, c == 0 ? '\x44' : '\xCC');
            } else { // MS: predictor 0, step 16 and two samples a channel, then a nibble a channel in turn
                block += QByteArray(channels, '\0');
                for (int c = 0; c < channels; ++c)
                    block += le(16, 2);
                block += QByteArray(4 * channels, '\0') + QByteArray(249 * channels, channels == 1 ? '\x77' : '\x79');
            }
            data += block;
        }
    } else {
        for (int frame = 0; frame < rate * shape.seconds; ++frame) {
            for (int c = 0; c < channels; ++c) {
                const double v = Levels[c];
                if (tag == 0x0006 || tag == 0x0007)
                    data += char(tag == 0x0006 ? 0xBA : 0x90); // +0.49 in A-law and in mu-law, mono only
                else if (tag == 0x0003)
                    data += bits == 32 ? le(std::bit_cast<quint32>(float(v)), 4) : le(std::bit_cast<quint64>(v), 8);
                else if (bits == 8)
                    data += char(128 + std::lround(v * 128));
                else
                    data += le(quint64(std::llround(v * double(1LL << (bits - 1)))), bits / 8);
            }
        }
    }
    QByteArray fmt = le(shape.extensible ? Extensible : tag, 2) + le(channels, 2) + le(rate, 4) +
                     le(quint64(rate) * blockAlign, 4) + le(blockAlign, 2) + le(adaptive ? 4 : bits, 2);
    if (shape.extensible)
        fmt += le(22, 2) + le(bits, 2) + le(channels == 2 ? 3 : 4, 4) + le(tag, 2) +
               QByteArray::fromHex("000000001000800000aa00389b71");
    else if (tag == 0x0011)
        fmt += le(2, 2) + le(blockFrames, 2);
    else if (tag == 0x0002)
        fmt += le(8, 2) + le(blockFrames, 2) + le(1, 2) + le(256, 2) + le(0, 2); // one predictor
    const QByteArray fmtChunk = chunk("fmt ", fmt, shape.fmtClaims);
    const QByteArray dataChunk = shape.data ? chunk("data", data, shape.dataClaims) : QByteArray();
    const QByteArray body = "WAVE" + shape.before + (shape.dataFirst ? dataChunk + fmtChunk : fmtChunk + dataChunk) + shape.after;
    return "RIFF" + le(body.size(), 4) + body;
}

QByteArray themeFile(const QString& name)
{
    QFile f(QStringLiteral(GLIDEPATH_SOURCE_DIR "/themes/Default/") + name);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace

class TestSounds : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void played_data();
    void played();
    void newSoundCutsOffTheOld();
    void noDefaultWhenAskedNot();
    void goneWhilePlaying();

private:
    static QString theme(const QString& file) { return QStringLiteral(GLIDEPATH_SOURCE_DIR "/themes/Default/") + file; }
    // The median level the server played on a channel after the given byte of the recording,
    // among the samples that are not silence.
    double heard(qsizetype from, int channel) const;

    QProcess m_recorder; // what the server plays, as 16-bit stereo
    QByteArray m_recorded;
};

void TestSounds::initTestCase()
{
    connect(&m_recorder, &QProcess::readyReadStandardOutput, this, [this] { m_recorded += m_recorder.readAllStandardOutput(); });
    m_recorder.start("parec", {"--device=null.monitor", "--raw", "--format=s16le", "--channels=2",
                               QStringLiteral("--rate=%1").arg(CaptureRate), "--latency-msec=20"});
    QVERIFY(m_recorder.waitForStarted());
    QTRY_VERIFY(!m_recorded.isEmpty());
}

void TestSounds::cleanupTestCase()
{
    m_recorder.kill();
    m_recorder.waitForFinished();
}

double TestSounds::heard(qsizetype from, int channel) const
{
    std::vector<double> levels;
    for (qsizetype at = from / 4 * 4 + 2 * channel; at + 2 <= m_recorded.size(); at += 4) {
        const double v = qint16(quint8(m_recorded[at]) | quint8(m_recorded[at + 1]) << 8) / 32768.0;
        if (std::abs(v) > 0.05)
            levels.push_back(v);
    }
    if (levels.empty())
        return 0;
    std::nth_element(levels.begin(), levels.begin() + levels.size() / 2, levels.end());
    return levels[levels.size() / 2];
}

void TestSounds::played_data()
{
    QTest::addColumn<QByteArray>("file"); // none: the file is missing
    QTest::addColumn<bool>("expectDefault");
    QTest::addColumn<double>("left"); // the level the server hears on each channel (NaN: not measured)
    QTest::addColumn<double>("right");

    QTest::newRow("theme click") << themeFile("Click.WAV") << false << None << None;
    QTest::newRow("8-bit mono 11 kHz") << wave(1, 8, 1, 11025) << false << 0.5 << 0.5;
    QTest::newRow("16-bit stereo 44.1 kHz") << wave(1, 16, 2, 44100) << false << 0.5 << -0.25;
    QTest::newRow("24-bit stereo 48 kHz") << wave(1, 24, 2, 48000) << false << 0.5 << -0.25;
    QTest::newRow("32-bit mono 96 kHz") << wave(1, 32, 1, 96000) << false << 0.5 << 0.5;
    QTest::newRow("float stereo 22 kHz") << wave(3, 32, 2, 22050) << false << 0.5 << -0.25;
    QTest::newRow("double mono 8 kHz") << wave(3, 64, 1, 8000) << false << 0.5 << 0.5;
    QTest::newRow("extensible 24-bit stereo") << wave(1, 24, 2, 48000, {.extensible = true}) << false << 0.5 << -0.25;
    QTest::newRow("extensible float mono 192 kHz") << wave(3, 32, 1, 192000, {.extensible = true}) << false << 0.5 << 0.5;
    QTest::newRow("A-law mono") << wave(6, 8, 1, 8000) << false << 0.49 << 0.49;
    QTest::newRow("mu-law mono") << wave(7, 8, 1, 8000) << false << 0.49 << 0.49;
    QTest::newRow("IMA ADPCM stereo") << wave(0x11, 4, 2, 22050) << false << 1.0 << -1.0;
    QTest::newRow("MS ADPCM stereo") << wave(2, 4, 2, 44100) << false << 1.0 << -1.0;
    const QByteArray tagged = chunk("JUNK", QByteArray(28, '\0')) + chunk("bext", QByteArray(602, ' ')) +
                              chunk("LIST", QByteArray("INFOISFT\x05\0\0\0Tool", 17), -1, false); // odd, and no pad byte
    QTest::newRow("JUNK, bext and LIST before fmt") << wave(1, 16, 2, 44100, {.before = tagged}) << false << 0.5 << -0.25;
    QTest::newRow("data before fmt") << wave(1, 16, 1, 44100, {.dataFirst = true}) << false << 0.5 << 0.5;
    QTest::newRow("data size past the end") << wave(1, 16, 2, 44100, {.dataClaims = 0x7FFFFFF0}) << false << 0.5 << -0.25;

    QTest::newRow("missing file") << QByteArray() << true << None << None;
    QTest::newRow("not a wave") << themeFile("Main.BMP") << true << None << None;
    QTest::newRow("an MP3 is no wave") << themeFile("Intro.MP3") << true << None << None;
    QTest::newRow("no data chunk") << wave(1, 16, 1, 44100, {.data = false}) << true << None << None;
    QTest::newRow("unknown format code") << wave(0x55, 16, 1, 44100) << true << None << None;
    QTest::newRow("fmt size past the end")
        << wave(1, 16, 1, 44100, {.dataFirst = true, .fmtClaims = 0x10000, .after = chunk("LIST", QByteArray(200, ' '))})
        << true << None << None;
    QTest::newRow("chunk size past the end before fmt")
        << wave(1, 16, 1, 44100, {.before = chunk("JUNK", QByteArray(8, '\0'), 0x7FFFFFF0)}) << true << None << None;
}

void TestSounds::played()
{
    QFETCH(QByteArray, file);
    QFETCH(bool, expectDefault);
    QFETCH(double, left);
    QFETCH(double, right);
    TestRuntime t;
    if (!file.isNull())
        t.write("Sound.WAV", file);
    WavePlayer& player = t.runtime().sounds();
    QSignalSpy started(&player, &WavePlayer::started);
    // Backslashes are accepted as separators.
    const QString path = QString(t.path("Sound.WAV")).replace(QLatin1Char('/'), QLatin1Char('\\'));
    const qsizetype from = m_recorded.size();
    sndPlaySoundA(path, SND_ASYNC);
    QCOMPARE(player.lastRequested(), path);
    QTRY_COMPARE_WITH_TIMEOUT(started.count(), 1, 10000);
    QCOMPARE(started.at(0).at(0).toString(), expectDefault ? WavePlayer::defaultSound() : t.path("Sound.WAV"));
    if (std::isnan(left))
        return;
    // Until the server has played all of it, start-up included.
    QTRY_VERIFY_WITH_TIMEOUT(m_recorded.size() >= from + CaptureRate * 4, 10000);
    for (const auto& [channel, expected] : {std::pair{0, left}, std::pair{1, right}})
        QVERIFY2(std::abs(heard(from, channel) - expected) < 0.03,
                 qPrintable(QStringLiteral("channel %1 heard at %2, not %3").arg(channel).arg(heard(from, channel)).arg(expected)));
}

void TestSounds::newSoundCutsOffTheOld()
{
    TestRuntime t;
    t.write("Long.WAV", wave(1, 16, 1, 44100, {.seconds = 5}));
    t.write("Short.WAV", wave(1, 16, 2, 44100));
    WavePlayer& player = t.runtime().sounds();
    QSignalSpy started(&player, &WavePlayer::started);
    player.play(t.path("Long.WAV"));
    QTRY_COMPARE_WITH_TIMEOUT(started.count(), 1, 10000);
    const qsizetype from = m_recorded.size();
    player.play(t.path("Short.WAV"));
    QTRY_COMPARE_WITH_TIMEOUT(started.count(), 2, 10000);
    QCOMPARE(started.at(1).at(0).toString(), t.path("Short.WAV"));
    QCOMPARE(player.lastPlaying(), t.path("Short.WAV"));
    // The long sound held the right channel at the left's level: from the new sound on, only
    // the new one's level is heard there.
    QTRY_VERIFY_WITH_TIMEOUT(m_recorded.size() >= from + CaptureRate * 4, 10000);
    QVERIFY(std::abs(heard(from, 1) - Levels[1]) < 0.03);
    QTRY_COMPARE(player.findChildren<QAudioSink*>().size(), 1);
}

void TestSounds::noDefaultWhenAskedNot()
{
    TestRuntime t;
    WavePlayer& player = t.runtime().sounds();
    QSignalSpy started(&player, &WavePlayer::started);
    sndPlaySoundA(theme("NoSuch.WAV"), SND_ASYNC | SND_NODEFAULT);
    QCOMPARE(player.lastPlaying(), QString());
    // The next sound is the first and only one the server starts.
    sndPlaySoundA(theme("Click.WAV"), SND_ASYNC | SND_NODEFAULT);
    QTRY_COMPARE_WITH_TIMEOUT(started.count(), 1, 10000);
    QCOMPARE(started.at(0).at(0).toString(), theme("Click.WAV"));
}

void TestSounds::goneWhilePlaying()
{
    // Players that go away as their sound starts, while its output fills the server's buffer;
    // the second one's first sound was cut off by an event handler, and the output it left to
    // delete later is still there.
    struct Handler : QObject {
        std::function<void()> run;
        bool event(QEvent*) override { return run(), true; }
    };
    TestRuntime t;
    t.write("Long.WAV", wave(1, 16, 2, 44100, {.seconds = 3}));
    for (int sounds = 1; sounds <= 2; ++sounds) {
        auto player = std::make_unique<WavePlayer>();
        QSignalSpy started(player.get(), &WavePlayer::started);
        player->play(t.path("Long.WAV"));
        // Not QTRY: its wait would let the buffer fill.
        for (QDeadlineTimer deadline(10000); started.isEmpty() && !deadline.hasExpired();)
            QCoreApplication::processEvents();
        QVERIFY(!started.isEmpty());
        Handler handler;
        handler.run = [&] { player->play(t.path("Long.WAV")); };
        QEvent click(QEvent::User);
        if (sounds == 2)
            QCoreApplication::sendEvent(&handler, &click);
    }
}

QTEST_MAIN(TestSounds)
#include "tst_sounds.moc"
