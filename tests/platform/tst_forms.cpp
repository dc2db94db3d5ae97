// The form runtime: windows loaded on first touch and made afresh after Unload, the error
// model at the handler boundary, End, timers, twips geometry, drawing and control events.

#include "platform/control_array.h"
#include "platform/controls.h"
#include "platform/form.h"
#include "platform/graphics.h"
#include "platform/runtime.h"
#include "platform/timer.h"
#include "support/input.h"
#include "support/test_runtime.h"

#include <QElapsedTimer>
#include <QPaintEvent>
#include <QPainter>
#include <QSignalSpy>
#include <QTimer>
#include <QTest>

using namespace platform;

namespace {

int g_loads = 0;
int g_unloads = 0;

class Sample : public Form {
public:
    Sample() : Form("Sample", 4800, 3600) {}

    TextBox Text1{*this, "Text1", {120, 120, 2000, 300}, QStringLiteral("designed")};
    ControlArray<Label> Info;
    std::function<void()> onLoad;
    int cancelUnload = 0;

protected:
    void Form_Load() override
    {
        ++g_loads;
        form<Sample>().Text1.setText(QStringLiteral("loaded")); // a touch of itself: no second load
        for (int i = 0; i < 3; ++i)
            Info.add(*this, "Info", i, TwipsRect{2400, 120 + i * 400, 1500, 300}, QStringLiteral("info"));
        if (onLoad)
            onLoad();
    }
    void Form_Unload(int& cancel) override
    {
        ++g_unloads;
        cancel = cancelUnload;
    }
};

// A window of control arrays of several kinds, and of the window's own mouse events.
class Arrays : public Form {
public:
    Arrays() : Form("Arrays", 4800, 3600)
    {
        for (int i = 0; i < 3; ++i)
            Keys.add(*this, "Keys", i, TwipsRect{120 + i * 600, 120, 495, 375}, QString::number(i));
        for (int i = 0; i < 2; ++i)
            Pics.add(*this, "Pics", i, TwipsRect{120 + i * 900, 720, 750, 750}, Image::Fit::Stretch);
        Lines.add(*this, "Lines", 0, 0, 0, 0, 0);
    }
    ControlArray<CommandButton> Keys;
    ControlArray<Image> Pics;
    ControlArray<platform::Line> Lines;
    QStringList events;

protected:
    void Form_MouseDown(int button, int, double x, double y) override { events << QStringLiteral("down %1 %2 %3").arg(button).arg(x).arg(y); }
    void Form_MouseMove(int button, int, double x, double y) override { events << QStringLiteral("move %1 %2 %3").arg(button).arg(x).arg(y); }
    void Form_MouseUp(int button, int, double x, double y) override { events << QStringLiteral("up %1 %2 %3").arg(button).arg(x).arg(y); }
    void Form_Click() override { events << QStringLiteral("click"); }
    void Form_DblClick() override { events << QStringLiteral("dblclick"); }
};

class Failing : public Form {
public:
    Failing() : Form("Failing", 1500, 1500) {}

protected:
    void Form_Load() override { raiseError(ErrFileNotFound); }
};

// A bare drawing surface: nothing on it but what is drawn.
class Surface : public Form {
public:
    Surface() : Form("Surface", 9600, 7200) {}
};

// What a drawing test draws, in pixels: a line, a circle (radius in c) or a clear.
struct Stroke {
    enum Kind { Line, Circle, Cls } kind;
    double a = 0, b = 0, c = 0, d = 0;
    QRgb colour = 0;
};
using Strokes = QList<Stroke>;

Stroke line(double x1, double y1, double x2, double y2, QRgb c) { return {Stroke::Line, x1, y1, x2, y2, c}; }
Stroke circle(double x, double y, double r, QRgb c) { return {Stroke::Circle, x, y, r, 0, c}; }
const Stroke cls{Stroke::Cls};

// The strokes drawn through Qt's painter with a one-pixel pen, as window drawing once was.
QImage painted(QSize size, const Strokes& strokes)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    for (const Stroke& s : strokes) {
        painter.setPen(QColor(s.colour));
        const int r = int(s.c);
        if (s.kind == Stroke::Line)
            painter.drawLine(QPointF(s.a, s.b), QPointF(s.c, s.d));
        else if (s.kind == Stroke::Cls)
            picture.fill(Qt::black);
        else if (r < 1)
            painter.drawPoint(QPointF(s.a, s.b));
        else
            painter.drawEllipse(QRect(int(s.a) - r, int(s.b) - r, 2 * r, 2 * r));
    }
    return picture;
}

