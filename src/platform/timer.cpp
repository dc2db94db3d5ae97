#include "timer.h"

#include "runtime.h"

#include <QEvent>

#include <algorithm>
#include <vector>

namespace platform {
namespace {

// All timers at the floor share one clock, so that however many windows ask for 1 ms the
// process wakes once per floor interval.
class FloorClock : public QObject {
public:
    static FloorClock& instance()
    {
        static FloorClock clock;
        return clock;
    }
    void add(Timer* timer)
    {
        if (std::find(m_timers.begin(), m_timers.end(), timer) == m_timers.end())
            m_timers.push_back(timer);
        if (!m_timer.isActive())
            m_timer.start(kTimerFloorMs);
    }
    void remove(Timer* timer)
    {
        m_timers.erase(std::remove(m_timers.begin(), m_timers.end(), timer), m_timers.end());
        if (m_timers.empty())
            m_timer.stop();
    }

private:
    FloorClock()
    {
        m_timer.setTimerType(Qt::CoarseTimer);
        connect(&m_timer, &QTimer::timeout, this, [this] {
            // By index: a handler may remove timers (an unload); the list is re-read each step.
            for (std::size_t i = 0; i < m_timers.size(); ++i)
                m_timers[i]->tick();
        });
    }
    QTimer m_timer;
    std::vector<Timer*> m_timers;
};

int g_handlersRunning = 0;
std::vector<std::pair<QPointer<QObject>, std::function<void()>>> g_afterHandlers;

} // namespace

bool timerHandlerRunning()
{
    return g_handlersRunning > 0;
}

void afterTimerHandlers(QObject* context, std::function<void()> fn)
{
    if (g_handlersRunning == 0)
        fn();
    else
        g_afterHandlers.emplace_back(context, std::move(fn));
}

Timer::Timer(Container& parent, const char* name, int interval, bool enabled)
    : QObject(parent.containerWidget()), m_window(parent.containerWidget()->window()), m_interval(interval),
      m_windowShown(m_window->isVisible()), m_enabled(enabled)
{
    setObjectName(QString::fromLatin1(name));
    m_window->installEventFilter(this);
    m_timer.setTimerType(Qt::CoarseTimer);
    connect(&m_timer, &QTimer::timeout, this, &Timer::tick);
    restart();
}

Timer::~Timer()
{
    FloorClock::instance().remove(this);
}

void Timer::setInterval(int ms)
{
    m_interval = ms;
    restart();
}

void Timer::setPace(int ms)
{
    m_pace = ms;
    restart();
}

void Timer::setHiddenPace(int ms, CatchUp catchUp)
{
    m_hiddenPace = ms;
    m_catchUp = catchUp;
    restart();
}

bool Timer::eventFilter(QObject* watched, QEvent* event)
{
    const bool show = event->type() == QEvent::Show;
    if (watched == m_window && (show || event->type() == QEvent::Hide)) {
        m_windowShown = show;
        if (m_hiddenPace)
            restart();
        if (show && m_enabled && m_catchUp == CatchUp::AtShow)
            tick();
    }
    return false;
}

void Timer::setEnabled(bool enabled)
{
    m_enabled = enabled;
    restart();
}

void Timer::restart()
{
    // Interval 0 disables a classic timer.
    FloorClock::instance().remove(this);
    m_timer.stop();
    if (!m_enabled || m_interval <= 0)
        return;
    if (effectiveInterval() <= kTimerFloorMs)
        FloorClock::instance().add(this);
    else
        m_timer.start(effectiveInterval());
}

void Timer::tick()
{
    if (m_running || !m_handler)
        return;
    m_running = true;
    ++g_handlersRunning;
    runHandler(m_handler);
    m_running = false;
    if (--g_handlersRunning == 0 && !g_afterHandlers.empty()) {
        auto waiting = std::move(g_afterHandlers);
        g_afterHandlers.clear();
        for (auto& [context, fn] : waiting)
            if (context)
                fn();
    }
}

} // namespace platform
