#include "sounds.h"

#include "paths.h"
#include "wave_reader.h"

#include <QAudioFormat>
#include <QAudioSink>
#include <QFile>
#include <QCoreApplication>

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace platform {
namespace {

struct OpenWave {
    std::unique_ptr<QFile> file;
    wave::Layout layout;
};

std::optional<OpenWave> openWave(const QString& path)
{
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::ReadOnly))
        return {};
    QFile* f = file.get();
    const auto layout = wave::findWave(quint64(f->size()), [f](std::uint64_t at, std::span<std::uint8_t> buffer) {
        if (!f->seek(qint64(at)))
            return std::size_t(0);
        return std::size_t(std::max<qint64>(f->read(reinterpret_cast<char*>(buffer.data()), qint64(buffer.size())), 0));
    });
    if (!layout)
        return {};
    return OpenWave{std::move(file), *layout};
}

// The samples of a wave as 16-bit PCM, decoded from the file a few blocks at a time as the
// sound server asks for them. Why not a decoded copy handed to QSoundEffect: a stranger's wave
// may be hundreds of megabytes, and this way it costs what a click costs (a buffer of one
// period), with no decoding thread and no temporary file; converting 20 ms of samples at a
// time is far too cheap to be felt on the UI thread.
class WaveStream : public QIODevice {
public:
    WaveStream(OpenWave wave, std::function<void()> firstRead, QObject* parent)
        : QIODevice(parent), m_wave(std::move(wave)), m_firstRead(std::move(firstRead))
    {
    }

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override
    {
        const auto& layout = m_wave.layout;
        const qint64 blockBytes = qint64(layout.format.outBlockSamples() * sizeof(std::int16_t));
        return pendingBytes() + qint64(layout.blocks - m_nextBlock) * blockBytes +
               QIODevice::bytesAvailable();
    }

protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        if (m_firstRead)
            std::exchange(m_firstRead, nullptr)();
        qint64 copied = 0;
        while (copied < maxSize && (pendingBytes() > 0 || decodeMore(maxSize - copied))) {
            const auto n = std::min(maxSize - copied, pendingBytes());
            std::memcpy(data + copied, reinterpret_cast<const char*>(m_pending.data()) + m_pendingAt, size_t(n));
            m_pendingAt += size_t(n);
            copied += n;
        }
        return copied;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    qint64 pendingBytes() const { return qint64(m_pending.size() * sizeof(std::int16_t) - m_pendingAt); }

    bool decodeMore(qint64 wanted)
    {
        const auto& layout = m_wave.layout;
        const auto& format = layout.format;
        const qint64 outBlockBytes = qint64(format.outBlockSamples() * sizeof(std::int16_t));
        const qint64 left = qint64(layout.blocks - m_nextBlock);
        const qint64 byWanted = (wanted + outBlockBytes - 1) / outBlockBytes;
        const qint64 byInput = std::max<qint64>(1, MaxRead / format.blockBytes);
        const qint64 blocks = std::min({left, byWanted, byInput});
        if (blocks <= 0)
            return false;
        m_in.resize(size_t(blocks) * format.blockBytes);
        QFile& file = *m_wave.file;
        const qint64 got = file.seek(qint64(layout.dataOffset + m_nextBlock * format.blockBytes))
                               ? file.read(reinterpret_cast<char*>(m_in.data()), qint64(m_in.size()))
                               : -1;
        m_pending.resize(size_t(blocks) * format.outBlockSamples());
        const size_t decoded = wave::decodeBlocks(format, {m_in.data(), size_t(std::max<qint64>(got, 0))}, m_pending);
        // A file cut short while it plays ends the sound where it ends.
        m_nextBlock = decoded == size_t(blocks) ? m_nextBlock + decoded : layout.blocks;
        m_pending.resize(decoded * format.outBlockSamples());
        m_pendingAt = 0;
        return !m_pending.empty();
    }

    static constexpr qint64 MaxRead = 64 * 1024;
    OpenWave m_wave;
    std::function<void()> m_firstRead;
    std::uint64_t m_nextBlock = 0;
    std::vector<std::uint8_t> m_in;
    std::vector<std::int16_t> m_pending; // decoded, not yet read
    size_t m_pendingAt = 0;             // in bytes
};

} // namespace

WavePlayer::WavePlayer() = default;

WavePlayer::~WavePlayer()
{
    // A sink processes events as it closes: only a stopped sink ignores its own pending calls
    // for more samples, one left to be deleted later would be deleted twice, and no report of a
    // sound may reach a player half gone.
    ++m_sound;
    m_sink = nullptr;
    for (auto sinks = findChildren<QAudioSink*>(Qt::FindDirectChildrenOnly); !sinks.isEmpty();
         sinks = findChildren<QAudioSink*>(Qt::FindDirectChildrenOnly)) {
        for (QAudioSink* sink : sinks) {
            sink->stop();
            QCoreApplication::removePostedEvents(sink, QEvent::DeferredDelete);
        }
        qDeleteAll(sinks);
    }
}

QString WavePlayer::defaultSound()
{
    return QStringLiteral(":/platform/default.wav");
}

void WavePlayer::play(const QString& path, bool fallBackToDefault)
{
    m_requested = path;
    Q_EMIT requested(path);
    stop();
    if (!start(nativePath(path)) && fallBackToDefault)
        start(defaultSound());
}

void WavePlayer::stop()
{
    ++m_sound;
    if (m_sink) {
        m_sink->stop(); // cuts the sound off at once
        m_sink->disconnect(this);
        m_sink->deleteLater();
        m_sink = nullptr;
    }
    m_playing.clear();
}

bool WavePlayer::start(const QString& file)
{
    auto wave = openWave(file);
    if (!wave)
        return false;
    const wave::Format& f = wave->layout.format;
    QAudioFormat format;
    format.setSampleRate(int(f.sampleRate));
    format.setChannelCount(int(f.outChannels()));
    format.setSampleFormat(QAudioFormat::Int16);
    auto* sink = new QAudioSink(format, this);
    const quint64 sound = m_sound;
    // The server asking for the first samples is the sound starting to play.
    auto firstRead = [this, sound, file] {
        QMetaObject::invokeMethod(this, [this, sound, file] {
            if (sound == m_sound)
                Q_EMIT started(file);
        }, Qt::QueuedConnection);
    };
    auto* stream = new WaveStream(std::move(*wave), firstRead, sink);
    stream->open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    sink->start(stream);
    if (sink->error() != QAudio::NoError) { // the server takes no sound of this kind
        sink->deleteLater();
        return false;
    }
    m_sink = sink;
    m_playing = file;
    return true;
}

} // namespace platform
