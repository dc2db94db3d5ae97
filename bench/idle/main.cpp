// The idle screen's processor cost: the real window, maximised on a 1280x1024 virtual screen,
// drawing for ten seconds after a second to settle, then hidden (as after the click back to the
// browser, when it goes on drawing) for ten seconds more. Prints the share of one core the
// process took in each, with the size it drew at.

#include "companions/idle_screen.h"
#include "platform/runtime.h"
#include "../shown.h"

#include <QApplication>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <time.h>

#include <cstdio>

namespace {

constexpr int kSettleMs = 1000;
constexpr int kSeconds = 10;

double cpuSeconds()
{
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return t.tv_sec + t.tv_nsec / 1e9;
}

// Waits in an event loop, as the program's own loop waits (QTest::qWait wakes every 10 ms).
void wait(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

// Counts the paints a window gets: the frames that reach the screen.
struct PaintCounter : QObject {
    int paints = 0;
    bool eventFilter(QObject*, QEvent* event) override
    {
        paints += event->type() == QEvent::Paint;
        return false;
    }
};

// The process's share of one core over the next kSeconds, in percent.
double shareOfACore()
{
    const double before = cpuSeconds();
    wait(kSeconds * 1000);
    return (cpuSeconds() - before) / kSeconds * 100;
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QTemporaryDir dir;
    platform::Runtime runtime(dir.path());
    IdleFRM& idle = platform::form<IdleFRM>();
    idle.Show();
    waitUntilShown(*idle.widget());
    wait(kSettleMs);
    const QSize drawn = idle.widget()->size();
    PaintCounter frames;
    idle.widget()->installEventFilter(&frames);
    const double shown = shareOfACore();
    const double framesPerSecond = double(frames.paints) / kSeconds;
    idle.Hide();
    wait(kSettleMs);
    const double hidden = shareOfACore();
    std::printf("idle screen at %dx%d, a frame every %d ms         %6.1f %% of one core  (goal 25)\n",
                drawn.width(), drawn.height(), platform::kTimerFloorMs, shown);
    std::printf("idle screen: frames that reached the screen          %6.1f a second\n", framesPerSecond);
    std::printf("idle screen hidden, a tick every %d ms               %6.1f %% of one core  (goal 0.5)\n",
                IdleFRM::kHiddenPaceMs, hidden);
    return 0;
}
