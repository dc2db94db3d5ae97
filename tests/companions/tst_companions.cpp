// The companion windows on the real windows and engine, against pages on 127.0.0.1: favourite
// places (its list file, its themed buttons, the keyboard's Enter, the double-click), the idle
// screen (its drawing, its clock, the way back) and the drive explorer (this machine's drives,
// the pane's listing, the resize rule).

#include "browser/main_window.h"
#include "companions/drive_explorer.h"
#include "companions/favorite_places.h"
#include "companions/idle_screen.h"
#include "startup/theme_selector.h"
#include "platform/picture.h"
#include "platform/runtime.h"
#include "platform/sounds.h"
#include "support/http_server.h"
#include "support/input.h"
#include "support/test_main.h"
#include "support/test_runtime.h"

#include <QApplication>
#include <QDir>
#include <QScreen>
#include <QStorageInfo>
#include <QWebEngineView>

using namespace platform;

namespace {

const QString kThemes = QStringLiteral(GLIDEPATH_SOURCE_DIR "/themes");
const QString kDone = QStringLiteral("Glidepath - [Done Loading Document]");

// A copy of the Default theme without the named file.
QString themeWithout(const QTemporaryDir& dir, const QString& missing)
{
    for (const QString& f : QDir(kThemes + "/Default").entryList(QDir::Files))
        if (f != missing)
            QFile::copy(kThemes + "/Default/" + f, dir.filePath(f));
    return dir.path();
}

// A program directory with a theme and a home page; the sounds asked for and the captions shown.
struct Program {
    explicit Program(const QString& home, const QString& theme = kThemes + "/Default")
    {
        t.write("ThemeDir.INI", "[Theme Directory]\r\nDIR=" + theme.toLocal8Bit() + "\r\n");
        t.write("HomePage.TXT", home.toLocal8Bit());
        QObject::connect(&t.runtime().sounds(), &WavePlayer::requested, [this](const QString& p) { sounds << QFileInfo(p).fileName(); });
        t.runtime().forms().setCreatedHook([this](Form& window) {
            if (dynamic_cast<MainFRM*>(&window))
                QObject::connect(&window, &Form::captionWritten, [this](const QString& c) { captions << c; });
        });
    }
    // The main window, loaded, shown and done loading its home page.
    MainFRM& main()
    {
        MainFRM* m = nullptr;
        runHandler([&] { m = &form<MainFRM>(); });
        m->Show();
        if (!QTest::qWaitForWindowExposed(m))
            QTest::qFail("the main window never reached the screen", __FILE__, __LINE__);
        if (!QTest::qWaitFor([&] { return captions.contains(kDone); }, 20000))
            QTest::qFail("the home page never finished loading", __FILE__, __LINE__);
        return *m;
    }
    // A window opened as its menu command opens it.
    template <class F>
    F& open()
    {
        F* window = nullptr;
        runHandler([&] { window = &form<F>(); });
        if (window) {
            window->Show();
            if (!QTest::qWaitForWindowExposed(window))
                QTest::qFail("the window never reached the screen", __FILE__, __LINE__);
        }
        return *window;
    }
    bool navigatedTo(WebBrowser& pane, const QString& url)
    {
        return QTest::qWaitFor([&] { return pane.LocationURL() == url; }, 20000);
    }
    TestRuntime t;
    QStringList sounds, captions;
};

QVariant evaluate(WebBrowser& browser, const QString& script)
{
    QVariant result;
    bool done = false;
    browser.view()->page()->runJavaScript(script, [&](const QVariant& v) { result = v; done = true; });
    if (!QTest::qWaitFor([&] { return done; }, 10000))
        QTest::qFail("the page never answered the script", __FILE__, __LINE__);
    return result;
}

// The middle of a control, in its window's client area.
QPoint middleOf(Form& window, Control& control)
{
    return control.widget()->geometry().center() - window.clientOrigin();
}

QImage picture(const QString& theme, const QString& file)
{
    return LoadPicture(theme + "/" + file).toImage();
}

} // namespace

