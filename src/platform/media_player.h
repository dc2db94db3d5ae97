#pragma once
// The hosted media player over Qt Multimedia: an automatic-start switch, open by file name
// (the file starts at once when automatic start is on), stop. A widget, so that a window can
// show it; the intro keeps it hidden. Shown with its controls, it is a player of its own: a
// display of the file, its state and its elapsed and total time, a position slider, play and
// pause, stop, and the volume.

#include "control.h"

#include <optional>

class QMediaPlayer;
class QAudioOutput;
class QLabel;
class QLayout;
class QSlider;
class QToolButton;

namespace platform {

// Ranks the media framework's plain MP3 decoder above the codec library's, which would bring
// some thirty megabytes of video and filter libraries into the process for one short tune (it
// stays the fallback where the plain one is missing). Call before the application object is
// made; a choice the user made in the environment still wins.
void prepareMedia();

class MediaPlayer : public Control {
    Q_OBJECT
public:
    enum class Controls { None, Shown };
    MediaPlayer(Container& parent, const char* name, TwipsRect rect, Controls controls = Controls::None);
    ~MediaPlayer() override;

    bool AutoStart() const { return m_autoStart; }
    void setAutoStart(bool on) { m_autoStart = on; }
    // A missing or undecodable file only means silence, as the component reports no error.
    void Open(const QString& fileName);
    void Stop();
    QString FileName() const { return m_fileName; }
    bool isPlaying() const;

    // The transport, as its buttons work it.
    void Play();
    void Pause();
    qint64 Position() const; // milliseconds
    qint64 Duration() const;
    int Volume() const { return m_volume; } // 0 to 100

    // The parts of the controls, for finding them on the screen: where each one is, in pixels
    // of the control (an empty rectangle without controls).
    enum class Part { Display, PlayPause, Stop, Position, Volume };
    QRect partRect(Part part) const;
    // What the display shows: the file's name, the state, the elapsed and the total time.
    QString displayText() const;

    QMediaPlayer* player() const { return m_player; }

Q_SIGNALS:
    void displayChanged();

private:
    void startPending();
    void makePlayer();
    void buildControls();
    QWidget* makeDisplay();
    QWidget* makePositionSlider();
    QLayout* makeTransport();
    void showState();
    void showTime();

    struct Request {
        QString fileName;
        bool play = false;
    };
    std::optional<Request> m_pending;
    QMediaPlayer* m_player = nullptr; // made on first use: the media framework is slow to start
    QAudioOutput* m_output = nullptr;
    QString m_fileName;
    bool m_autoStart = false;
    int m_volume = 100;

    // The controls, when shown.
    QLabel* m_title = nullptr;
    QLabel* m_state = nullptr;
    QLabel* m_time = nullptr;
    QSlider* m_position = nullptr;
    QToolButton* m_playPause = nullptr;
    QToolButton* m_stop = nullptr;
    QSlider* m_volumeSlider = nullptr;
    QWidget* m_display = nullptr;
};

} // namespace platform
