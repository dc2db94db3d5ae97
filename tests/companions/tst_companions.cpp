// The companion windows on the real windows and engine, against pages on 127.0.0.1: favourite
// places (its list file written as typed and read back as fields, its themed buttons, Delete's
// rules, the double-click), the idle screen (its drawing, its clock, the way back, its timers
// while hidden) and the drive explorer (this machine's drives, the pane's listing).

#include "browser/main_window.h"
#include "companions/drive_explorer.h"
#include "companions/favorite_places.h"
#include "companions/idle_screen.h"
#include "platform/picture.h"
#include "support/http_server.h"
#include "support/input.h"
#include "support/program.h"
#include "support/test_main.h"

#include <QDir>
#include <QScreen>
#include <QStorageInfo>

#include <sys/mount.h>

using namespace platform;

namespace {

QStringList entries(const ListBox& list)
{
    QStringList all;
    for (int i = 0; i < list.ListCount(); ++i)
        all << list.List(i);
    return all;
}

QImage themePicture(const QString& file)
{
    return LoadPicture(kThemes + "/Default/" + file).toImage();
}

// The middle of a control, in its window's client area.
QPoint middleOf(Form& window, Control& control)
{
    return control.widget()->geometry().center() - window.clientOrigin();
}

} // namespace

class TestCompanions : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void favouritesWrittenAsTypedReadAsFields();
    void favouritesDeleteAndPressedLooks();
    void favouritesDoubleClickNavigates();
    void idleScreen();
    void driveExplorer();

private:
    HttpServer m_server;
};

void TestCompanions::favouritesWrittenAsTypedReadAsFields()
{
    Program p({.home = m_server.url("/titled").toString().toLatin1()});
    MainFRM* main = p.main();
    QVERIFY(main);
    auto* fav = p.open<FavoritePlacesFRM>();
    QVERIFY(fav);
    QCOMPARE(fav->URL.Text(), main->URLC.Text()); // the page being viewed, offered
    // No checks: whatever is typed is added with Enter and the whole list written, one a line.
    const QStringList typed{"http://a.example/x,y", "  spaced", "\"quoted\"", "", "http://", "http://"};
    for (const QString& text : typed) {
        p.log.clear();
        fav->URL.setText(QString());
        input::type(fav->URL, text);
        input::key(fav->URL, Qt::Key_Return);
        QCOMPARE(p.log, QStringList{"Click.WAV"});
        QCOMPARE(fav->URL.Text(), QStringLiteral("http://")); // ready for the next
    }
    QCOMPARE(entries(fav->ListBox), typed);
    QCOMPARE(p.read("FavPlaces.INI"), QByteArray("http://a.example/x,y\r\n  spaced\r\n\"quoted\"\r\n\r\nhttp://\r\nhttp://\r\n"));
    // Opened again, the file is read field by field: a comma splits, blanks and quotes go.
    Unload(*fav);
    fav = p.open<FavoritePlacesFRM>();
    QVERIFY(fav);
    QCOMPARE(entries(fav->ListBox), (QStringList{"http://a.example/x", "y", "spaced", "quoted", "", "http://", "http://"}));
    QCOMPARE(p.untrappedErrors, QList<int>{});
}

