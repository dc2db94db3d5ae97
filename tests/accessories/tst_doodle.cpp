// The doodle pad drawn on with the real mouse: one segment per move while a button is down,
// segments keeping the options they were drawn with, the options panel brought up by a
// double-click above the drawing, the sliders applied by the timer, Clear as a fresh window.

#include "accessories/doodle.h"
#include "startup/theme_selector.h"
#include "platform/errors.h"
#include "platform/sounds.h"
#include "support/input.h"
#include "support/test_runtime.h"

#include <QTest>

using namespace platform;

namespace {

const QString kThemes = QStringLiteral(GLIDEPATH_SOURCE_DIR "/themes");
constexpr int kTwips = 15; // per pixel on the test screen

DoodleFRM& openDoodle()
{
    form<ThemeSelector>().TPath.setText(kThemes + "/Default");
    DoodleFRM* pad = nullptr;
    runHandler([&] { pad = &form<DoodleFRM>(); });
    pad->Show();
    if (!QTest::qWaitForWindowExposed(pad->widget()))
        qWarning("the doodle pad was not exposed");
    return *pad;
}

// The ends of a segment, in pixels.
QLine ends(const platform::Line& l)
{
    return QLine(l.X1() / kTwips, l.Y1() / kTwips, l.X2() / kTwips, l.Y2() / kTwips);
}

// A timer tick or two, so that the options reach the template.
void tick()
{
    QTest::qWait(80);
}

} // namespace

class TestDoodle : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void gestures_data();
    void gestures();
    void optionsApplyToLaterSegmentsOnly();
    void panelShowsAboveTheDrawing();
    void clearIsAFreshWindow();
    void colourFunctionTakesAtMost255();
    void idleTicksRepaintNothing();
    void yBeyondSixteenBitsOverflows();
};

void TestDoodle::gestures_data()
{
    // Steps: "p x y" press, "m x y" move, "r x y" release, "d x y" double-click, in pixels.
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QList<QLine>>("segments");
    QTest::newRow("a stroke") << QStringList{"p 100 100", "m 110 105", "m 130 120", "r 130 120"}
                              << QList<QLine>{{100, 100, 110, 105}, {110, 105, 130, 120}};
    QTest::newRow("a click draws nothing") << QStringList{"p 50 60", "r 50 60"} << QList<QLine>{};
    QTest::newRow("moving without a button draws nothing") << QStringList{"m 10 10", "m 40 40", "m 80 20"} << QList<QLine>{};
    QTest::newRow("two strokes") << QStringList{"p 10 10", "m 20 20", "r 20 20", "m 200 200", "p 300 300", "m 310 300", "r 310 300"}
                                 << QList<QLine>{{10, 10, 20, 20}, {300, 300, 310, 300}};
    QTest::newRow("the right button draws too") << QStringList{"P 40 40", "m 45 50", "R 45 50"} << QList<QLine>{{40, 40, 45, 50}};
    QTest::newRow("a double-click draws nothing") << QStringList{"d 400 300", "m 420 300"} << QList<QLine>{};
}

void TestDoodle::gestures()
{
    QFETCH(QStringList, steps);
    QFETCH(QList<QLine>, segments);
    TestRuntime t;
    DoodleFRM& pad = openDoodle();
    for (const QString& step : steps) {
        const QStringList p = step.split(' ');
        const QPoint at(p[1].toInt(), p[2].toInt());
        if (p[0] == "p")
            input::press(pad, at);
        else if (p[0] == "P")
            input::press(pad, at, Qt::RightButton);
        else if (p[0] == "m")
            input::move(pad, at);
        else if (p[0] == "r")
            input::release(pad, at);
        else if (p[0] == "R")
            input::release(pad, at, Qt::RightButton);
        else if (p[0] == "d")
            input::doubleClick(pad, at);
    }
    QList<QLine> drawn;
    for (int i = 1; i <= pad.Line1.UBound(); ++i) {
        QVERIFY(pad.Line1(i).Visible());
        drawn << ends(pad.Line1(i));
    }
    QCOMPARE(drawn, segments);
    QCOMPARE(pad.Line1.Count(), int(segments.size()) + 1); // and the template
    QVERIFY(!pad.Line1(0).Visible());
    QCOMPARE(pad.Drawing, std::int16_t(0));
    QVERIFY(t.untrappedErrors.isEmpty());
}

