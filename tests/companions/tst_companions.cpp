// The menu commands on the real engine and the companion windows (favourite places, the idle
// screen, the drive explorer), on the real windows against pages on 127.0.0.1: what a person
// sees, the files written and the sounds asked for.

#include "browser/main_window.h"
#include "companions/drive_explorer.h"
#include "companions/favorite_places.h"
#include "companions/idle_screen.h"
#include "startup/theme_selector.h"
#include "platform/find_bar.h"
#include "platform/page_properties.h"
#include "platform/picture.h"
#include "platform/runtime.h"
#include "platform/sounds.h"
#include "support/http_server.h"
#include "support/input.h"
#include "support/test_main.h"
#include "support/test_runtime.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QLabel>
#include <QPrinter>
#include <QProcess>
#include <QSignalSpy>
#include <QWebEngineView>

using namespace platform;

namespace {

const QString kThemes = QStringLiteral(GLIDEPATH_SOURCE_DIR "/themes");
const QString kDone = QStringLiteral("Glidepath - [Done Loading Document]");

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
        QTest::qWaitForWindowExposed(m);
        QTest::qWaitFor([&] { return captions.contains(kDone); }, 20000);
        return *m;
    }
    bool navigatedTo(MainFRM& main, const QString& url)
    {
        return QTest::qWaitFor([&] { return main.BrowserWindow.LocationURL() == url; }, 20000);
    }
    TestRuntime t;
    QStringList sounds, captions;
};

QVariant evaluate(WebBrowser& browser, const QString& script)
{
    QVariant result;
    bool done = false;
    browser.view()->page()->runJavaScript(script, [&](const QVariant& v) { result = v; done = true; });
    QTest::qWaitFor([&] { return done; }, 10000);
    return result;
}

} // namespace

class TestCompanions : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void openAndSavePage();
    void copySelectAllAndTextSize();
    void printToPdfAfterPageSetUp();
    void pagePropertiesAndFind();
    void themeAndGoIdle();
    void favouritesCommaAndLooks();
    void favouritesNavigateAndMissingBitmap();
    void driveExplorer();

private:
    HttpServer m_server;
};

void TestCompanions::openAndSavePage()
{
    Program p(m_server.url("/titled").toString());
    MainFRM& main = p.main();
    p.t.write("local.html", "<title>On Disk</title><p>local</p>");
    QString answer = p.t.path("local.html");
    p.t.dialogs->fileAnswer = [&](const FileDialogRequest&) { return answer; };
    p.sounds.clear();
    main.OpenPageMNU.action()->trigger();
    QCOMPARE(p.t.dialogs->fileRequests.last().filter,
             QStringLiteral("All Internet Files (*.hmt,*.html,*.asp,*.shtml,*.js,*.dhtml) | *.htm;*.html;*.asp;*.shtml;*.js;*.dhtml"));
    QVERIFY(p.navigatedTo(main, QUrl::fromLocalFile(p.t.path("local.html")).toString()));
    QCOMPARE(p.sounds, (QStringList{"Click.WAV", "Click.WAV"}));

    // Save Page: the chosen file is created, or emptied, and holds nothing.
    p.t.write("saved.htm", "what it held before");
    answer = p.t.path("saved.htm");
    p.sounds.clear();
    main.SavePageMNU.action()->trigger();
    QVERIFY(QFileInfo::exists(p.t.path("saved.htm")));
    QCOMPARE(p.t.read("saved.htm"), QByteArray());
    QCOMPARE(p.t.dialogs->fileRequests.last().filter, QStringLiteral("htm (*.htm) | *.htm"));
    QVERIFY(p.t.dialogs->fileRequests.last().save);
    QCOMPARE(p.sounds, (QStringList{"Click.WAV", "Click.WAV"}));
    QCOMPARE(p.t.untrappedErrors, QList<int>{});
}

void TestCompanions::copySelectAllAndTextSize()
{
    Program p(m_server.url("/titled").toString());
    MainFRM& main = p.main();
    // The text size changes the page's layout: a larger text leaves fewer CSS pixels across.
    const int before = evaluate(main.BrowserWindow, "window.innerWidth").toInt();
    main.LargestMNU.action()->trigger();
    QTRY_VERIFY(evaluate(main.BrowserWindow, "window.innerWidth").toInt() < before);
    main.MediumMNU.action()->trigger();
    QTRY_COMPARE(evaluate(main.BrowserWindow, "window.innerWidth").toInt(), before);

    // Copy with nothing selected is refused, and nothing traps it.
    main.CopyMNU.action()->trigger();
    QCOMPARE(p.t.untrappedErrors, QList<int>{-2147467259});
    p.t.untrappedErrors.clear();
}

