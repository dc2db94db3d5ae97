// The shared procedures as the windows use them, and the two holder windows.

#include "platform/controls.h"
#include "platform/convert.h"
#include "platform/form.h"
#include "platform/runtime.h"
#include "shared/color.h"
#include "shared/procedures.h"
#include "shared/statf.h"
#include "support/test_runtime.h"

#include <QSignalSpy>
#include <QTimer>
#include <QTest>

using namespace platform;

namespace {

class Host : public Form {
public:
    Host() : Form("Host", 6000, 4000) {}
    TextBox Box{*this, "Box", {0, 0, 3000, 300}, QStringLiteral("before")};
    ListBox List{*this, "List", {0, 400, 3000, 2000}};
};

} // namespace

class TestProcedures : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void filesAsTheWindowsLeaveThem();
    void missingListFileLoopsUntilStopped();
    void pauseBounds();
    void squeezeStretchSizes_data();
    void squeezeStretchSizes();
    void squeezeStretchOverflows();
    void randomLines();
    void statusPopUpLingers();
};

// What the windows' own tests do not meet: a list read into a list that holds an item, a text
// saved where it cannot be, the key a read lower-cases and the value it cuts, the colour code
// read once.
void TestProcedures::filesAsTheWindowsLeaveThem()
{
    TestRuntime t;
    Host& host = form<Host>();
    t.write("FavPlaces.INI", "one\r\ntwo, three\r\n");
    host.List.AddItem("first");
    LoadListFile(AppPath() + "/FavPlaces.INI", host.List);
    QStringList items;
    for (int i = 0; i < host.List.ListCount(); ++i)
        items << host.List.List(i);
    QCOMPARE(items, (QStringList{"first", "one", "two", "three"}));
    SaveTextFile(host.Box, AppPath() + "/no/such/dir/out.txt"); // ignored without a word
    QVERIFY(t.untrappedErrors.isEmpty());
    const QString file = AppPath() + "/ThemeDir.INI";
    WriteIniValue("Theme Directory", "Dir", QString(800, QLatin1Char('x')), file);
    QString key = QStringLiteral("Dir");
    QCOMPARE(ReadIniValue("Theme Directory", key, file).size(), 749);
    QCOMPARE(key, QStringLiteral("dir"));
    QCOMPARE(ReadIniValue("Theme Directory", key, AppPath() + "/none.INI"), QString());
    t.write("ForeC.INI", "2");
    QCOMPARE(form<Color>().ForeC.Text(), QStringLiteral("2"));
    t.write("ForeC.INI", "3"); // read once: a later change waits for the next start
    QCOMPARE(form<Color>().ForeC.Text(), QStringLiteral("2"));
}


void TestProcedures::missingListFileLoopsUntilStopped()
{
    TestRuntime t;
    Host& host = form<Host>();
    // Another handler, run by the loop's own message processing, ends the program.
    QTimer stopper;
    QObject::connect(&stopper, &QTimer::timeout, [&] {
        if (host.List.ListCount() >= 200)
            runHandler([] { End(); });
    });
    stopper.start(1);
    runHandler([&] { LoadListFile(AppPath() + "/missing.INI", host.List); });
    QCOMPARE(t.ends, 1);
    QVERIFY(host.List.ListCount() >= 200);
    QCOMPARE(host.List.List(0), QString());
    QCOMPARE(host.List.List(199), QString());
}

void TestProcedures::pauseBounds()
{
    // Pause counts whole seconds of the clock: no time at all for none or fewer, and about a
    // second, messages processed meanwhile, for one.
    TestRuntime t;
    int ticks = 0;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, [&] { ++ticks; });
    ticker.start(50);
    QElapsedTimer clock;
    clock.start();
    Pause(0);
    Pause(-3);
    QCOMPARE(ticks, 0);
    QVERIFY(clock.elapsed() < 50);
    clock.restart();
    Pause(1);
    QVERIFY2(clock.elapsed() >= 450 && clock.elapsed() <= 1600, qPrintable(QString::number(clock.elapsed())));
    QVERIFY(ticks > 0);
}