class TestCompanions : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void favouritesListFile_data();
    void favouritesListFile();
    void favouritesDeleteAndPressedLooks();
    void favouritesDoubleClickNavigates();
    void favouritesMissingBitmap_data();
    void favouritesMissingBitmap();
    void idleScreen();
    void driveExplorerListsTheDrive();
    void driveExplorerResizeRule_data();
    void driveExplorerResizeRule();

private:
    HttpServer m_server;
};

void TestCompanions::favouritesListFile_data()
{
    QTest::addColumn<QStringList>("typed"); // each ended by Enter in URL
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QStringList>("reloaded");
    QTest::newRow("two addresses") << QStringList{"http://a.example/", "b.example"}
                                   << QByteArray("http://a.example/\r\nb.example\r\n")
                                   << QStringList{"http://a.example/", "b.example"};
    // Written as one line, read back as two fields.
    QTest::newRow("a comma splits on reading") << QStringList{"http://a.example/x,y"}
                                               << QByteArray("http://a.example/x,y\r\n")
                                               << QStringList{"http://a.example/x", "y"};
    QTest::newRow("leading blanks go on reading") << QStringList{"  spaced"} << QByteArray("  spaced\r\n")
                                                  << QStringList{"spaced"};
    QTest::newRow("quotes go on reading") << QStringList{"\"quoted\""} << QByteArray("\"quoted\"\r\n")
                                          << QStringList{"quoted"};
    QTest::newRow("an empty entry is an empty line") << QStringList{""} << QByteArray("\r\n") << QStringList{""};
    QTest::newRow("no checks: the bare http://, twice") << QStringList{"http://", "http://"}
                                                        << QByteArray("http://\r\nhttp://\r\n")
                                                        << QStringList{"http://", "http://"};
}

void TestCompanions::favouritesListFile()
{
    QFETCH(QStringList, typed);
    QFETCH(QByteArray, file);
    QFETCH(QStringList, reloaded);
    Program p(m_server.url("/titled").toString());
    MainFRM& main = p.main();
    p.t.write("FavPlaces.INI", "");
    FavoritePlacesFRM* fav = &p.open<FavoritePlacesFRM>();
    QCOMPARE(fav->URL.Text(), main.URLC.Text()); // the page being viewed, offered
    for (const QString& text : typed) {
        p.sounds.clear();
        fav->URL.setText(QString());
        input::type(fav->URL, text);
        input::key(fav->URL, Qt::Key_Return);
        QCOMPARE(p.sounds, QStringList{"Click.WAV"});
        QCOMPARE(fav->URL.Text(), QStringLiteral("http://")); // ready for the next
    }
    QCOMPARE(fav->ListBox.ListCount(), typed.size());
    QCOMPARE(p.t.read("FavPlaces.INI"), file);

    // Closed and opened again, the list is read from the file.
    Unload(*fav);
    QCOMPARE(p.sounds.last(), QStringLiteral("CloseWIN.WAV"));
    QTest::qWait(0);
    fav = &p.open<FavoritePlacesFRM>();
    QStringList entries;
    for (int i = 0; i < fav->ListBox.ListCount(); ++i)
        entries << fav->ListBox.List(i);
    QCOMPARE(entries, reloaded);
    QCOMPARE(p.t.untrappedErrors, QList<int>{});
}