// Concentric circles of radius from to to, a colour each: a fan.
Strokes fan(int x, int y, int from, int to)
{
    Strokes strokes;
    for (int r = from; r <= to; ++r)
        strokes << circle(x, y, r, 0xff000000u | (r * 2654435761u));
    return strokes;
}

// Draws the strokes on the window; pumping messages after every stroke but a circle, a frame
// long when asked.
void draw(Surface& window, const Strokes& strokes, bool frames = false)
{
    for (const Stroke& s : strokes) {
        const OleColor colour = RGB(qRed(s.colour), qGreen(s.colour), qBlue(s.colour));
        if (s.kind == Stroke::Line)
            window.Line(s.a, s.b, s.c, s.d, colour);
        else if (s.kind == Stroke::Circle)
            window.Circle(s.a, s.b, s.c, colour);
        else
            window.Cls();
        if (s.kind != Stroke::Circle)
            frames ? DoEventsFor(kTimerFloorMs + 4) : QCoreApplication::processEvents();
    }
}

// Waits for so many ticks of a timer at the platform's floor: the frames drawing may take.
void waitFrames(int frames)
{
    int ticks = 0;
    QTimer frame;
    QObject::connect(&frame, &QTimer::timeout, [&] { ++ticks; });
    frame.start(kTimerFloorMs);
    QTRY_VERIFY(ticks >= frames);
}

} // namespace

Q_DECLARE_METATYPE(Strokes)

class TestForms : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() { g_loads = g_unloads = 0; }
    void loadedOnFirstTouch();
    void unloadMakesAFreshInstanceUnlessCancelled();
    void errorModel();
    void endRunsNoUnloadHandler();
    void timerRunsAtTheFloorAndIsNotReentered();
    void timersStopped();
    void twipsRoundTrip_data();
    void twipsRoundTrip();
    void windowOuterSize();
    void controlArraysOfEveryKindPassTheIndex();
    void windowlessLinesLoadAndUnload();
    void windowMouseEventsInTheWindowsScale();
    void drawingSetsThePaintersPixels_data();
    void drawingSetsThePaintersPixels();
    void drawingSendsTheScreenWhatChanged_data();
    void drawingSendsTheScreenWhatChanged();
    void keyPressSeesTextBeforeTheKey();
};

void TestForms::loadedOnFirstTouch()
{
    TestRuntime t;
    QVERIFY(!t.runtime().forms().isLoaded<Sample>());
    Sample& sample = form<Sample>();
    QCOMPARE(g_loads, 1);
    QVERIFY(!sample.Visible()); // touched, loaded, not shown
    QCOMPARE(sample.Text1.Text(), QStringLiteral("loaded"));
    QCOMPARE(&form<Sample>(), &sample);
    QCOMPARE(g_loads, 1);
    QCOMPARE(sample.Text1.widget()->objectName(), QStringLiteral("Text1"));
    QCOMPARE(sample.Info(2).widget()->property("index").toInt(), 2);
}

void TestForms::unloadMakesAFreshInstanceUnlessCancelled()
{
    TestRuntime t;
    form<Sample>().cancelUnload = 1;
    form<Sample>().Show();
    QVERIFY(QTest::qWaitForWindowExposed(form<Sample>().widget()));
    form<Sample>().widget()->close(); // the close button asks for an unload
    QCOMPARE(g_unloads, 1);
    QVERIFY(t.runtime().forms().isLoaded<Sample>());
    form<Sample>().Text1.setText(QStringLiteral("typed"));
    form<Sample>().cancelUnload = 0;
    Unload(form<Sample>());
    QCOMPARE(g_unloads, 2);
    QVERIFY(!t.runtime().forms().isLoaded<Sample>());
    QCOMPARE(form<Sample>().Text1.Text(), QStringLiteral("loaded"));
    QCOMPARE(g_loads, 2);
}