void TestProcedures::squeezeStretchSizes_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<QList<int>>("heights");
    QTest::newRow("4000 twips") << 4000
                                << QList<int>{3600, 3200, 2800, 2400, 2000, 1600, 1200, 800, 400, 0};
    QTest::newRow("500 twips") << 500 << QList<int>{100};
    QTest::newRow("640 twips: stops on the band") << 640 << QList<int>{240};
}

void TestProcedures::squeezeStretchSizes()
{
    QFETCH(int, height);
    QFETCH(QList<int>, heights);
    TestRuntime t;
    Host& host = form<Host>();
    host.setBorderStyle(vbBSNone);
    host.setWidth(6000);
    host.setHeight(height);
    host.Show();
    QVERIFY(QTest::qWaitForWindowExposed(host.widget()));

    QList<int> writtenHeights, writtenWidths;
    QObject::connect(&host, &Form::sizeWritten, [&](int w, int h) {
        if (writtenWidths.isEmpty() && writtenHeights.size() < heights.size())
            writtenHeights << h;
        else
            writtenWidths << w;
    });
    runHandler([&] { SqueezeStretchEffect(host); });
    QVERIFY(t.untrappedErrors.isEmpty());
    QCOMPARE(writtenHeights, heights);

    // The width grows by 99, 100, 101, ... twips until it reaches the screen's width.
    QVERIFY(!writtenWidths.isEmpty());
    int expected = 6000;
    for (int i = 0; i < writtenWidths.size(); ++i) {
        expected += 99 + i;
        QCOMPARE(writtenWidths[i], expected);
    }
    QVERIFY(writtenWidths.last() >= ScreenWidth());
    QVERIFY(writtenWidths[writtenWidths.size() - 2] < ScreenWidth());
    QCOMPARE(host.Left(), (ScreenWidth() - host.Width()) / 2);
}

void TestProcedures::squeezeStretchOverflows()
{
    TestRuntime t;
    Host& host = form<Host>();
    host.setHeight(600);
    host.setWidth(32700); // the stretch's first step passes 32,767 twips
    runHandler([&] { SqueezeStretchEffect(host); });
    QCOMPARE(t.untrappedErrors, QList<int>{ErrOverflow});
}

void TestProcedures::randomLines()
{
    TestRuntime t;
    Host& host = form<Host>();
    host.setBackColor(vbWhite);
    host.setWindowState(vbMinimized);
    RandomLinesEffect(host);
    QCOMPARE(host.BackColor(), vbWhite); // minimised: nothing at all
    host.setWindowState(vbNormal);
    RandomLinesEffect(host);
    QCOMPARE(std::tuple(host.BackColor(), host.ScaleWidth(), host.ScaleHeight()), std::tuple(vbBlack, 100.0, 100.0));
    // Lines in the fifteen colours before bright white, across the window.
    int coloured = 0;
    const QImage& s = host.surface();
    for (int y = 0; y < host.widget()->height(); y += 3)
        for (int x = 0; x < host.widget()->width(); x += 3) {
            coloured += s.pixelColor(x, y) != Qt::black;
            QVERIFY(s.pixelColor(x, y) != Qt::white);
        }
    QVERIFY(coloured > 100);
}

void TestProcedures::statusPopUpLingers()
{
    TestRuntime t;
    form<StatF>().Info.setCaption(QStringLiteral("never seen"));
    QVERIFY(!form<StatF>().Visible());
    form<StatF>().Show();
    form<StatF>().Info.setCaption(QStringLiteral("Glide Path Succesfully Loaded. Enjoy."));
    QVERIFY(form<StatF>().widget()->windowFlags() & Qt::WindowStaysOnTopHint);

    QString shownDuringPause;
    QTimer::singleShot(300, [&] {
        if (t.runtime().forms().isLoaded<StatF>() && form<StatF>().Visible())
            shownDuringPause = form<StatF>().Info.Caption();
    });
    QElapsedTimer clock;
    clock.start();
    Unload(form<StatF>());
    const qint64 ms = clock.elapsed();
    QVERIFY2(ms >= 450 && ms <= 1600, qPrintable(QString::number(ms)));
    QCOMPARE(shownDuringPause, QStringLiteral("Glide Path Succesfully Loaded. Enjoy."));
    QVERIFY(!t.runtime().forms().isLoaded<StatF>());
}

QTEST_MAIN(TestProcedures)
#include "tst_procedures.moc"