void TestCompanions::favouritesDeleteAndPressedLooks()
{
    Program p(m_server.url("/titled").toString());
    p.main();
    const QString theme = kThemes + "/Default";
    p.t.write("FavPlaces.INI", "");
    FavoritePlacesFRM& fav = p.open<FavoritePlacesFRM>();

    // Delete on an empty list: a click, and not even the file is written.
    p.t.write("FavPlaces.INI", "untouched");
    p.sounds.clear();
    input::click(fav.Del);
    QCOMPARE(p.sounds, QStringList{"Click.WAV"});
    QCOMPARE(p.t.read("FavPlaces.INI"), QByteArray("untouched"));

    // The Add button's pressed look, on any mouse button; its release is a click that adds.
    fav.URL.setText(QStringLiteral("one"));
    const QPoint add = middleOf(fav, fav.Add);
    input::press(fav, add, Qt::RightButton);
    QCOMPARE(fav.Add.Picture().toImage(), picture(theme, "AddDOWN.BMP"));
    input::release(fav, add, Qt::RightButton);
    QCOMPARE(fav.Add.Picture().toImage(), picture(theme, "AddUP.BMP"));
    fav.URL.setText(QStringLiteral("two"));
    input::click(fav.Add);
    QCOMPARE(p.t.read("FavPlaces.INI"), QByteArray("one\r\ntwo\r\n"));

    // Delete with nothing selected: nothing removed, the list written again all the same.
    fav.ListBox.setListIndex(-1);
    p.t.write("FavPlaces.INI", "stale");
    const QPoint del = middleOf(fav, fav.Del);
    input::press(fav, del);
    QCOMPARE(fav.Del.Picture().toImage(), picture(theme, "DeleteDOWN.BMP"));
    input::release(fav, del);
    QCOMPARE(fav.Del.Picture().toImage(), picture(theme, "DeleteUP.BMP"));
    QCOMPARE(fav.ListBox.ListCount(), 2);
    QCOMPARE(p.t.read("FavPlaces.INI"), QByteArray("one\r\ntwo\r\n"));

    // The entry clicked in the list is the one deleted.
    input::click(fav.ListBox, Qt::LeftButton, QPoint(20, 8));
    QCOMPARE(fav.ListBox.ListIndex(), 0);
    input::click(fav.Del);
    QCOMPARE(p.t.read("FavPlaces.INI"), QByteArray("two\r\n"));
    QCOMPARE(p.t.untrappedErrors, QList<int>{});
}

void TestCompanions::favouritesDoubleClickNavigates()
{
    Program p(m_server.url("/titled").toString());
    MainFRM& main = p.main();
    p.t.write("FavPlaces.INI", m_server.url("/untitled").toString().toLatin1() + "\r\n");
    FavoritePlacesFRM& fav = p.open<FavoritePlacesFRM>();
    p.sounds.clear();
    input::doubleClick(fav.ListBox, QPoint(20, 8));
    QVERIFY(p.navigatedTo(main.BrowserWindow, m_server.url("/untitled").toString()));
    // The main window's own handlers follow the page; the window stays, its list unchanged.
    QTRY_COMPARE(main.URLC.Text(), m_server.url("/untitled").toString());
    QVERIFY(fav.Visible());
    QCOMPARE(fav.ListBox.ListCount(), 1);
    QVERIFY(!p.sounds.contains(QStringLiteral("Click.WAV")));
    QCOMPARE(p.t.untrappedErrors, QList<int>{});
}

void TestCompanions::favouritesMissingBitmap_data()
{
    QTest::addColumn<QString>("missing");
    QTest::addColumn<bool>("failsOnOpening");
    QTest::newRow("AddUP.BMP: the window's load") << "AddUP.BMP" << true;
    QTest::newRow("Main.BMP: the window's load") << "Main.BMP" << true;
    QTest::newRow("DeleteDOWN.BMP: the press") << "DeleteDOWN.BMP" << false;
}

void TestCompanions::favouritesMissingBitmap()
{
    QFETCH(QString, missing);
    QFETCH(bool, failsOnOpening);
    QTemporaryDir theme;
    Program p(m_server.url("/titled").toString(), themeWithout(theme, missing));
    if (missing == QLatin1String("Main.BMP")) {
        // The main window needs it too: only the favourites window is made.
        p.t.write("FavPlaces.INI", "");
        form<ThemeSelector>().TPath.setText(theme.path());
        runHandler([&] { form<FavoritePlacesFRM>(); });
        QCOMPARE(p.t.untrappedErrors, QList<int>{ErrFileNotFound});
        return;
    }
    MainFRM& main = p.main();
    p.t.write("FavPlaces.INI", "");
    main.FavoritePlacesMNU.action()->trigger();
    if (failsOnOpening) {
        QCOMPARE(p.t.untrappedErrors, QList<int>{ErrFileNotFound});
        return;
    }
    QCOMPARE(p.t.untrappedErrors, QList<int>{});
    FavoritePlacesFRM& fav = form<FavoritePlacesFRM>();
    QVERIFY(QTest::qWaitForWindowExposed(&fav));
    input::press(fav, middleOf(fav, fav.Del));
    QCOMPARE(p.t.untrappedErrors, QList<int>{ErrFileNotFound});
}