void TestForms::errorModel()
{
    TestRuntime t;
    // Resume Next skips the failing statement alone; an error in a window's load travels to
    // the statement that touched it.
    QStringList ran;
    OnErrorResumeNext next;
    next([&] { ran << "one"; });
    next([&] { raiseError(ErrObjectRequired); ran << "never"; });
    next([&] { form<Failing>(); });
    next([&] { ran << "three"; });
    QCOMPARE(ran, (QStringList{"one", "three"}));
    QCOMPARE(next.Err(), int(ErrFileNotFound));
    QVERIFY(t.untrappedErrors.isEmpty());
    // Untrapped, it is reported and ends the program: nothing more runs.
    runHandler([&] {
        ran << "before";
        raiseError(ErrInvalidPicture);
        ran << "after";
    });
    runHandler([&] { ran << "a later event"; });
    QCOMPARE(ran.mid(2), QStringList{"before"});
    QCOMPARE(t.untrappedErrors, QList<int>{ErrInvalidPicture});
    QCOMPARE(untrappedReport(RuntimeError(ErrFileNotFound)), QStringLiteral("Run-time error '53':\n\nFile not found"));
    QCOMPARE(RuntimeError(481).description(), QStringLiteral("Invalid picture"));
    QCOMPARE(RuntimeError(9999).description(), QStringLiteral("Application-defined or object-defined error"));
}

void TestForms::endRunsNoUnloadHandler()
{
    TestRuntime t;
    form<Sample>().Show();
    QStringList ran;
    runHandler([&] {
        End();
        ran << "after End";
    });
    QCOMPARE(t.ends, 1);
    QVERIFY(ran.isEmpty());
    QCOMPARE(g_unloads, 0);

    // A handler that was pumping messages when another one ended the program unwinds too.
    TestRuntime t2;
    bool unwound = true;
    QTimer::singleShot(20, [] { runHandler([] { End(); }); });
    runHandler([&] {
        for (int i = 0; i < 500; ++i)
            DoEventsFor(5);
        unwound = false;
    });
    QVERIFY(unwound);
    QCOMPARE(t2.ends, 1);
}

void TestForms::timerRunsAtTheFloorAndIsNotReentered()
{
    TestRuntime t;
    Sample& sample = form<Sample>();
    Timer timer(sample, "Timer1", 1);
    QCOMPARE(timer.effectiveInterval(), kTimerFloorMs);

    int ticks = 0, depth = 0, deepest = 0;
    timer.onTimer([&] {
        ++ticks;
        deepest = std::max(deepest, ++depth);
        DoEventsFor(4 * kTimerFloorMs); // the next ticks come while this one pumps messages
        --depth;
    });
    QTRY_VERIFY_WITH_TIMEOUT(ticks >= 4, 5000);
    QCOMPARE(deepest, 1);
}

void TestForms::timersStopped()
{
    // Measured against a timer that ticks at the floor: none of these ticks meanwhile.
    TestRuntime t;
    Timer reference(form<Sample>(), "Reference", 1);
    int references = 0, zero = 0, disabled = 0, unloaded = 0;
    reference.onTimer([&] { ++references; });
    Timer atZero(form<Sample>(), "Zero", 0);
    atZero.onTimer([&] { ++zero; });
    Timer off(form<Sample>(), "Off", 1);
    off.onTimer([&] { ++disabled; });
    off.setEnabled(false);
    auto* onUnloaded = new Timer(form<Arrays>(), "Gone", 1);
    onUnloaded->onTimer([&] { ++unloaded; });
    QTRY_VERIFY(unloaded > 0);
    Unload(form<Arrays>()); // its timers stop at once
    unloaded = 0;
    references = 0;
    QTRY_VERIFY(references >= 5);
    QCOMPARE(zero + disabled + unloaded, 0);
    atZero.setInterval(20); // an interval starts it
    QTRY_VERIFY(zero > 0);
}

void TestForms::twipsRoundTrip_data()
{
    QTest::addColumn<int>("twips");
    QTest::addColumn<bool>("rejected");
    QTest::newRow("pixel multiple") << 9735 << false;
    QTest::newRow("between pixels") << 4625 << false;
    QTest::newRow("zero") << 0 << false;
    QTest::newRow("negative") << -75 << true;
}

void TestForms::twipsRoundTrip()
{
    QFETCH(int, twips);
    QFETCH(bool, rejected);
    TestRuntime t;
    Sample& sample = form<Sample>();
    OnErrorResumeNext next;
    next([&] { sample.Text1.setWidth(twips); });
    QCOMPARE(next.Err(), rejected ? int(ErrInvalidPropertyValue) : 0);
    QCOMPARE(sample.Text1.Width(), rejected ? 2000 : twips);
    QCOMPARE(sample.Text1.widget()->width(), rejected ? 133 : qRound(twips / 15.0));

    // Moved by anything else, the control reads its pixels again.
    sample.Text1.widget()->resize(100, 20);
    QCOMPARE(sample.Text1.Width(), 1500);
}

