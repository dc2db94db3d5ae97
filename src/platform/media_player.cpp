#include "media_player.h"

#include "paths.h"

#include <QAudioOutput>
#include <QMediaPlayer>
#include <QUrl>

namespace platform {

MediaPlayer::MediaPlayer(Container& parent, const char* name, TwipsRect rect)
    : Control(parent, name, new QWidget, rect)
{
    m_player = new QMediaPlayer(this);
    m_output = new QAudioOutput(this);
    m_player->setAudioOutput(m_output);
}

MediaPlayer::~MediaPlayer()
{
    m_player->stop();
}

void MediaPlayer::Open(const QString& fileName)
{
    m_fileName = fileName;
    m_player->setSource(QUrl::fromLocalFile(nativePath(fileName)));
    if (m_autoStart)
        m_player->play();
}

void MediaPlayer::Stop()
{
    m_player->stop();
}

bool MediaPlayer::isPlaying() const
{
    return m_player->playbackState() == QMediaPlayer::PlayingState;
}

} // namespace platform
