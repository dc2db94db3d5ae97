// The browser's main window on the real web engine against a real HTTP server on 127.0.0.1: its
// load sequence, the title status of a load, the buttons, the window states, the three ways it
// ends, and the windows it works with most (browser status, home page editor, theme selector,
// intro). What is checked is what a person sees: captions, texts, files written, sounds asked for.

#include "browser/main_window.h"
#include "companions/browser_status.h"
#include "companions/home_page.h"
#include "shared/statf.h"
#include "startup/intro.h"
#include "startup/theme_selector.h"
#include "platform/picture.h"
#include "support/http_server.h"
#include "support/input.h"
#include "support/program.h"
#include "support/test_main.h"

#include <QClipboard>
#include <QFileInfo>
#include <QScreen>
#include <QWebEngineView>

using namespace platform;

namespace {

// The progress values of the captions "Glidepath - [ name ] - [ Loading a  of  b ]".
QList<int> progressValues(const QStringList& captions)
{
    QList<int> values;
    for (const QString& c : captions)
        if (const qsizetype at = c.indexOf(QLatin1String("[ Loading ")); at >= 0)
            values << c.mid(at + 10).section(QLatin1Char(' '), 0, 0).toInt();
    return values;
}

QImage picture(const QString& file)
{
    return LoadPicture(file).toImage();
}

} // namespace

class TestBrowser : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void startUpSequence();
    void typedAddressTitleSequence_data();
    void typedAddressTitleSequence();
    void slowPageReportsProgressOverTime();
    void popUpGetsItsWindow();
    void logInPromptAndDownload();
    void buttons();
    void paneKeys();
    void windowStates();
    void shutdownPaths_data();
    void shutdownPaths();
    void browserStatusValues();
    void homePageEditorAndHome();
    void themeSelectorOkayAndCancel();
    void introFramesItsPicture();

private:
    HttpServer m_server;
};

void TestBrowser::startUpSequence()
{
    const QString home = m_server.url("/titled").toString();
    Program p({.home = home.toLatin1() + "\r\n"});
    MainFRM* main = nullptr;
    runHandler([&] { main = &form<MainFRM>(); });
    QVERIFY(main);
    QCOMPARE(p.status, (QStringList{
                           "Loading Theme Directory (ThemeDir.INI)", "Loading HomePage (HomePage.TXT)", "Playing Sound...",
                           "Loading BackGround (Main) Image...", "Loading 'Go' Image...", "Loading 'Back' Image...",
                           "Loading 'Forward' Image...", "Loading 'Refresh' Image...", "Loading 'Stop' Image...",
                           "Loading 'Home' Image...", "Changing Color Of Font(s)...", "Glide Path Succesfully Loaded. Enjoy.",
                       }));
    QCOMPARE(p.statusShown.mid(0, 3), (QList<bool>{false, false, true})); // the first two are never seen
    QVERIFY(!p.runtime().forms().isLoaded<StatF>()); // gone once the last text has lingered
    QVERIFY(main->Visible());
    // The home page's CR LF travels with the address, as the file holds it; the last caption
    // of the sequence repeats it with the address box's text, which the browser's events have
    // meanwhile set to its own address.
    QCOMPARE(p.captions.value(0), "Glidepath - [Going to: " + home + "\r\n]");
    QVERIFY(p.captions.contains("Glidepath - [Going to: " + main->BrowserWindow.LocationURL() + "]"));
    QCOMPARE(p.log.value(0), QStringLiteral("OpenWIN.WAV"));
    QVERIFY(p.waitForCaption(kDone));
    QCOMPARE(main->URLC.Text(), home);
    p.log.clear();
    main->CopyURL.action()->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), home);
    QCOMPARE(p.log, QStringList{}); // Copy URL plays no sound
    QCOMPARE(p.untrappedErrors, QList<int>{});
}