void TestForms::windowOuterSize()
{
    TestRuntime t;
    Sample& sample = form<Sample>();
    QCOMPARE(std::pair(TwipsPerPixelX(), ScreenWidth()), std::pair(15.0, 1280 * 15));
    sample.Show();
    QVERIFY(QTest::qWaitForWindowExposed(sample.widget()));
    QSignalSpy written(&sample, &Form::sizeWritten);
    sample.setWidth(5000);
    sample.setHeight(4000);
    QCOMPARE(std::pair(sample.Width(), sample.Height()), std::pair(5000, 4000));
    QCOMPARE(written.count(), 2);
    // The frame is what the window manager reports; on this screen there is none.
    QCOMPARE(sample.widget()->frameGeometry().size(), QSize(333, 267));
    sample.setWindowState(vbMaximized);
    QCOMPARE(sample.WindowState(), int(vbMaximized));
}

void TestForms::controlArraysOfEveryKindPassTheIndex()
{
    TestRuntime t;
    Arrays& w = form<Arrays>();
    QStringList seen;
    w.Keys.onClick([&](int i) { seen << QStringLiteral("click %1").arg(i); });
    w.Keys.onKeyPress([&](int i, std::int16_t& key) { seen << QStringLiteral("key %1 %2").arg(i).arg(QChar(key)); });
    w.Pics.onMouseDown([&](int i, int button, int, double, double) { seen << QStringLiteral("down %1 %2").arg(i).arg(button); });
    w.Pics.onMouseUp([&](int i, int button, int, double, double) { seen << QStringLiteral("up %1 %2").arg(i).arg(button); });
    w.Pics.onClick([&](int i) { seen << QStringLiteral("pic %1").arg(i); });
    w.Show();
    QVERIFY(QTest::qWaitForWindowExposed(w.widget()));
    input::click(w.Keys(1));
    input::type(w.Keys(2), QStringLiteral("a"));
    input::click(w.Pics(1), Qt::RightButton);
    QCOMPARE(seen, (QStringList{"click 1", "key 2 a", "down 1 2", "up 1 2", "pic 1"}));
    QCOMPARE(w.events, QStringList{}); // none of it reached the window

    OnErrorResumeNext next;
    next([&] { w.Keys(3); });
    QCOMPARE(next.Err(), int(ErrNoSuchElement));
    next([&] { w.Keys.add(w, "Keys", 1, TwipsRect{}, QString()); });
    QCOMPARE(next.Err(), int(ErrObjectAlreadyLoaded));
}

void TestForms::windowlessLinesLoadAndUnload()
{
    TestRuntime t;
    Arrays& w = form<Arrays>();
    w.Lines(0).setBorderColor(RGB(255, 0, 0));
    w.Lines(0).setVisible(false);
    // Loaded elements copy the lowest one and stay hidden until shown.
    platform::Line& a = w.Lines.Load(1);
    QCOMPARE(std::pair(a.BorderColor(), a.Visible()), std::pair(RGB(255, 0, 0), false));
    a.setEnds(150, 1500, 3000, 1500); // 10..200 px along y = 100 px
    a.setVisible(true);
    QCOMPARE(w.graphicsLayer().picture().pixelColor(100, 100), QColor(255, 0, 0));
    w.Lines.Unload(1);
    QCOMPARE(w.graphicsLayer().picture().pixelColor(100, 100).alpha(), 0);
    OnErrorResumeNext next;
    next([&] { w.Lines.Unload(1); });
    QCOMPARE(next.Err(), int(ErrNoSuchElement));
    QCOMPARE(w.Lines.Count(), 1);
}

void TestForms::windowMouseEventsInTheWindowsScale()
{
    TestRuntime t;
    Arrays& w = form<Arrays>();
    w.Show();
    QVERIFY(QTest::qWaitForWindowExposed(w.widget()));
    input::press(w, QPoint(200, 100));
    input::move(w, QPoint(210, 110)); // the button is still held
    input::release(w, QPoint(210, 110));
    input::move(w, QPoint(220, 120)); // none held now
    // The pointer arrives before it presses, as a real one does.
    QCOMPARE(w.events, (QStringList{"move 0 3000 1500", "down 1 3000 1500", "move 1 3150 1650", "up 1 3150 1650",
                                    "click", "move 0 3300 1800"}));

    w.events.clear();
    w.Scale(0, 0, 100, 100); // the mouse and drawing in the window's own scale
    w.Line(0, 50, 100, 50, RGB(255, 0, 0));
    QCOMPARE(w.surface().pixelColor(w.widget()->width() / 2, w.widget()->height() / 2), QColor(255, 0, 0));
    input::doubleClick(w, QPoint(w.widget()->width() / 2, w.widget()->height() / 2));
    QVERIFY(w.events.contains(QStringLiteral("dblclick")));
    QVERIFY(w.events.contains(QStringLiteral("down 1 50 50")));
    QCOMPARE(w.events.count(QStringLiteral("click")), 1); // the second press is the double-click's
}