void TestDoodle::optionsApplyToLaterSegmentsOnly()
{
    TestRuntime t;
    DoodleFRM& pad = openDoodle();
    tick();
    input::press(pad, {100, 250});
    input::move(pad, {160, 280});
    input::release(pad, {160, 280});
    QCOMPARE(pad.Line1(1).BorderColor(), vbBlack);
    QCOMPARE(pad.Line1(1).BorderWidth(), 1);

    // The panel by a double-click; the red slider and the pen size pushed to their ends with
    // the keyboard.
    QCOMPARE(pad.TFrame.Top(), 99999);
    input::doubleClick(pad, {500, 350});
    QCOMPARE(pad.TFrame.Top(), 240);
    input::key(pad.RedSLD, Qt::Key_End);
    input::key(pad.PenSize, Qt::Key_End);
    // Five clicks on the blue slider's right arrow, one step each.
    const QPoint rightArrow(pad.BlueSLD.widget()->width() - 4, pad.BlueSLD.widget()->height() / 2);
    for (int i = 0; i < 5; ++i)
        input::click(pad.BlueSLD, Qt::LeftButton, rightArrow);
    tick();
    const OleColor mixed = RGB(255, 0, 5);
    QCOMPARE(pad.Preview.BackColor(), mixed);
    QCOMPARE(pad.Line1(0).BorderColor(), mixed);
    QCOMPARE(pad.Line1(0).BorderWidth(), 50);
    QCOMPARE(pad.Data(4).Caption(), QStringLiteral("50"));
    QCOMPARE(pad.Data(3).Caption(), QStringLiteral("Pen Size"));

    input::press(pad, {300, 300});
    input::move(pad, {360, 330});
    input::release(pad, {360, 330});
    QCOMPARE(pad.Line1(2).BorderColor(), mixed);
    QCOMPARE(pad.Line1(2).BorderWidth(), 50);
    QCOMPARE(pad.Line1(1).BorderColor(), vbBlack); // the first keeps what it was drawn with
    QCOMPARE(pad.Line1(1).BorderWidth(), 1);
    // On the window's drawing: the wide red segment and the thin black one.
    const QImage& drawn = pad.graphicsLayer().picture();
    QCOMPARE(drawn.pixelColor(330, 315).rgb(), QColor(255, 0, 5).rgb());
    QCOMPARE(drawn.pixelColor(330, 315 + 20).rgb(), QColor(255, 0, 5).rgb());
    QCOMPARE(drawn.pixelColor(130, 265).rgb(), QColor(Qt::black).rgb());
    QCOMPARE(drawn.pixelColor(130, 265 + 5).alpha(), 0);

    // Hide This Window: the panel goes, with a click.
    QStringList sounds;
    QObject::connect(&t.runtime().sounds(), &WavePlayer::requested, [&](const QString& p) { sounds << p.section('/', -1); });
    input::click(pad.HideMe);
    QCOMPARE(pad.TFrame.Top(), 99999);
    QCOMPARE(sounds, QStringList{"Click.WAV"});
}

void TestDoodle::panelShowsAboveTheDrawing()
{
    TestRuntime t;
    DoodleFRM& pad = openDoodle();
    input::doubleClick(pad, {500, 350});
    QCOMPARE(pad.TFrame.Top(), 240);
    const QRect panel(QPoint(pad.TFrame.Left() / kTwips, pad.TFrame.Top() / kTwips),
                      QSize(pad.TFrame.Width() / kTwips, pad.TFrame.Height() / kTwips));
    // A stroke from below the panel across it, ending right of it.
    input::press(pad, {100, 300});
    input::move(pad, {100, 120});
    input::move(pad, {450, 120});
    input::release(pad, {450, 120});
    QCOMPARE(pad.Line1.Count(), 3);
    QTest::qWait(50);
    const QImage shot = pad.widget()->grab().toImage();
    QVERIFY(panel.contains(250, 120));
    QCOMPARE(shot.pixelColor(250, 120), shot.pixelColor(250, 122)); // the panel's face hides the drawing
    QVERIFY(shot.pixelColor(250, 120) != QColor(Qt::black));
    QCOMPARE(shot.pixelColor(100, 250), QColor(Qt::black)); // below the panel it shows
    QCOMPARE(shot.pixelColor(420, 120), QColor(Qt::black)); // and right of it
    // A press on the panel belongs to the panel: no drawing starts.
    input::press(pad, {200, 30});
    input::move(pad, {550, 300});
    input::release(pad, {550, 300});
    QCOMPARE(pad.Line1.Count(), 3);
}