void TestBrowser::typedAddressTitleSequence_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("finalPath");
    QTest::addColumn<QString>("name");
    QTest::newRow("titled") << "/titled" << "/titled" << "Titled Page";
    QTest::newRow("untitled") << "/untitled" << "/untitled" << "";
    QTest::newRow("redirect") << "/redirect" << "/titled" << "Titled Page";
    QTest::newRow("missing page") << "/missing" << "/missing" << "Not Found";
}

void TestBrowser::typedAddressTitleSequence()
{
    QFETCH(QString, path);
    QFETCH(QString, finalPath);
    QFETCH(QString, name);
    Program p;
    MainFRM* main = p.main();
    QVERIFY(main);
    const qsizetype from = p.captions.size();
    p.log.clear();
    const QString typed = m_server.typed(path); // no scheme: the component decides what it means
    main->URLC.setText(QString());
    input::type(main->URLC, typed);
    input::key(main->URLC, Qt::Key_Return);
    QCOMPARE(p.captions.value(from), "Glidepath - [Going to: " + typed + "]");
    QCOMPARE(p.log.value(0), QStringLiteral("Click.WAV"));
    QVERIFY(p.waitForCaption(kDone, from));

    const QStringList load = p.captions.mid(from);
    QCOMPARE(load.value(1), QStringLiteral("Glidepath - [Begining Download]"));
    QVERIFY(load.contains(QStringLiteral("Glidepath - [Inactive]")));
    QVERIFY(load.indexOf(QStringLiteral("Glidepath - [Done Loading]")) < load.indexOf(QStringLiteral("Glidepath - [Download Complete]")));
    QCOMPARE(load.last(), kDone);
    QVERIFY2(load.contains("Glidepath - [ " + name + " ] - [ Loading -1  of  0 ]"), qPrintable(load.join('\n')));
    QCOMPARE(main->URLC.Text(), m_server.url(finalPath).toString());
    // The first progress event made the browser status window, hidden.
    QVERIFY(p.runtime().forms().isLoaded<BrowserStatusFRM>());
    QVERIFY(!form<BrowserStatusFRM>().Visible());
    QCOMPARE(form<BrowserStatusFRM>().PercentageLoaded.Caption(), QStringLiteral("Loading -1  of  0"));
}

void TestBrowser::slowPageReportsProgressOverTime()
{
    Program p({.home = m_server.url("/slow").toString().toLatin1()});
    QVERIFY(p.main());
    QList<int> values = progressValues(p.captions);
    QCOMPARE(values.takeLast(), -1);
    QCOMPARE(values.first(), 0);
    QCOMPARE(values.last(), 10000);
    QVERIFY(std::is_sorted(values.begin(), values.end()));
    QVERIFY2(std::any_of(values.begin(), values.end(), [](int v) { return v > 0 && v < 10000; }), qPrintable(p.captions.join('\n')));
}

void TestBrowser::popUpGetsItsWindow()
{
    Program p({.home = m_server.url("/popup").toString().toLatin1()});
    MainFRM* main = p.main();
    QVERIFY(main);
    QWebEngineView* popup = nullptr;
    QVERIFY(QTest::qWaitFor([&] {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w != main->widget() && w->isVisible())
                if (auto* view = w->findChild<QWebEngineView*>(); view && view->title() == QLatin1String("Titled Page"))
                    popup = view;
        return popup != nullptr;
    }, 20000));
    QCOMPARE(main->NewWindowFlag, std::int16_t(-1)); // BP unchecked: the flag is true, and nothing reads it
    // Asked for a place above and left of the screen, it still opens whole on it.
    QTRY_VERIFY(popup->window()->screen()->availableGeometry().contains(popup->window()->frameGeometry()));
    popup->window()->close();
}