void TestForms::drawingSetsThePaintersPixels_data()
{
    QTest::addColumn<Strokes>("strokes");
    const QRgb red = 0xffff0000, green = 0xff00ff00, blue = 0xff0000ff;
    Strokes lines;
    for (int i = 0; i < 60; ++i) // every slope, fractions of a pixel included
        lines << line(320 + 300 * std::cos(i * 0.105), 240 + 230 * std::sin(i * 0.105), 320 - 7.3 * i, 240 + 3.7 * i,
                      0xff000000u | (i * 2654435761u));
    QTest::newRow("lines of every slope") << lines;
    QTest::newRow("lines past the edges, or outside") << Strokes{line(-50, 20.5, 700, 300, red), line(600, -40, 610, 900, green),
                                                               line(-10, -10, -100, 50, blue), line(639.7, 10, 700, 479.9, red)};
    QTest::newRow("a line drawn again, either way round") << Strokes{line(10, 10, 300, 200, red), line(300, 200, 10, 10, red),
                                                                    line(10, 10, 300, 200, green)};
    QTest::newRow("a line of no length, and a short one") << Strokes{line(50.4, 60.6, 50.4, 60.6, red), line(80, 80, 80.5, 81, green)};
    QTest::newRow("circles, the first a dot") << Strokes{circle(100, 100, 0, red), circle(100, 100, 1, green), circle(200, 150, 37, blue)};
    QTest::newRow("circles past the edges") << Strokes{circle(620, 470, 100, red), circle(10, 240, 300, green), circle(320, 240, 900, blue)};
    QTest::newRow("a fan, then lines over it") << fan(300, 250, 0, 240) + Strokes{line(0, 0, 640, 480, red), line(0, 480, 640, 0, green)};
    QTest::newRow("fans that meet, one past the edges") << fan(200, 200, 5, 180) + fan(420, 300, 0, 260);
    QTest::newRow("fans around centres outside") << fan(-50, 200, 40, 120) + fan(700, 540, 50, 150) + fan(300, -30, 20, 60);
    QTest::newRow("circles around one centre, smaller after larger") << fan(300, 250, 60, 80) + fan(300, 250, 20, 70) +
                                                                          Strokes{circle(300, 250, 70, red)};
    QTest::newRow("a clear drops what came before it") << fan(300, 250, 0, 100) + Strokes{line(0, 5, 640, 5, red), cls,
                                                                                        line(0, 10, 640, 400, green)};
}

void TestForms::drawingSetsThePaintersPixels()
{
    QFETCH(Strokes, strokes);
    TestRuntime t;
    Surface& window = form<Surface>();
    window.setBackColor(vbBlack);
    window.ScalePixels();
    draw(window, strokes);
    const QImage drawn = window.surface().copy(window.widget()->rect());
    const QImage expected = painted(window.widget()->size(), strokes);
    for (int y = 0; y < drawn.height(); ++y)
        for (int x = 0; x < drawn.width(); ++x)
            if (drawn.pixel(x, y) != expected.pixel(x, y))
                QFAIL(qPrintable(QStringLiteral("pixel %1,%2 is %3, the painter's %4")
                                     .arg(x).arg(y).arg(drawn.pixel(x, y), 8, 16).arg(expected.pixel(x, y), 8, 16)));
}

