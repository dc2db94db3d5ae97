#pragma once
// The hosted media player over Qt Multimedia: an automatic-start switch, open by file name
// (the file starts at once when automatic start is on), stop. A widget, so that a window can
// show it; the intro keeps it hidden.

#include "control.h"

#include <optional>

class QMediaPlayer;
class QAudioOutput;

namespace platform {

class MediaPlayer : public Control {
    Q_OBJECT
public:
    MediaPlayer(Container& parent, const char* name, TwipsRect rect);
    ~MediaPlayer() override;

    bool AutoStart() const { return m_autoStart; }
    void setAutoStart(bool on) { m_autoStart = on; }
    // A missing or undecodable file only means silence, as the component reports no error.
    void Open(const QString& fileName);
    void Stop();
    QString FileName() const { return m_fileName; }
    bool isPlaying() const;

    QMediaPlayer* player() const { return m_player; }

private:
    void startPending();

    struct Request {
        QString fileName;
        bool play = false;
    };
    std::optional<Request> m_pending;
    QMediaPlayer* m_player = nullptr; // made on first use: the media framework is slow to start
    QAudioOutput* m_output = nullptr;
    QString m_fileName;
    bool m_autoStart = false;
};

} // namespace platform
