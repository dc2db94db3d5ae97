#pragma once
// Wave sounds played asynchronously on the desktop's sound server: play() returns at once, a
// new sound cuts off the one playing, and a file that is missing or that nothing here decodes
// plays the platform's default sound instead (unless told not to).

#include <QObject>
#include <QString>

class QAudioSink;

namespace platform {

class WavePlayer : public QObject {
    Q_OBJECT
public:
    WavePlayer();
    ~WavePlayer() override;

    // The sound that stands in for a missing file.
    static QString defaultSound();

    void play(const QString& path, bool fallBackToDefault = true);
    void stop();

    // What was last asked for, and the file that is being played for it ("" for none).
    const QString& lastRequested() const { return m_requested; }
    const QString& lastPlaying() const { return m_playing; }

Q_SIGNALS:
    void requested(const QString& path);
    // The sound server has started playing this file.
    void started(const QString& file);

private:
    bool start(const QString& file);

    QAudioSink* m_sink = nullptr; // child of this player
    QString m_requested;
    QString m_playing;
    quint64 m_sound = 0; // counts the sounds, so that a late report of an old one is ignored
};

} // namespace platform
