#include "frame_updates.h"

#include "timer.h"

#include <QEvent>
#include <QTimerEvent>
#include <QWidget>

#include <algorithm>

namespace platform {
namespace {
// One display frame.
constexpr int kFrameMs = 16;
// A frame held back for a timer's handler still drawing, at most (about a tenth of a second).
constexpr int kMostDeferrals = 6;
} // namespace

FrameUpdates::FrameUpdates(QWidget& widget, std::function<void()> beforeUpdate)
    : m_widget(widget), m_beforeUpdate(std::move(beforeUpdate))
{
    widget.installEventFilter(this);
}

void FrameUpdates::add(const QRect& area)
{
    m_changed |= area;
    schedule();
}

bool FrameUpdates::eventFilter(QObject* watched, QEvent* event)
{
    // What changed while hidden never reached the screen, and Qt may show what it held before.
    if (watched == &m_widget && event->type() == QEvent::Show)
        add(m_widget.rect());
    return false;
}

void FrameUpdates::schedule()
{
    if (m_timer || !m_widget.isVisible() || m_changed.isEmpty())
        return;
    const qint64 since = m_lastFlush.isValid() ? m_lastFlush.elapsed() : kFrameMs;
    m_timer = startTimer(int(std::max<qint64>(kFrameMs - since, 0)), Qt::PreciseTimer);
}

void FrameUpdates::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer) {
        QObject::timerEvent(event);
        return;
    }
    killTimer(m_timer);
    m_timer = 0;
    if (timerHandlerRunning() && ++m_deferrals < kMostDeferrals) {
        if (!m_awaitingHandlers) {
            m_awaitingHandlers = true;
            afterTimerHandlers(this, [this] {
                m_awaitingHandlers = false;
                flush();
            });
        }
        m_timer = startTimer(kFrameMs, Qt::PreciseTimer);
        return;
    }
    flush();
}

void FrameUpdates::flush()
{
    m_deferrals = 0;
    if (m_timer) {
        killTimer(m_timer);
        m_timer = 0;
    }
    if (m_changed.isEmpty() || !m_widget.isVisible())
        return;
    if (m_beforeUpdate)
        m_beforeUpdate();
    m_widget.update(m_changed);
    m_changed = QRect();
    m_lastFlush.start();
}

} // namespace platform
