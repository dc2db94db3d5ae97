#include "timer.h"

#include "runtime.h"

namespace platform {

Timer::Timer(Container& parent, const char* name, int interval, bool enabled)
    : QObject(parent.containerWidget()), m_interval(interval), m_enabled(enabled)
{
    setObjectName(QString::fromLatin1(name));
    m_timer.setTimerType(Qt::CoarseTimer);
    connect(&m_timer, &QTimer::timeout, this, &Timer::tick);
    restart();
}

void Timer::setInterval(int ms)
{
    m_interval = ms;
    restart();
}

void Timer::setEnabled(bool enabled)
{
    m_enabled = enabled;
    restart();
}

void Timer::restart()
{
    // Interval 0 disables a classic timer.
    if (!m_enabled || m_interval <= 0) {
        m_timer.stop();
        return;
    }
    m_timer.start(std::max(m_interval, kTimerFloorMs));
}

void Timer::tick()
{
    if (m_running || !m_handler)
        return;
    m_running = true;
    runHandler(m_handler);
    m_running = false;
}

} // namespace platform