void TestCompanions::favouritesDeleteAndPressedLooks()
{
    Program p;
    auto* fav = p.open<FavoritePlacesFRM>();
    QVERIFY(fav);
    // Delete on an empty list: a click, and not even the file is written.
    p.write("FavPlaces.INI", "untouched");
    p.log.clear();
    input::click(fav->Del);
    QCOMPARE(p.log, QStringList{"Click.WAV"});
    QCOMPARE(p.read("FavPlaces.INI"), QByteArray("untouched"));
    // The buttons' pressed looks, on any mouse button, read from the theme each time; a
    // release on Add is a click that adds.
    for (const auto& [button, name, typed] : {std::tuple{&fav->Add, "Add", "one"}, {&fav->Del, "Delete", "two"}}) {
        fav->URL.setText(QString::fromLatin1(typed));
        const QPoint at = middleOf(*fav, *button);
        input::press(*fav, at, Qt::RightButton);
        QCOMPARE(button->Picture().toImage(), themePicture(name + QStringLiteral("DOWN.BMP")));
        input::release(*fav, at, Qt::RightButton);
        QCOMPARE(button->Picture().toImage(), themePicture(name + QStringLiteral("UP.BMP")));
    }
    input::click(fav->Add);
    QCOMPARE(p.read("FavPlaces.INI"), QByteArray("one\r\ntwo\r\n"));
    // The list taking the keyboard selects nothing: Delete removes nothing and writes the list
    // again. The entry clicked is the one deleted, and a second Delete removes no neighbour.
    input::focus(fav->ListBox);
    for (const char* written : {"one\r\ntwo\r\n", "two\r\n", "two\r\n"}) {
        p.write("FavPlaces.INI", "stale");
        input::click(fav->Del);
        QCOMPARE(p.read("FavPlaces.INI"), QByteArray(written));
        if (entries(fav->ListBox).size() == 2)
            input::click(fav->ListBox, Qt::LeftButton, QPoint(20, 8));
    }
    QCOMPARE(p.untrappedErrors, QList<int>{});
}

void TestCompanions::favouritesDoubleClickNavigates()
{
    Program p;
    p.write("FavPlaces.INI", m_server.url("/untitled").toString().toLatin1() + "\r\n");
    MainFRM* main = p.main();
    QVERIFY(main);
    auto* fav = p.open<FavoritePlacesFRM>();
    QVERIFY(fav);
    const qsizetype from = p.captions.size();
    p.log.clear();
    input::doubleClick(fav->ListBox, QPoint(20, 8));
    // The main window's own handlers follow the page; the window stays, its list unchanged.
    QVERIFY(p.waitForCaption(QStringLiteral("Glidepath - [Done Loading Document]"), from));
    QCOMPARE(main->URLC.Text(), m_server.url("/untitled").toString());
    QVERIFY(fav->Visible());
    QCOMPARE(fav->ListBox.ListCount(), 1);
    QCOMPARE(p.log, QStringList{});
    QCOMPARE(p.untrappedErrors, QList<int>{});
}

void TestCompanions::idleScreen()
{
    Program p;
    MainFRM* main = p.main();
    QVERIFY(main);
    main->GoIdleMNU.action()->trigger();
    IdleFRM& idle = form<IdleFRM>();
    QVERIFY(!main->Visible());
    QTRY_COMPARE(idle.WindowState(), int(vbMaximized));
    QVERIFY(QTest::qWaitForWindowExposed(idle.widget()));
    // It draws on its own surface: black from the lines effect, with colours on it.
    QTRY_VERIFY_WITH_TIMEOUT(!idle.surface().isNull(), 5000);
    QTRY_VERIFY_WITH_TIMEOUT(idle.surface().pixelColor(idle.surface().rect().bottomRight() - QPoint(1, 1)) == Qt::black ||
                                 idle.surface().pixelColor(0, idle.surface().height() - 2) == Qt::black, 5000);
    // The clock: the time of day, in the time label.
    QTRY_VERIFY(idle.TimeLBL.Caption() != QLatin1String("Time"));
    QVERIFY2(idle.TimeLBL.Caption().count(QLatin1Char(':')) == 2, qPrintable(idle.TimeLBL.Caption()));

    // The time label and its panel are not the surface: a click there leaves the screen be.
    p.log.clear();
    input::click(idle.TimeLBL);
    input::click(idle.Frame);
    QVERIFY(idle.Visible());
    QCOMPARE(p.log, QStringList{});
    // A click on the surface: a click sound, the idle screen hidden, the browser back.
    input::click(idle, QPoint(idle.widget()->width() / 2, idle.widget()->height() / 2));
    QTRY_VERIFY(main->Visible());
    QVERIFY(!idle.Visible());
    QCOMPARE(p.log, QStringList{"Click.WAV"});

    // Hidden, both timers go on: the drawing changes, and so does the clock.
    const QImage before = idle.surface().copy();
    QTRY_VERIFY_WITH_TIMEOUT(idle.surface() != before, 5000);
    const QString time = idle.TimeLBL.Caption();
    QTRY_VERIFY_WITH_TIMEOUT(idle.TimeLBL.Caption() != time, 3000);

    // Idling again shows the same window without loading it: a window the person restored
    // stays restored.
    idle.setWindowState(vbNormal);
    main->GoIdleMNU.action()->trigger();
    QVERIFY(idle.Visible());
    QCOMPARE(&form<IdleFRM>(), &idle);
    QCOMPARE(idle.WindowState(), int(vbNormal));
    QVERIFY(!p.log.contains(QStringLiteral("OpenWIN.WAV")));
    // Shown again, it goes on drawing: what the screen shows of it changes frame after frame.
    QVERIFY(QTest::qWaitForWindowExposed(idle.widget()));
    auto onScreen = [&] { return idle.widget()->screen()->grabWindow(idle.widget()->winId()).toImage(); };
    for (int frame = 0; frame < 3; ++frame) {
        const QImage shown = onScreen();
        QTRY_VERIFY_WITH_TIMEOUT(onScreen() != shown, 5000);
    }
    QCOMPARE(p.untrappedErrors, QList<int>{});
}

