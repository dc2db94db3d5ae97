#pragma once
// The timer control: runs its handler every Interval milliseconds on the UI thread while
// Enabled. An interval below the platform's floor runs at the floor, and a tick that comes
// while the handler is still running (it may pump messages) is dropped, never re-entered.

#include "control.h"

#include <QTimer>

#include <QPointer>

#include <algorithm>
#include <functional>

namespace platform {

// The fastest a timer runs, in milliseconds. The classic desktop's minimum interval is 10 ms,
// but its timers are delivered on the 15.6 ms system clock tick, so the many 1 ms timers of
// the windows really ran 64 times a second; one display frame (16 ms) keeps that pace and
// spends no more processor time than a frame's redraw.
constexpr int kTimerFloorMs = 16;

class Timer : public QObject {
    Q_OBJECT
public:
    Timer(Container& parent, const char* name, int interval, bool enabled = true);
    ~Timer() override;

    int Interval() const { return m_interval; }
    void setInterval(int ms);
    bool Enabled() const { return m_enabled; }
    void setEnabled(bool enabled);
    // The interval the timer really runs at.
    int effectiveInterval() const
    {
        return std::max({m_interval, kTimerFloorMs, m_windowShown || !m_hiddenPace ? m_pace : m_hiddenPace});
    }
    // A slower floor for this timer alone, for a window whose design asks for more ticks than
    // a person can see and whose every tick costs much (0: the platform's floor).
    void setPace(int ms);
    // The floor while the timer's window is hidden, where nobody sees what a tick does (0: the
    // same as shown). With CatchUp::AtShow the timer ticks at once when the window is shown.
    enum class CatchUp { No, AtShow };
    void setHiddenPace(int ms, CatchUp catchUp = CatchUp::No);

    void onTimer(Handler handler) { m_handler = std::move(handler); }

    void tick();

private:
    void restart();
    bool eventFilter(QObject* watched, QEvent* event) override; // the window shown or hidden

    QTimer m_timer;
    QWidget* m_window;
    int m_interval;
    int m_pace = 0;
    int m_hiddenPace = 0;
    CatchUp m_catchUp = CatchUp::No;
    bool m_windowShown;
    bool m_enabled;
    bool m_running = false;
    Handler m_handler;
};

// Runs fn once no timer's handler is running any more: at once when none is, else as the
// outermost one returns (its pumps let others run inside it). Dropped if context goes first.
// Drawing a tick leaves reaches the screen this way whole, never half drawn.
void afterTimerHandlers(QObject* context, std::function<void()> fn);
bool timerHandlerRunning();

} // namespace platform
