#pragma once
// What changed on a widget reaches the screen at most once a display frame: the areas are
// collected and handed to the widget's update() together, as soon as a frame has passed since
// the last time. Drawn in a timer's handler that pumps messages as it draws (the lines effect),
// they wait for the handler's end, so the screen never shows a tick half drawn; one that draws
// for long is shown as it goes all the same. A hidden widget sends nothing; shown, all of it.

#include <QElapsedTimer>
#include <QObject>
#include <QRect>

#include <functional>

class QWidget;

namespace platform {

class FrameUpdates : public QObject {
public:
    // beforeUpdate runs just before the widget is asked to repaint (to bring its picture up to date).
    explicit FrameUpdates(QWidget& widget, std::function<void()> beforeUpdate = {});

    void add(const QRect& area);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void schedule();
    void flush();

    QWidget& m_widget;
    std::function<void()> m_beforeUpdate;
    QRect m_changed; // since the screen last got the widget
    int m_timer = 0;
    QElapsedTimer m_lastFlush;
    int m_deferrals = 0; // frames held back for a timer's handler still drawing
    bool m_awaitingHandlers = false;
};

} // namespace platform