void TestCompanions::driveExplorer()
{
    // A second drive to change to: this machine's, or else a memory file system mounted for the
    // test (as root, as CI runs; elsewhere a desktop has a second volume of its own).
    struct SecondDrive {
        QTemporaryDir at;
        bool mounted = QStorageInfo::mountedVolumes().size() < 2 && ::mount("glidepath", qPrintable(at.path()), "tmpfs", 0, nullptr) == 0;
        ~SecondDrive() { if (mounted) ::umount2(qPrintable(at.path()), MNT_DETACH); }
    } second;
    Program p;
    auto* explorer = p.open<DriveExplorerFRM>();
    QVERIFY(explorer);
    // This machine's mounted file systems, each by its mount point; the current one is the one
    // that holds the current directory.
    QVERIFY(explorer->DriveOne.ListCount() >= 1);
    for (int i = 0; i < explorer->DriveOne.ListCount(); ++i)
        QVERIFY2(explorer->DriveOne.List(i).startsWith(QLatin1Char('/')), qPrintable(explorer->DriveOne.List(i)));
    const QString root = explorer->DriveOne.Drive();
    QCOMPARE(root, QStorageInfo(QDir::currentPath()).rootPath());

    // The pane opens on it and shows its folders, as the engine lists a folder.
    QTRY_COMPARE_WITH_TIMEOUT(explorer->DriveExplorerWindow.LocationURL(), QUrl::fromLocalFile(root).toString(), 20000);
    const QString folder = QDir(root).entryList(QDir::Dirs | QDir::NoDotAndDotDot).value(0);
    QTRY_VERIFY_WITH_TIMEOUT(evaluate(explorer->DriveExplorerWindow, "document.body ? document.body.innerText : ''")
                                 .toString().contains(folder), 20000);

    // Picking the drive that is current again (the list opened with the keyboard, Enter on the
    // highlighted entry) raises no change: no click, no navigation.
    p.log.clear();
    input::key(explorer->DriveOne, Qt::Key_Down, Qt::AltModifier);
    input::keyInto(*explorer->widget(), Qt::Key_Return);
    QCOMPARE(explorer->DriveOne.Drive(), root);
    QCOMPARE(p.log, QStringList{});

    // Another drive: a click, and the pane goes there.
    QVERIFY2(explorer->DriveOne.ListCount() > 1, "one drive only, and no right to mount another");
    input::key(explorer->DriveOne, explorer->DriveOne.List(0).startsWith(root + " ") ? Qt::Key_Down : Qt::Key_Up);
    QVERIFY(explorer->DriveOne.Drive() != root);
    QCOMPARE(p.log, QStringList{"Click.WAV"});
    QTRY_COMPARE_WITH_TIMEOUT(explorer->DriveExplorerWindow.LocationURL(),
                              QUrl::fromLocalFile(explorer->DriveOne.Drive()).toString(), 20000);
    QCOMPARE(p.untrappedErrors, QList<int>{});
}

GLIDEPATH_TEST_MAIN(TestCompanions)
#include "tst_companions.moc"
