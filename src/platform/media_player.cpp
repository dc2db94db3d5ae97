#include "media_player.h"

#include "paths.h"

#include <QAudioOutput>
#include <QMediaPlayer>
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

void MediaPlayer::Open(const QString& fileName)
{
    m_fileName = fileName;
    // Opened once the event loop has had a turn, so that a window opening music in its load
    // handler is drawn without waiting for the media framework to start.
    QMetaObject::invokeMethod(this, [this, fileName, play = m_autoStart] { start(fileName, play); },
                              Qt::QueuedConnection);
}

void MediaPlayer::start(const QString& fileName, bool play)
{
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
    m_player->setSource(QUrl::fromLocalFile(nativePath(fileName)));
    if (play)
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