void TestBrowser::logInPromptAndDownload()
{
    Program p;
    QStringList sites;
    p.dialogs->loginAnswer = [&](const QString& site, QString& user, QString& password) {
        sites << site;
        user = QStringLiteral("user");
        password = QStringLiteral("secret");
        return true;
    };
    QTemporaryDir downloads;
    p.dialogs->fileAnswer = [&](const FileDialogRequest& r) { return r.save ? downloads.filePath(r.fileName) : QString(); };
    MainFRM* main = p.main();
    QVERIFY(main);
    const qsizetype from = p.captions.size();
    main->BrowserWindow.Navigate(m_server.url("/private").toString());
    QVERIFY(p.waitForCaption(kDone, from));
    QCOMPARE(sites, QStringList{"127.0.0.1 - Glidepath Test"});
    QTRY_COMPARE(main->BrowserWindow.LocationName(), QStringLiteral("Private"));
    main->BrowserWindow.Navigate(m_server.url("/file.bin").toString());
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(downloads.filePath("file.bin")).size() == 100000, 20000);
}

void TestBrowser::buttons()
{
    Program p;
    MainFRM* main = p.main();
    QVERIFY(main);
    // Back and Forward with no page to go to still click.
    p.log.clear();
    input::click(main->Back);
    input::click(main->ForwardF);
    QCOMPARE(p.log, (QStringList{"Click.WAV", "Click.WAV"}));
    // Every mouse button presses a button; the pressed picture is read from the theme each time.
    const QString theme = kThemes + "/Default/";
    const QPoint go = main->Go.widget()->geometry().center() - main->clientOrigin();
    input::press(*main, go, Qt::RightButton);
    QCOMPARE(main->Go.Picture().toImage(), picture(theme + "GoDOWN.BMP"));
    input::release(*main, go, Qt::RightButton);
    QCOMPARE(main->Go.Picture().toImage(), picture(theme + "GoUP.BMP"));
    QCOMPARE(p.untrappedErrors, QList<int>{});
}

void TestBrowser::paneKeys()
{
    // The hosted browser's own keys with the page holding the keyboard: each goes through the
    // component as the buttons do, so the title's status line follows; none clicks.
    const QString titled = m_server.url("/titled").toString(), untitled = m_server.url("/untitled").toString();
    Program p({.home = titled.toLatin1()});
    MainFRM* main = p.main();
    QVERIFY(main);
    qsizetype from = p.captions.size();
    main->BrowserWindow.Navigate(untitled);
    QVERIFY(p.waitForCaption(kDone, from));
    const struct {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        QString url;
    } keys[] = {{Qt::Key_Left, Qt::AltModifier, titled}, {Qt::Key_Right, Qt::AltModifier, untitled},
                {Qt::Key_F5, Qt::NoModifier, untitled}, {Qt::Key_R, Qt::ControlModifier, untitled}};
    for (const auto& k : keys) {
        from = p.captions.size();
        p.log.clear();
        input::key(main->BrowserWindow, k.key, k.modifiers);
        QVERIFY(p.waitForCaption(kDone, from));
        QCOMPARE(p.captions.value(from), QStringLiteral("Glidepath - [Begining Download]"));
        QCOMPARE(main->URLC.Text(), k.url);
        QCOMPARE(p.log, QStringList{});
    }
    input::key(main->BrowserWindow, Qt::Key_P, Qt::ControlModifier); // the print dialog, cancelled
    QTRY_COMPARE(p.log, QStringList{"print"});
    // Escape stops a page that comes slowly: its load ends before its last part arrives.
    from = p.captions.size();
    main->BrowserWindow.Navigate(m_server.url("/slow").toString());
    QVERIFY(p.waitForCaption(QStringLiteral("Glidepath - [Begining Download]"), from));
    input::key(main->BrowserWindow, Qt::Key_Escape);
    QVERIFY(p.waitForCaption(kDone, from));
    QCOMPARE(evaluate(main->BrowserWindow, QStringLiteral("document.body.innerText.includes('ffff')")).toBool(), false);
    QCOMPARE(p.untrappedErrors, QList<int>{});
}