void TestCompanions::idleScreen()
{
    Program p(m_server.url("/titled").toString());
    MainFRM& main = p.main();
    main.GoIdleMNU.action()->trigger();
    IdleFRM& idle = form<IdleFRM>();
    QVERIFY(!main.Visible());
    QTRY_COMPARE(idle.WindowState(), int(vbMaximized));
    QVERIFY(QTest::qWaitForWindowExposed(&idle));
    // It draws on its own surface: black from the lines effect, with colours on it.
    QTRY_VERIFY_WITH_TIMEOUT(!idle.surface().isNull(), 5000);
    QTRY_VERIFY_WITH_TIMEOUT(idle.surface().pixelColor(idle.surface().rect().bottomRight() - QPoint(1, 1)) == Qt::black ||
                                 idle.surface().pixelColor(0, idle.surface().height() - 2) == Qt::black, 5000);
    // The clock: the time of day, in the time label.
    QTRY_VERIFY(idle.TimeLBL.Caption() != QLatin1String("Time"));
    QVERIFY2(idle.TimeLBL.Caption().count(QLatin1Char(':')) == 2, qPrintable(idle.TimeLBL.Caption()));

    // The time label and its panel are not the surface: a click there leaves the screen be.
    p.sounds.clear();
    input::click(idle.TimeLBL);
    input::click(idle.Frame);
    QVERIFY(idle.Visible());
    QCOMPARE(p.sounds, QStringList{});
    // A click on the surface: a click sound, the idle screen hidden, the browser back.
    input::click(idle, QPoint(idle.width() / 2, idle.height() / 2));
    QTRY_VERIFY(main.Visible());
    QVERIFY(!idle.Visible());
    QCOMPARE(p.sounds.value(0), QStringLiteral("Click.WAV"));

    // Hidden, both timers go on: the drawing changes, and so does the clock.
    const QImage before = idle.surface().copy();
    QTRY_VERIFY_WITH_TIMEOUT(idle.surface() != before, 5000);
    const QString time = idle.TimeLBL.Caption();
    QTRY_VERIFY_WITH_TIMEOUT(idle.TimeLBL.Caption() != time, 3000);

    // Idling again shows the same window without loading it: a window the person restored
    // stays restored.
    idle.setWindowState(vbNormal);
    main.GoIdleMNU.action()->trigger();
    QVERIFY(idle.Visible());
    QCOMPARE(&form<IdleFRM>(), &idle);
    QCOMPARE(idle.WindowState(), int(vbNormal));
    // Shown again, it goes on drawing: what the screen shows of it changes frame after frame.
    QVERIFY(QTest::qWaitForWindowExposed(&idle));
    auto onScreen = [&] { return idle.screen()->grabWindow(idle.winId()).toImage(); };
    for (int frame = 0; frame < 3; ++frame) {
        const QImage shown = onScreen();
        QTRY_VERIFY_WITH_TIMEOUT(onScreen() != shown, 5000);
    }
    QVERIFY(!p.sounds.contains(QStringLiteral("OpenWIN.WAV")));
    QCOMPARE(p.t.untrappedErrors, QList<int>{});
    Unload(idle);
    QCOMPARE(p.sounds.last(), QStringLiteral("CloseWIN.WAV"));
}