void TestDoodle::clearIsAFreshWindow()
{
    TestRuntime t;
    DoodleFRM& pad = openDoodle();
    input::press(pad, {100, 100});
    for (int i = 1; i <= 10; ++i)
        input::move(pad, {100 + i * 10, 100 + i * 5});
    input::release(pad, {200, 150});
    QCOMPARE(pad.Line1.Count(), 11);
    input::doubleClick(pad, {500, 350});
    input::key(pad.GreenSLD, Qt::Key_End);
    input::key(pad.PenSize, Qt::Key_End);
    QStringList sounds;
    QObject::connect(&t.runtime().sounds(), &WavePlayer::requested, [&](const QString& p) { sounds << p.section('/', -1); });
    input::click(pad.TClear);
    QCOMPARE(sounds, (QStringList{"Click.WAV", "CloseWIN.WAV", "OpenWIN.WAV"}));
    DoodleFRM& fresh = form<DoodleFRM>();
    QVERIFY(&fresh != &pad);
    QVERIFY(fresh.Visible());
    QCOMPARE(fresh.Line1.Count(), 1);
    QCOMPARE(fresh.TFrame.Top(), 99999);
    QCOMPARE(fresh.GreenSLD.Value(), 0);
    QCOMPARE(fresh.PenSize.Value(), 1);
    tick();
    QCOMPARE(fresh.Line1(0).BorderColor(), vbBlack);
    QCOMPARE(fresh.Data(4).Caption(), QStringLiteral("1"));
    QVERIFY(t.untrappedErrors.isEmpty());
}

void TestDoodle::colourFunctionTakesAtMost255()
{
    TestRuntime t;
    DoodleFRM& pad = openDoodle();
    pad.RedSLD.setRange(0, 400);
    pad.RedSLD.setValue(300);
    pad.BlueSLD.setValue(128);
    QCOMPARE(DoodleFRM::MixColour(pad.RedSLD, pad.GreenSLD, pad.BlueSLD), RGB(255, 0, 128));
}

// Counts the paints a widget receives.
class Paints : public QObject {
public:
    explicit Paints(QWidget* w) { w->installEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject*, QEvent* e) override
    {
        count += e->type() == QEvent::Paint;
        return false;
    }
};

void TestDoodle::idleTicksRepaintNothing()
{
    // The timer rewrites the options on every tick; only a real change reaches the screen.
    TestRuntime t;
    DoodleFRM& pad = openDoodle();
    input::doubleClick(pad, {500, 350});
    tick();
    QTest::qWait(200);
    Paints preview(pad.Preview.widget()), size(pad.Data(4).widget()), window(pad.widget());
    QTest::qWait(500); // some thirty ticks
    QCOMPARE(preview.count + size.count + window.count, 0);
    input::key(pad.PenSize, Qt::Key_End);
    tick();
    QVERIFY(size.count > 0);
}

void TestDoodle::yBeyondSixteenBitsOverflows()
{
    // The previous y is a 16-bit integer of twips: a point lower than 32,767 twips (2,184
    // pixels) on a tall window ends the program with "Overflow".
    TestRuntime t;
    DoodleFRM& pad = openDoodle();
    pad.widget()->resize(pad.widget()->width(), 2300);
    QTest::qWait(50);
    if (pad.widget()->height() < 2200)
        QSKIP("the screen does not give the window that height");
    input::press(pad, {100, 2190});
    QCOMPARE(t.untrappedErrors, QList<int>{ErrOverflow});
}

QTEST_MAIN(TestDoodle)
#include "tst_doodle.moc"