void TestBrowser::windowStates()
{
    // Maximised: the program directory's own open sound, minimised its close sound, as often as
    // the window was resized in that state; back to normal, none. The end to end test has the sizes.
    Program p;
    MainFRM* main = p.main();
    QVERIFY(main);
    for (const auto& [state, sound] : {std::pair{vbMaximized, "Art/OpenWin.WAV"}, {vbNormal, ""}, {vbMinimized, "Art/CloseWin.WAV"}}) {
        p.log.clear();
        main->setWindowState(state);
        QTRY_COMPARE(main->WindowState(), int(state));
        QStringList art = p.log.filter(QStringLiteral("Art/"));
        art.removeDuplicates();
        QCOMPARE(art, *sound ? QStringList{sound} : QStringList{});
    }
}
void TestBrowser::shutdownPaths_data()
{
    QTest::addColumn<int>("path"); // 0 Exit, 1 closing the window, 2 terminate
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("stateAtEnd");
    QTest::newRow("Exit from maximised") << 0 << 2 << 0;
    QTest::newRow("Exit from minimised") << 0 << 1 << 0;
    QTest::newRow("closing from minimised") << 1 << 1 << 0;
    QTest::newRow("terminate from maximised") << 2 << 2 << 0;
    QTest::newRow("terminate leaves minimised") << 2 << 1 << 1;
}

// The terminate handler runs when the window object goes, which no test may do to the one main
// window of its program: a window of its kind, made for this, is ended instead.
struct EndedMainWindow : MainFRM {
    using MainFRM::Form_Terminate;
};

void TestBrowser::shutdownPaths()
{
    QFETCH(int, path);
    QFETCH(int, state);
    QFETCH(int, stateAtEnd);
    Program p;
    MainFRM* main = path == 2 ? p.open<EndedMainWindow>() : p.open<MainFRM>();
    QVERIFY(main);
    main->setWindowState(state);
    QTRY_COMPARE(main->WindowState(), state);
    int stateWhenEnded = -1;
    p.runtime().setEndHook([&] {
        ++p.ends;
        stateWhenEnded = main->WindowState();
    });
    p.log.clear();
    switch (path) {
    case 0: main->ExitMNU.action()->trigger(); break;
    case 1: main->widget()->close(); break;
    default: runHandler([&] { static_cast<EndedMainWindow*>(main)->Form_Terminate(); }); break;
    }
    QCOMPARE(p.ends, 1);
    QCOMPARE(p.log.value(0), QStringLiteral("CloseWIN.WAV"));
    QCOMPARE(stateWhenEnded, stateAtEnd);
}

