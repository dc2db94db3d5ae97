// The idle screen's processor cost: the real window, maximised on a 1280x1024 virtual screen,
// drawing for ten seconds after a second to settle. Prints the share of one core it took.

#include "companions/idle_screen.h"
#include "platform/runtime.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include <time.h>

#include <cstdio>

namespace {
double cpuSeconds()
{
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return t.tv_sec + t.tv_nsec / 1e9;
}
} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QTemporaryDir dir;
    platform::Runtime runtime(dir.path());
    IdleFRM& idle = platform::form<IdleFRM>();
    idle.Show();
    QTest::qWaitForWindowExposed(&idle);

    QTest::qWait(1000);
    const double before = cpuSeconds();
    constexpr int kSeconds = 10;
    QTest::qWait(kSeconds * 1000);
    const double share = (cpuSeconds() - before) / kSeconds * 100;
    std::printf("idle screen at 1280x1024, a frame every %d ms  %6.1f %% of one core  (goal 25)\n",
                IdleFRM::kFramePaceMs, share);
    return 0;
}