void TestCompanions::printToPdfAfterPageSetUp()
{
    Program p(m_server.url("/titled").toString());
    MainFRM& main = p.main();
    QTemporaryDir out;
    const QString pdf = out.filePath("page.pdf");
    QPageLayout::Orientation seen = QPageLayout::Portrait;
    p.t.dialogs->pageSetupAnswer = [](QPrinter& printer) {
        printer.setPageOrientation(QPageLayout::Landscape);
        return true;
    };
    p.t.dialogs->printAnswer = [&](QPrinter& printer) {
        seen = printer.pageLayout().orientation(); // what the set-up chose
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(pdf);
        return true;
    };
    main.PrintSetupMNU.action()->trigger();
    QSignalSpy printed(&main.BrowserWindow, &WebBrowser::printed);
    main.PrintMNU.action()->trigger();
    QVERIFY(printed.wait(30000));
    QCOMPARE(printed.first().first().toBool(), true);
    QCOMPARE(seen, QPageLayout::Landscape);
    QProcess text;
    text.start(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
    QVERIFY(text.waitForFinished(20000));
    const QString printedText = QString::fromUtf8(text.readAllStandardOutput());
    QVERIFY2(printedText.contains(QLatin1String("A page with a title.")), qPrintable(printedText + " / " + QString::number(QFileInfo(pdf).size())));
}

void TestCompanions::pagePropertiesAndFind()
{
    Program p(m_server.url("/titled").toString());
    MainFRM& main = p.main();
    main.PagerPropertiesMNU.action()->trigger();
    PagePropertiesWindow* properties = nullptr;
    QTRY_VERIFY((properties = qApp->findChild<PagePropertiesWindow*>()) ||
                [&] { for (QWidget* w : QApplication::topLevelWidgets()) if ((properties = dynamic_cast<PagePropertiesWindow*>(w))) return true; return false; }());
    QCOMPARE(properties->value("Title:"), QStringLiteral("Titled Page"));
    QCOMPARE(properties->value("Address:"), m_server.url("/titled").toString());
    QCOMPARE(properties->value("Protocol:"), QStringLiteral("HTTP"));
    QTRY_COMPARE(properties->value("Type:"), QStringLiteral("text/html"));
    properties->close();

    // Find: the menu gives the pane the keyboard and sends it Ctrl+F; the component's bar opens.
    p.sounds.clear();
    main.FindMNU.action()->trigger();
    FindBar& bar = main.BrowserWindow.findBar();
    QTRY_VERIFY(bar.isVisible());
    QCOMPARE(p.sounds, QStringList{});
    QTest::keyClicks(QApplication::focusWidget(), "a title");
    QTRY_COMPARE(bar.resultText(), QStringLiteral("1 of 1"));
    QTest::keyClicks(QApplication::focusWidget(), "zzz");
    QTRY_COMPARE(bar.resultText(), QStringLiteral("Not found"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QTRY_VERIFY(!bar.isVisible());
}

void TestCompanions::themeAndGoIdle()
{
    Program p(m_server.url("/titled").toString());
    MainFRM& main = p.main();
    p.sounds.clear();
    main.ThemeMNU.action()->trigger();
    QVERIFY(form<ThemeSelector>().Visible());
    QVERIFY(form<ThemeSelector>().CancelCMD.Enabled());
    QVERIFY(!main.Visible());
    QCOMPARE(p.sounds, QStringList{"Click.WAV"});
    input::click(form<ThemeSelector>().CancelCMD);
    QTRY_VERIFY(main.Visible());

    main.GoIdleMNU.action()->trigger();
    IdleFRM& idle = form<IdleFRM>();
    QVERIFY(!main.Visible());
    QTRY_COMPARE(idle.WindowState(), int(vbMaximized));
    QVERIFY(QTest::qWaitForWindowExposed(&idle));
    // The animation draws, and the clock runs.
    QTRY_VERIFY_WITH_TIMEOUT(!idle.surface().isNull(), 5000);
    QTRY_VERIFY(idle.TimeLBL.Caption() != QLatin1String("Time"));
    input::click(idle.TimeLBL); // the time is not the surface
    QVERIFY(idle.Visible());
    input::click(idle, QPoint(idle.width() / 2, idle.height() / 2));
    QTRY_VERIFY(main.Visible());
    QVERIFY(!idle.Visible());
    // Hidden, it goes on drawing.
    const QImage before = idle.surface().copy();
    QTRY_VERIFY_WITH_TIMEOUT(idle.surface() != before, 5000);
    QCOMPARE(p.t.untrappedErrors, QList<int>{});
}

void TestCompanions::favouritesCommaAndLooks()
{
    Program p(m_server.url("/titled").toString());
    MainFRM& main = p.main();
    p.t.write("FavPlaces.INI", "");
    main.FavoritePlacesMNU.action()->trigger();
    FavoritePlacesFRM* fav = &form<FavoritePlacesFRM>();
    QCOMPARE(fav->URL.Text(), main.URLC.Text()); // the page being viewed, offered
    fav->URL.setText(QString());
    input::type(fav->URL, "http://a.example/x,y");
    input::key(fav->URL, Qt::Key_Return);
    fav->URL.setText(QString());
    input::type(fav->URL, "  spaced");
    input::click(fav->Add);
    QCOMPARE(fav->URL.Text(), QStringLiteral("http://"));
    QCOMPARE(p.t.read("FavPlaces.INI"), QByteArray("http://a.example/x,y\r\n  spaced\r\n"));

    // Read back as fields: the comma splits, the leading blanks go.
    Unload(*fav);
    QTest::qWait(0);
    main.FavoritePlacesMNU.action()->trigger();
    fav = &form<FavoritePlacesFRM>();
    QCOMPARE(fav->ListBox.ListCount(), 3);
    QCOMPARE((QStringList{fav->ListBox.List(0), fav->ListBox.List(1), fav->ListBox.List(2)}),
             (QStringList{"http://a.example/x", "y", "spaced"}));

    // The themed buttons' pressed look; the release is a click, which adds the address offered.
    fav->Show();
    QVERIFY(QTest::qWaitForWindowExposed(fav));
    const QImage up = fav->Add.Picture().toImage();
    const QPoint add = fav->Add.widget()->geometry().center() - fav->clientOrigin();
    input::press(*fav, add);
    QCOMPARE(fav->Add.Picture().toImage(), LoadPicture(kThemes + "/Default/AddDOWN.BMP").toImage());
    input::release(*fav, add);
    QCOMPARE(fav->Add.Picture().toImage(), up);
    QCOMPARE(fav->ListBox.ListCount(), 4);

    // Delete with nothing selected: nothing removed, the list written again all the same.
    fav->ListBox.setListIndex(-1);
    p.t.write("FavPlaces.INI", "stale");
    input::click(fav->Del);
    QCOMPARE(fav->ListBox.ListCount(), 4);
    QCOMPARE(p.t.read("FavPlaces.INI"), "http://a.example/x\r\ny\r\nspaced\r\n" + main.URLC.Text().toLatin1() + "\r\n");
    QCOMPARE(p.t.untrappedErrors, QList<int>{});
}

void TestCompanions::favouritesNavigateAndMissingBitmap()
{
    QTemporaryDir theme;
    for (const QString& f : QDir(kThemes + "/Default").entryList(QDir::Files))
        if (f != QLatin1String("DeleteDOWN.BMP"))
            QFile::copy(kThemes + "/Default/" + f, theme.filePath(f));
    Program p(m_server.url("/titled").toString(), theme.path());
    MainFRM& main = p.main();
    p.t.write("FavPlaces.INI", m_server.url("/untitled").toString().toLatin1() + "\r\n");
    main.FavoritePlacesMNU.action()->trigger();
    FavoritePlacesFRM& fav = form<FavoritePlacesFRM>();
    QVERIFY(QTest::qWaitForWindowExposed(&fav));
    fav.ListBox.setListIndex(0);
    input::doubleClick(fav.ListBox, QPoint(20, 8));
    QVERIFY(p.navigatedTo(main, m_server.url("/untitled").toString()));
    QVERIFY(fav.Visible());
    QCOMPARE(fav.ListBox.ListCount(), 1);
    input::press(fav, fav.Del.widget()->geometry().center() - fav.clientOrigin());
    QCOMPARE(p.t.untrappedErrors, QList<int>{ErrFileNotFound});
}

void TestCompanions::driveExplorer()
{
    Program p(m_server.url("/titled").toString());
    p.main();
    DriveExplorerFRM& explorer = form<DriveExplorerFRM>();
    explorer.Show();
    QVERIFY(QTest::qWaitForWindowExposed(&explorer));
    QVERIFY(explorer.DriveOne.ListCount() >= 1);
    QVERIFY(explorer.DriveOne.List(0).contains(QLatin1Char('[')));
    // The pane opens on the current drive and shows its folders.
    const QString root = explorer.DriveOne.Drive();
    QTRY_VERIFY_WITH_TIMEOUT(explorer.DriveExplorerWindow.LocationURL().startsWith(QLatin1String("file://")), 20000);
    QTRY_VERIFY_WITH_TIMEOUT(evaluate(explorer.DriveExplorerWindow, "document.body ? document.body.innerText : ''")
                                 .toString().contains(QDir(root).entryList(QDir::Dirs | QDir::NoDotAndDotDot).value(0)), 20000);
    int changes = 0;
    explorer.DriveOne.onChange([&] { ++changes; });
    explorer.DriveOne.setDrive(root); // the current one again: no change
    QCOMPARE(changes, 0);

    explorer.setWidth(6000);
    explorer.setHeight(4000);
    QCOMPARE(explorer.DriveExplorerWindow.Width(), 6000 - 130);
    QCOMPARE(explorer.DriveExplorerWindow.Top(), explorer.DriveOne.Height());
    QCOMPARE(explorer.DriveExplorerWindow.Height(), 4000 - explorer.DriveOne.Height() - 520);
    QCOMPARE(explorer.DriveOne.Width(), 6000 - 130);
}

GLIDEPATH_WEB_TEST_MAIN(TestCompanions)
#include "tst_companions.moc"
