#include "media_player.h"

#include "form.h"
#include "paths.h"
#include "timing.h"

#include <QAudioOutput>
#include <QMediaPlayer>
#include <QTimer>
#include <QUrl>

namespace platform {

MediaPlayer::MediaPlayer(Container& parent, const char* name, TwipsRect rect)
    : Control(parent, name, new QWidget, rect)
{
}

MediaPlayer::~MediaPlayer()
{
    if (m_player)
        m_player->stop();
}

namespace {
// A window that opens music in its load handler is drawn first: the media framework takes
// tens of milliseconds to start. One that is not shown gets its music after this long.
constexpr int kLatestStartMs = 250;
} // namespace

void MediaPlayer::Open(const QString& fileName)
{
    m_fileName = fileName;
    const bool waiting = m_pending.has_value();
    m_pending = Request{fileName, m_autoStart};
    if (waiting)
        return;
    auto* window = qobject_cast<Form*>(widget()->window());
    if (window && !window->painted()) {
        connect(window, &Form::firstPainted, this, &MediaPlayer::startPending,
                Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
        QTimer::singleShot(kLatestStartMs, this, &MediaPlayer::startPending);
    } else {
        QMetaObject::invokeMethod(this, &MediaPlayer::startPending, Qt::QueuedConnection);
    }
}

void MediaPlayer::startPending()
{
    if (!m_pending)
        return;
    const Request request = *m_pending;
    m_pending.reset();
    logTiming(QStringLiteral("opening ") + request.fileName);
    if (!m_player) {
        m_player = new QMediaPlayer(this);
        m_output = new QAudioOutput(this);
        m_player->setAudioOutput(m_output);
        // Played to its end, the file lets go of the decoding pipeline and what it holds.
        connect(m_player, &QMediaPlayer::mediaStatusChanged, this, [this](QMediaPlayer::MediaStatus status) {
            if (status == QMediaPlayer::EndOfMedia)
                m_player->setSource(QUrl());
        });
    }
    m_player->setSource(QUrl::fromLocalFile(nativePath(request.fileName)));
    if (request.play)
        m_player->play();
}

void MediaPlayer::Stop()
{
    if (m_player)
        m_player->stop();
}

bool MediaPlayer::isPlaying() const
{
    return m_player && m_player->playbackState() == QMediaPlayer::PlayingState;
}

} // namespace platform