void TestCompanions::driveExplorerListsTheDrive()
{
    Program p(m_server.url("/titled").toString());
    p.main();
    p.sounds.clear();
    DriveExplorerFRM& explorer = p.open<DriveExplorerFRM>();
    QCOMPARE(p.sounds, QStringList{"OpenWIN.WAV"});
    // This machine's mounted file systems, each by its mount point; the current one is the
    // one that holds the current directory.
    QVERIFY(explorer.DriveOne.ListCount() >= 1);
    for (int i = 0; i < explorer.DriveOne.ListCount(); ++i)
        QVERIFY2(explorer.DriveOne.List(i).startsWith(QLatin1Char('/')), qPrintable(explorer.DriveOne.List(i)));
    const QString root = explorer.DriveOne.Drive();
    QCOMPARE(root, QStorageInfo(QDir::currentPath()).rootPath());

    // The pane opens on it and shows its folders, as the engine lists a folder.
    QTRY_COMPARE_WITH_TIMEOUT(explorer.DriveExplorerWindow.LocationURL(), QUrl::fromLocalFile(root).toString(), 20000);
    const QString folder = QDir(root).entryList(QDir::Dirs | QDir::NoDotAndDotDot).value(0);
    QVERIFY(!folder.isEmpty());
    QTRY_VERIFY_WITH_TIMEOUT(evaluate(explorer.DriveExplorerWindow, "document.body ? document.body.innerText : ''")
                                 .toString().contains(folder), 20000);

    // Picking the drive that is current again (the list opened with the keyboard, Enter on
    // the highlighted entry) raises no change: no click, no navigation.
    p.sounds.clear();
    input::key(explorer.DriveOne, Qt::Key_Down, Qt::AltModifier);
    QTest::qWait(200);
    input::keyInto(explorer, Qt::Key_Return);
    QTest::qWait(200);
    QCOMPARE(explorer.DriveOne.Drive(), root);
    QCOMPARE(p.sounds, QStringList{});

    // Another drive, where this machine has one: a click, and the pane goes there.
    if (explorer.DriveOne.ListCount() > 1) {
        input::key(explorer.DriveOne, explorer.DriveOne.List(0).startsWith(root + " ") ? Qt::Key_Down : Qt::Key_Up);
        QVERIFY(explorer.DriveOne.Drive() != root);
        QCOMPARE(p.sounds, QStringList{"Click.WAV"});
        QTRY_COMPARE_WITH_TIMEOUT(explorer.DriveExplorerWindow.LocationURL(),
                                  QUrl::fromLocalFile(explorer.DriveOne.Drive()).toString(), 20000);
    }
    QCOMPARE(p.t.untrappedErrors, QList<int>{});
}

void TestCompanions::driveExplorerResizeRule_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("paneHeightSet");
    QTest::newRow("6000 by 4000") << 6000 << 4000 << true;
    QTest::newRow("9000 by 7000") << 9000 << 7000 << true;
    // Too low for a pane: its height stays, the other steps still run.
    QTest::newRow("3000 by 600") << 3000 << 600 << false;
}

void TestCompanions::driveExplorerResizeRule()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(bool, paneHeightSet);
    Program p(QStringLiteral("about:blank"));
    p.main();
    DriveExplorerFRM& explorer = p.open<DriveExplorerFRM>();
    const int paneHeight = explorer.DriveExplorerWindow.Height();
    explorer.setWidth(width);
    explorer.setHeight(height);
    const int list = explorer.DriveOne.Height();
    QCOMPARE(explorer.DriveExplorerWindow.Width(), width - 130);
    QCOMPARE(explorer.DriveExplorerWindow.Height(), paneHeightSet ? height - list - 520 : paneHeight);
    // The pane starts right below the list, not at its designed top of 300.
    QCOMPARE(explorer.DriveExplorerWindow.Top(), list);
    QCOMPARE(explorer.DriveExplorerWindow.Left(), 0);
    QCOMPARE(explorer.DriveOne.Width(), width - 130);
    QCOMPARE(explorer.DriveOne.Left(), 0);
    QCOMPARE(explorer.DriveOne.Top(), 0);
    QCOMPARE(p.t.untrappedErrors, QList<int>{});
}

GLIDEPATH_WEB_TEST_MAIN(TestCompanions)
#include "tst_companions.moc"
