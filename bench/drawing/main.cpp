// The platform's drawing budgets, measured on a real window of a virtual screen:
//  - windowless lines: 20,000 segments loaded as a doodle loads them (memory per segment, the
//    time to add one early and late, a full repaint of all of them);
//  - window drawing: one tick of the idle screen at 1280x1024 (two fans of 500 circles, then
//    the random-lines effect's 301 message pumps drawing 1,204 lines), in processor time, beside
//    the same drawing through Qt's painter.
// Prints one line per figure with its goal beside it.
//
// Usage: drawingbench                 (the figures)
//        drawingbench --frame FILE    (one idle-screen frame from a fixed random state, as the
//                                      screen shows it, saved as a PNG)

#include "platform/control_array.h"
#include "platform/form.h"
#include "platform/graphics.h"
#include "platform/colors.h"
#include "platform/convert.h"
#include "platform/runtime.h"
#include "platform/timer.h"
#include "shared/procedures.h"
#include "../shown.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPainter>
#include <QScreen>
#include <QTest>

#include <malloc.h>
#include <time.h>

#include <cstdio>
#include <utility>

using namespace platform;

namespace {

double cpuMs()
{
    timespec t{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
    return t.tv_sec * 1e3 + t.tv_nsec / 1e6;
}

double wallMs()
{
    static QElapsedTimer clock = [] { QElapsedTimer t; t.start(); return t; }();
    return clock.nsecsElapsed() / 1e6;
}

class Pad : public Form {
public:
    Pad(int w, int h) : Form("Pad", w, h) {}
    ControlArray<platform::Line> Line1; // the class, not the drawing method Form::Line
};

void lines(int width)
{
    constexpr int kSegments = 20000;
    Pad pad(8445, 6180);
    pad.Line1.add(pad, "Line1", 0, 0, 0, 0, 0);
    pad.Line1(0).setVisible(false);
    pad.Line1(0).setBorderWidth(width);
    pad.Show();
    waitUntilShown(*pad.widget());
    // The first segment makes the window's one-off buffers (its layer's picture, the screen's
    // backing store); what is counted is what each further segment adds.
    pad.Line1.Load(1).setVisible(true);
    QTest::qWait(50);
    malloc_trim(0);
    const size_t before = mallinfo2().uordblks;
    double early = 0, late = 0;
    for (int i = 2; i <= kSegments + 1; ++i) {
        const double t0 = wallMs();
        Line& segment = pad.Line1.Load(pad.Line1.UBound() + 1);
        const int x = (i * 37) % 8000, y = (i * 53) % 6000;
        segment.setEnds(x, y, x + 150, y + 90);
        segment.setVisible(true);
        const double spent = wallMs() - t0;
        if (i <= 1001)
            early += spent;
        if (i > kSegments + 1 - 1000)
            late += spent;
        if (i % 500 == 0)
            QCoreApplication::processEvents(); // the screen keeps up as a person draws
    }
    QTest::qWait(50);
    const size_t after = mallinfo2().uordblks;
    // A full repaint of the window, all segments shown again (as after being uncovered).
    double c0 = cpuMs();
    pad.widget()->repaint();
    const double repaint = cpuMs() - c0;
    // A change to a segment already drawn: every one of them drawn again, then shown.
    pad.Line1(1).setBorderColor(0x00FF00);
    c0 = cpuMs();
    pad.graphicsLayer().picture();
    pad.widget()->repaint();
    const double redraw = cpuMs() - c0;
    std::printf("lines, %d px pen: memory per segment          %8.1f bytes  (goal 64)\n", width, double(after - before) / kSegments);
    std::printf("lines, %d px pen: adding one, first 1,000     %8.4f ms    (goal 0.1)\n", width, early / 1000);
    std::printf("lines, %d px pen: adding one, last 1,000      %8.4f ms    (goal 0.1)\n", width, late / 1000);
    std::printf("lines, %d px pen: full repaint of 20,000      %8.2f ms    (goal 16)\n", width, repaint);
    std::printf("lines, %d px pen: all 20,000 drawn anew       %8.2f ms    (after a drawn segment changes)\n", width, redraw);
}

// A fan as the idle screen draws one: concentric circles of radius 0 to 500 pixels.
template <class Circle>
void fan(int x, int y, Circle circle)
{
    for (int i = 0; i <= 500; ++i)
        circle(x, y, i, RGB(i * 7 % 256, i * 13 % 256, i * 29 % 256));
}

// The random-lines effect's lines, drawn through Qt's painter on a picture as window drawing did
// before, from the same random sequence: 301 passes of four lines in a 100 by 100 scale.
void paintedLines(QPainter& painter, QSize size)
{
    auto at = [&](int x, int y) { return QPointF(double(x) * size.width() / 100, double(y) * size.height() / 100); };
    for (int pass = 0; pass <= 300; ++pass) {
        const int a = int(Rnd() * 101), b = int(Rnd() * 101), c = int(Rnd() * 101), d = int(Rnd() * 101);
        painter.setPen(toQColor(QBColor(int(Rnd() * 15))));
        painter.drawLine(at(a, c), at(b, d));
        painter.drawLine(at(a, d), at(b, c));
        painter.drawLine(at(b, c), at(a, d));
        painter.drawLine(at(c, d), at(a, b));
    }
}

// One tick of the idle screen at 1280x1024, in a timer's tick as the idle screen draws it: a
// fan, the random-lines effect (which clears first and pumps messages 301 times), a second fan,
// and the frame's way to the screen; in processor time. Beside it, the same tick's drawing through Qt's painter, as windows drew before, and
// whether the two pictures are the same pixel for pixel.
void idleTick()
{
    Pad screen(1280 * 15, 1024 * 15);
    screen.setBorderStyle(vbBSNone);
    screen.Show();
    waitUntilShown(*screen.widget());
    constexpr int kTicks = 10;
    double first = 0, worst = 0, total = 0, painted = 0;
    bool same = true;
    for (int tick = 0; tick < kTicks; ++tick) {
        const int x1 = 520 + tick * 20, x2 = 700 - tick * 20;
        Randomize(tick);
        const RandomSource start = Runtime::current().random();
        // Drawn in a timer's tick, as the idle screen draws.
        Timer ticker(screen, "SS", 1, false);
        bool drawn = false;
        ticker.onTimer([&] {
            if (std::exchange(drawn, true))
                return;
            screen.ScalePixels();
            fan(x1, 510, [&](int x, int y, int r, OleColor c) { screen.Circle(x, y, r, c); });
            RandomLinesEffect(screen);
            screen.ScalePixels();
            fan(x2, 505, [&](int x, int y, int r, OleColor c) { screen.Circle(x, y, r, c); });
        });
        const double c0 = cpuMs();
        ticker.setEnabled(true);
        if (!QTest::qWaitFor([&] { return drawn; }))
            require(false, *screen.widget(), "ticked");
        ticker.setEnabled(false);
        QTest::qWait(20); // the frame's flush and paint
        const double spent = cpuMs() - c0; // processor time: the waits themselves cost none
        (tick == 0 ? first : worst) = std::max(tick == 0 ? first : worst, spent);
        total += spent;

        QImage picture(screen.widget()->size(), QImage::Format_RGB32);
        Runtime::current().random() = start; // the same lines
        const double p0 = cpuMs();
        {
            QPainter painter(&picture);
            auto circle = [&](int x, int y, int r, OleColor c) {
                painter.setPen(toQColor(c));
                if (r < 1)
                    painter.drawPoint(x, y);
                else
                    painter.drawEllipse(QRect(x - r, y - r, 2 * r, 2 * r));
            };
            fan(x1, 510, circle);
            picture.fill(Qt::black);
            paintedLines(painter, picture.size());
            fan(x2, 505, circle);
        }
        painted += cpuMs() - p0;
        same = same && screen.surface().copy(picture.rect()) == picture;
    }
    std::printf("drawing: idle-screen tick at 1280x1024           %6.2f ms    (goal 4; processor time, mean of %d)\n",
                total / kTicks, kTicks);
    std::printf("drawing: idle-screen tick, worst after the first %6.2f ms    (goal 8; the first %.2f)\n", worst, first);
    std::printf("drawing: the same drawing through Qt's painter   %6.2f ms    (as windows drew before; same pixels: %s)\n",
                painted / kTicks, same ? "yes" : "NO");
}

// A fan as the idle screen draws one, from the random sequence: its centre, and a random colour
// for each circle.
void idleFan(Form& screen)
{
    auto component = [] { return int(RoundHalfEven(Rnd() * 255)); };
    screen.ScalePixels();
    const int x = ToInteger(TextToDouble(FormatTwoDigits(Rnd() * screen.ScaleWidth())));
    const int y = ToInteger(TextToDouble(FormatTwoDigits(Rnd() * screen.ScaleHeight())));
    for (int i = 0; i <= std::min(x, y); ++i) {
        const int red = component(), green = component(), blue = component();
        screen.Circle(x, y, i, RGB(red, green, blue));
    }
}

// One frame of the idle screen as a person sees it: a tick drawn from a fixed random state on a
// shown 1280x1024 window, then what the X server shows of the window, saved as a picture (to
// compare the screen before and after a change to window drawing).
int frame(const QString& file)
{
    Pad screen(1280 * 15, 1024 * 15);
    screen.setBorderStyle(vbBSNone);
    screen.Show();
    waitUntilShown(*screen.widget());
    QTest::qWait(100);
    Runtime::current().random() = RandomSource();
    runHandler([&] {
        Randomize(45678.25);
        idleFan(screen);
        RandomLinesEffect(screen);
        Randomize(45678.5);
        idleFan(screen);
    });
    QTest::qWait(200); // the frame's flush and paint
    return screen.widget()->screen()->grabWindow(screen.widget()->winId()).toImage().save(file) ? 0 : 1;
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    Runtime runtime;
    if (argc == 3 && QByteArray(argv[1]) == "--frame")
        return frame(QString::fromLocal8Bit(argv[2]));
    lines(1);
    lines(3);
    idleTick();
    return 0;
}