void TestForms::drawingSendsTheScreenWhatChanged_data()
{
    // What is drawn on a shown window whose picture (a dot at 5,5) is already on the screen, and
    // what changed: all of it must reach the screen again, and nothing beyond the rectangle
    // around it.
    QTest::addColumn<Strokes>("strokes");
    QTest::addColumn<QRegion>("changed");
    QTest::addColumn<bool>("inATimersTick"); // drawn in a timer's handler that pumps messages
    const QRegion dot(4, 4, 3, 3);
    QTest::newRow("a short line") << Strokes{line(100, 100, 140, 120, 0xffff0000)} << QRegion(100, 100, 41, 21) << false;
    QTest::newRow("a circle") << Strokes{circle(300, 200, 20, 0xff00ff00)} << QRegion(280, 180, 41, 41) << false;
    QTest::newRow("a clear after a circle: only where something was")
        << Strokes{circle(300, 200, 20, 0xff00ff00), cls} << QRegion(280, 180, 41, 41) + dot << false;
    QTest::newRow("a timer's tick: all of it at once, as it ends")
        << Strokes{line(10, 10, 50, 10, 0xffff0000), cls, line(20, 30, 60, 30, 0xff0000ff), circle(200, 200, 30, 0xffffffff)}
        << QRegion(10, 10, 41, 1) + QRegion(20, 30, 41, 1) + QRegion(170, 170, 61, 61) + dot << true;
    Strokes lines; // a pump after every line, as the effects draw
    for (int i = 0; i < 400; ++i)
        lines << line(0, i, 640, i, 0xff000000u | (i % 256) << 16);
    QTest::newRow("400 lines, a pump after each") << lines << QRegion(0, 0, 640, 400) << false;
}

void TestForms::drawingSendsTheScreenWhatChanged()
{
    QFETCH(Strokes, strokes);
    QFETCH(QRegion, changed);
    QFETCH(bool, inATimersTick);
    TestRuntime t;
    Surface& window = form<Surface>();
    window.setBackColor(vbBlack);
    window.ScalePixels();
    window.Circle(5, 5, 0, RGB(255, 255, 255)); // the window has a picture
    window.Show();
    QVERIFY(QTest::qWaitForWindowExposed(window.widget()));
    QRegion painted;
    int paints = 0, paintsWhileDrawing = 0;
    bool drawing = false;
    struct Watcher : QObject {
        std::function<void(const QRegion&)> seen;
        bool eventFilter(QObject*, QEvent* e) override
        {
            if (e->type() == QEvent::Paint)
                seen(static_cast<QPaintEvent*>(e)->region());
            return false;
        }
    } watcher;
    QTRY_VERIFY(window.painted());
    waitFrames(3); // the picture's first showing is over
    watcher.seen = [&](const QRegion& r) {
        painted += r;
        ++paints;
        paintsWhileDrawing += drawing;
    };
    window.widget()->installEventFilter(&watcher);

    QElapsedTimer clock;
    clock.start();
    auto draw = [&] {
        drawing = true;
        ::draw(window, strokes, inATimersTick);
        drawing = false;
    };
    if (inATimersTick) {
        Timer tick(window, "Tick", 1);
        bool ticked = false;
        tick.onTimer([&] {
            if (!std::exchange(ticked, true))
                draw();
        });
        QTRY_VERIFY(ticked);
    } else {
        draw();
    }
    QTRY_VERIFY((changed - painted).isEmpty());
    waitFrames(3); // nothing more comes
    const QRect beyond = (painted - changed.boundingRect().adjusted(-2, -2, 2, 2)).boundingRect();
    QVERIFY2(beyond.isEmpty(), qPrintable(QStringLiteral("also painted in %1,%2 %3x%4")
                                               .arg(beyond.x()).arg(beyond.y()).arg(beyond.width()).arg(beyond.height())));
    QCOMPARE(paintsWhileDrawing > 0, strokes.size() > 100); // a tick reaches the screen whole, a long pumped run as it goes
    QVERIFY2(paints <= clock.elapsed() / kTimerFloorMs + 2, qPrintable(QString::number(paints))); // at most once a frame
}

void TestForms::keyPressSeesTextBeforeTheKey()
{
    TestRuntime t;
    Sample& sample = form<Sample>();
    sample.Show();
    QVERIFY(QTest::qWaitForWindowExposed(sample.widget()));
    QStringList seen;
    QList<int> codes;
    sample.Text1.onKeyPress([&](std::int16_t& key) {
        seen << sample.Text1.Text();
        codes << key;
        if (key == 'x')
            key = 0; // swallowed
    });
    sample.Text1.setText(QString());
    input::type(sample.Text1, "abx");
    input::key(sample.Text1, Qt::Key_Return);
    input::key(sample.Text1, Qt::Key_Left); // no character: no KeyPress
    QCOMPARE(seen, (QStringList{"", "a", "ab", "ab"}));
    QCOMPARE(codes, (QList<int>{'a', 'b', 'x', 13}));
    QCOMPARE(sample.Text1.Text(), QStringLiteral("ab"));
}

QTEST_MAIN(TestForms)
#include "tst_forms.moc"