void TestBrowser::browserStatusValues()
{
    Program p({.home = m_server.url("/titled").toString().toLatin1()});
    MainFRM* main = p.main();
    QVERIFY(main);
    main->BrowserStatusMNU.action()->trigger();
    BrowserStatusFRM& status = form<BrowserStatusFRM>();
    QVERIFY(status.Visible());
    main->setWidth(12375); // a pane 12000 twips (800 pixels) wide, under a caption of pixels
    main->setHeight(8000);
    QTRY_COMPARE(status.WidthQ.Caption(), QStringLiteral("12000"));
    QTRY_COMPARE(status.HeightQ.Caption(), QStringLiteral("6100"));
    QCOMPARE(QStringList({status.LocationURLL.Caption(), status.LocationName.Caption(), status.WindowStateLBL.Caption()}),
             QStringList({m_server.url("/titled").toString(), "Titled Page", "Normal"}));
    main->setWindowState(vbMinimized);
    QTRY_COMPARE(status.WindowStateLBL.Caption(), QStringLiteral("Minimized"));
    QCOMPARE(p.untrappedErrors, QList<int>{});
}
void TestBrowser::homePageEditorAndHome()
{
    Program p({.home = m_server.url("/titled").toString().toLatin1()});
    MainFRM* main = p.main();
    QVERIFY(main);
    main->EditHomePageMNU.action()->trigger();
    HomePageFRM& editor = form<HomePageFRM>();
    QCOMPARE(editor.Data.Text(), m_server.url("/titled").toString()); // the page being viewed
    editor.Data.setText(m_server.typed("/untitled"));
    p.log.clear();
    input::key(editor.Data, Qt::Key_Return);
    QVERIFY(!editor.Visible());
    QCOMPARE(p.log, QStringList{"Click.WAV"});
    QCOMPARE(p.read("HomePage.TXT"), m_server.typed("/untitled").toLatin1() + "\r\n");

    // Home goes to the editor's address, not to the file's, and clicks after.
    const qsizetype from = p.captions.size();
    p.log.clear();
    input::click(main->Home);
    QCOMPARE(p.log, QStringList{"Click.WAV"});
    QVERIFY(p.waitForCaption(kDone, from));
    QCOMPARE(main->URLC.Text(), m_server.url("/untitled").toString());

    // Cancel writes nothing; the editor was only hidden, so it shows the abandoned text again.
    editor.Show();
    editor.Data.setText(QStringLiteral("abandoned"));
    input::click(editor.Cncl);
    QCOMPARE(p.read("HomePage.TXT"), m_server.typed("/untitled").toLatin1() + "\r\n");
    main->EditHomePageMNU.action()->trigger();
    QCOMPARE(editor.Data.Text(), QStringLiteral("abandoned"));
    input::click(editor.OkCMD);
    QCOMPARE(p.read("HomePage.TXT"), QByteArray("abandoned\r\n"));
}

void TestBrowser::themeSelectorOkayAndCancel()
{
    Program p;
    MainFRM* main = p.main();
    QVERIFY(main);
    ThemeSelector& selector = form<ThemeSelector>();
    const QByteArray before = p.read("ThemeDir.INI");
    selector.Dir.setPath(kThemes + "/Midnight"); // browsing changes the live directory at once
    input::click(selector.CancelCMD);
    QCOMPARE(p.read("ThemeDir.INI"), before);
    p.log.clear();
    input::click(main->Back);
    QCOMPARE(p.log, QStringList{kThemes + "/Midnight/Click.WAV"});
    selector.Show();
    input::click(selector.OkayCMD);
    QCOMPARE(p.read("ThemeDir.INI"), "[Theme Directory]\r\nDIR=" + (kThemes + "/Midnight").toLocal8Bit() + "\r\n");
    QVERIFY(!selector.Visible() && main->Visible());
    // The main window loaded again in the new theme, the intro's music with it.
    QCOMPARE(main->Go.Picture().toImage(), picture(kThemes + "/Midnight/GoUP.BMP"));
    QCOMPARE(main->MainFBackGroundImage.Picture().toImage(), picture(kThemes + "/Midnight/Main.BMP"));
    QCOMPARE(form<IntroFRM>().Player.FileName(), kThemes + "/Midnight/Intro.MP3");
}
void TestBrowser::introFramesItsPicture()
{
    QTemporaryDir theme;
    themeWithout(theme, QStringLiteral("Intro.BMP"));
    QImage shot(400, 130, QImage::Format_RGB32); // 6000 by 1950 twips
    shot.fill(Qt::red);
    QVERIFY(shot.save(theme.filePath("Intro.BMP"), "BMP"));
    Program p({.theme = theme.path()});
    IntroFRM* intro = p.open<IntroFRM>();
    QVERIFY(intro);
    // A margin of 240 twips on every side; the frame covers the window.
    QCOMPARE(QSize(intro->Width(), intro->Height()), QSize(6480, 2430));
    QCOMPARE(QSize(intro->IntroFormBorder.Width(), intro->IntroFormBorder.Height()), QSize(6480, 2430));
    QVERIFY(intro->widget()->windowFlags() & Qt::WindowStaysOnTopHint);
    QVERIFY(intro->Player.AutoStart());
}
GLIDEPATH_TEST_MAIN(TestBrowser)
#include "tst_browser.moc"
