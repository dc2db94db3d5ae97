#include "sounds.h"

#include "files.h"

#include <QFile>
#include <QSoundEffect>
#include <QUrl>

namespace platform {

bool isPlayableWave(const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return false;
    const QByteArray head = f.read(36);
    if (head.size() < 36 || !head.startsWith("RIFF") || head.mid(8, 8) != "WAVEfmt ")
        return false;
    const auto format = quint16(uchar(head[20]) | uchar(head[21]) << 8);
    return format == 1; // PCM
}

WavePlayer::WavePlayer() = default;
WavePlayer::~WavePlayer() = default;

QString WavePlayer::defaultSound()
{
    return QStringLiteral(":/platform/default.wav");
}

void WavePlayer::play(const QString& path, bool fallBackToDefault)
{
    m_requested = path;
    m_fallBack = fallBackToDefault;
    Q_EMIT requested(path);
    const QString file = nativePath(path);
    if (isPlayableWave(file))
        start(file);
    else if (fallBackToDefault)
        start(defaultSound());
    else
        stop();
}

void WavePlayer::stop()
{
    if (m_effect)
        m_effect->stop();
    m_playing.clear();
}

void WavePlayer::start(const QString& file)
{
    // A fresh effect for every sound: stopping and dropping the old one cuts it off at once,
    // and a late status report of the old sound can no longer reach us.
    if (m_effect) {
        m_effect->stop();
        m_effect->disconnect(this);
        m_effect->deleteLater(); // it may be the sender of the status we are handling
    }
    m_effect = new QSoundEffect(this);
    m_playing = file;
    QSoundEffect* effect = m_effect;
    connect(effect, &QSoundEffect::statusChanged, this, &WavePlayer::handleStatus);
    // Playing means: the samples are decoded and handed to the sound server.
    auto reportStart = [this, effect, file, reported = false]() mutable {
        if (!reported && effect->status() == QSoundEffect::Ready && effect->isPlaying()) {
            reported = true;
            Q_EMIT started(file);
        }
    };
    connect(effect, &QSoundEffect::statusChanged, this, reportStart);
    connect(effect, &QSoundEffect::playingChanged, this, reportStart);
    effect->setSource(file.startsWith(QLatin1Char(':')) ? QUrl(QLatin1String("qrc") + file)
                                                        : QUrl::fromLocalFile(file));
    effect->play();
}

void WavePlayer::handleStatus()
{
    if (!m_effect || m_effect->status() != QSoundEffect::Error)
        return;
    // The header looked right but the samples could not be decoded.
    if (m_fallBack && m_playing != defaultSound())
        start(defaultSound());
}

} // namespace platform
