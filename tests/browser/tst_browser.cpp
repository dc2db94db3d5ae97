// The browser end to end: the real main window, the real web engine and a real HTTP server on
// 127.0.0.1. What is checked is what a person sees: the title status, the address box, the
// status pop-up, the files written and the sounds asked for.

#include "browser/main_window.h"
#include "companions/browser_status.h"
#include "companions/home_page.h"
#include "shared/procedures.h"
#include "shared/statf.h"
#include "startup/intro.h"
#include "startup/theme_selector.h"
#include "platform/common_dialog.h"
#include "platform/convert.h"
#include "platform/sounds.h"
#include "support/http_server.h"
#include "support/input.h"
#include "support/test_main.h"
#include "support/test_runtime.h"

#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QScreen>
#include <QSignalSpy>
#include <QWebEngineView>

using namespace platform;

namespace {

const QString kThemes = QStringLiteral(GLIDEPATH_SOURCE_DIR "/themes");
const QString kDone = QStringLiteral("Glidepath - [Done Loading Document]");

// A program directory with a theme and a home page, and a record of what the windows show.
class Browser {
public:
    explicit Browser(const QString& home, const QString& theme = kThemes + "/Default")
    {
        t.write("ThemeDir.INI", "[Theme Directory]\r\nDIR=" + theme.toLocal8Bit() + "\r\n");
        t.write("HomePage.TXT", home.toLocal8Bit());
        QObject::connect(&t.runtime().sounds(), &WavePlayer::requested, [this](const QString& p) { sounds << p; });
        QObject::connect(&form<StatF>().Info, &Control::textWritten, [this](const QString& text) {
            status << text;
            statusShown << form<StatF>().Visible();
        });
        t.runtime().forms().setCreatedHook([this](Form& window) {
            if (dynamic_cast<MainFRM*>(&window))
                QObject::connect(&window, &Form::captionWritten, [this](const QString& c) { captions << c; });
        });
    }

    // Touches the main window, which runs its whole load sequence.
    MainFRM& open()
    {
        MainFRM* main = nullptr;
        runHandler([&] { main = &form<MainFRM>(); });
        return *main;
    }

    // The main window on the screen, ready for clicks and keys.
    MainFRM& openShown()
    {
        MainFRM& main = open();
        main.Show();
        if (!QTest::qWaitForWindowExposed(main.widget()))
            qWarning("the main window was not exposed");
        return main;
    }

    bool waitForDone(int from = 0)
    {
        return QTest::qWaitFor([&] { return captions.indexOf(kDone, from) >= 0; }, 20000);
    }

    TestRuntime t;
    QStringList captions, status, sounds;
    QList<bool> statusShown;
};

// A copy of the Default theme in dir, without the named file.
QString themeWithout(const QTemporaryDir& dir, const QString& missing)
{
    for (const QString& f : QDir(kThemes + "/Default").entryList(QDir::Files))
        if (f != missing)
            QFile::copy(kThemes + "/Default/" + f, dir.filePath(f));
    return dir.path();
}

void typeAndEnter(MainFRM& main, const QString& text)
{
    main.URLC.setText(QString());
    input::type(main.URLC, text);
    input::key(main.URLC, Qt::Key_Return);
}

// The progress values of the captions "Glidepath - [ name ] - [ Loading a  of  b ]".
QList<int> progressValues(const QStringList& captions)
{
    QList<int> values;
    for (const QString& c : captions) {
        const qsizetype at = c.indexOf(QLatin1String("[ Loading "));
        if (at >= 0)
            values << c.mid(at + 10).section(QLatin1Char(' '), 0, 0).toInt();
    }
    return values;
}

} // namespace

class TestBrowser : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void startUpSequence();
    void missingThemePictureEndsTheProgram();
    void typedAddressTitleSequence_data();
    void typedAddressTitleSequence();
    void slowPageReportsProgressOverTime();
    void popUpGetsItsWindow();
    void logInPromptAndDownload();
    void backWithNoHistoryStillClicks();
    void pressedAndReleasedBitmaps();
    void resizeRule_data();
    void resizeRule();
    void shutdownPaths_data();
    void shutdownPaths();
    void browserStatusValues();
    void homePageEditor();
    void themeSelectorOkayAndCancel();
    void introSizesAndColours();
    void firstStartAsksForATheme();

private:
    HttpServer m_server;
};

void TestBrowser::startUpSequence()
{
    Browser b(m_server.url("/titled").toString() + "\r\n");
    MainFRM& main = b.open();
    QCOMPARE(b.status, (QStringList{
                           "Loading Theme Directory (ThemeDir.INI)", "Loading HomePage (HomePage.TXT)", "Playing Sound...",
                           "Loading BackGround (Main) Image...", "Loading 'Go' Image...", "Loading 'Back' Image...",
                           "Loading 'Forward' Image...", "Loading 'Refresh' Image...", "Loading 'Stop' Image...",
                           "Loading 'Home' Image...", "Changing Color Of Font(s)...", "Glide Path Succesfully Loaded. Enjoy.",
                       }));
    // The first two are written while the pop-up is still hidden.
    QCOMPARE(b.statusShown.mid(0, 3), (QList<bool>{false, false, true}));
    QVERIFY(!b.t.runtime().forms().isLoaded<StatF>());
    QVERIFY(main.Visible());
    // The home page's CR LF travels with the address, as the file holds it.
    QCOMPARE(b.captions.value(0), "Glidepath - [Going to: " + m_server.url("/titled").toString() + "\r\n]");
    // The last caption of the load sequence repeats it with the address box's text, which the
    // browser's events have meanwhile set to its own address.
    QVERIFY(b.captions.contains("Glidepath - [Going to: " + main.BrowserWindow.LocationURL() + "]"));
    QVERIFY(b.sounds.contains(kThemes + "/Default/OpenWIN.WAV"));
    QVERIFY(b.waitForDone());
    QCOMPARE(main.URLC.Text(), m_server.url("/titled").toString());
    b.sounds.clear();
    main.CopyURL.action()->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), m_server.url("/titled").toString());
    QVERIFY(b.sounds.isEmpty()); // Copy URL plays no sound
    QVERIFY(b.t.untrappedErrors.isEmpty());
}

void TestBrowser::missingThemePictureEndsTheProgram()
{
    QTemporaryDir theme;
    Browser b(m_server.url("/titled").toString(), themeWithout(theme, QStringLiteral("StopUP.BMP")));
    runHandler([] { form<MainFRM>(); }); // the load ends in the error: no window to hand back
    QCOMPARE(b.t.untrappedErrors, QList<int>{ErrFileNotFound});
    QCOMPARE(b.status.last(), QStringLiteral("Loading 'Stop' Image..."));
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
    Browser b(QStringLiteral("about:blank"));
    MainFRM& main = b.openShown();
    QVERIFY(b.waitForDone());

    const qsizetype from = b.captions.size();
    b.sounds.clear();
    const QString typed = m_server.typed(path); // no scheme: the component decides what it means
    typeAndEnter(main, typed);
    QCOMPARE(b.captions.value(from), "Glidepath - [Going to: " + typed + "]");
    QCOMPARE(b.sounds.value(0), kThemes + "/Default/Click.WAV");
    QVERIFY(b.waitForDone(from));

    const QStringList load = b.captions.mid(from);
    QCOMPARE(load.value(1), QStringLiteral("Glidepath - [Begining Download]"));
    QVERIFY(load.contains(QStringLiteral("Glidepath - [Inactive]")));
    QVERIFY(load.indexOf(QStringLiteral("Glidepath - [Done Loading]")) <
            load.indexOf(QStringLiteral("Glidepath - [Download Complete]")));
    QCOMPARE(load.last(), kDone);
    QVERIFY2(load.contains("Glidepath - [ " + name + " ] - [ Loading -1  of  0 ]"), qPrintable(load.join('\n')));
    QCOMPARE(main.URLC.Text(), m_server.url(finalPath).toString());
    // The first progress event made the browser status window, hidden.
    QVERIFY(b.t.runtime().forms().isLoaded<BrowserStatusFRM>());
    QVERIFY(!form<BrowserStatusFRM>().Visible());
    QCOMPARE(form<BrowserStatusFRM>().PercentageLoaded.Caption(), QStringLiteral("Loading -1  of  0"));
}

void TestBrowser::slowPageReportsProgressOverTime()
{
    Browser b(m_server.url("/slow").toString());
    b.open();
    QVERIFY(b.waitForDone());
    QList<int> values = progressValues(b.captions);
    QCOMPARE(values.last(), -1);
    values.removeLast();
    QCOMPARE(values.first(), 0);
    QCOMPARE(values.last(), 10000);
    QVERIFY(std::is_sorted(values.begin(), values.end()));
    QVERIFY2(std::any_of(values.begin(), values.end(), [](int v) { return v > 0 && v < 10000; }),
             qPrintable(b.captions.join('\n')));
}

void TestBrowser::popUpGetsItsWindow()
{
    Browser b(m_server.url("/popup").toString());
    MainFRM& main = b.open();
    QVERIFY(b.waitForDone());
    QWebEngineView* popup = nullptr;
    QVERIFY(QTest::qWaitFor([&] {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w != main.widget() && w->isVisible())
                if (auto* view = w->findChild<QWebEngineView*>(); view && view->title() == QLatin1String("Titled Page"))
                    popup = view;
        return popup != nullptr;
    }, 20000));
    QCOMPARE(main.NewWindowFlag, std::int16_t(-1)); // BP unchecked: the flag is true, and nothing reads it
    // Asked for a place above and left of the screen, it still opens whole on it.
    const QRect screen = popup->window()->screen()->availableGeometry();
    QTRY_VERIFY(screen.contains(popup->window()->frameGeometry()));
    popup->window()->close();
}

void TestBrowser::logInPromptAndDownload()
{
    Browser b(QStringLiteral("about:blank"));
    QStringList sites;
    b.t.dialogs->loginAnswer = [&](const QString& site, QString& user, QString& password) {
        sites << site;
        user = QStringLiteral("user");
        password = QStringLiteral("secret");
        return true;
    };
    QTemporaryDir downloads;
    b.t.dialogs->fileAnswer = [&](const FileDialogRequest& r) {
        return r.save ? downloads.filePath(r.fileName) : QString();
    };
    MainFRM& main = b.open();
    QVERIFY(b.waitForDone());
    const qsizetype from = b.captions.size();
    main.BrowserWindow.Navigate(m_server.url("/private").toString());
    QVERIFY(b.waitForDone(from));
    QCOMPARE(sites, QStringList{"127.0.0.1 - Glidepath Test"});
    QTRY_COMPARE(main.BrowserWindow.LocationName(), QStringLiteral("Private"));

    main.BrowserWindow.Navigate(m_server.url("/file.bin").toString());
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(downloads.filePath("file.bin")).size() == 100000, 20000);
}

void TestBrowser::backWithNoHistoryStillClicks()
{
    Browser b(QStringLiteral("about:blank"));
    MainFRM& main = b.openShown();
    b.sounds.clear();
    input::click(main.Back);
    input::click(main.ForwardF);
    QVERIFY(b.t.untrappedErrors.isEmpty());
    QCOMPARE(b.sounds.count(kThemes + "/Default/Click.WAV"), 2);
}

void TestBrowser::pressedAndReleasedBitmaps()
{
    QTemporaryDir theme;
    Browser b(QStringLiteral("about:blank"), themeWithout(theme, QStringLiteral("StopDOWN.BMP")));
    MainFRM& main = b.openShown();
    const QImage up = main.Go.Picture().toImage();
    QTest::mousePress(main.Go.widget(), Qt::RightButton); // every mouse button presses it
    QCOMPARE(main.Go.Picture().toImage(), QImage(theme.filePath("GoDOWN.BMP")).convertToFormat(up.format()));
    QTest::mouseRelease(main.Go.widget(), Qt::RightButton);
    QCOMPARE(main.Go.Picture().toImage(), up);
    QVERIFY(b.t.untrappedErrors.isEmpty());
    QTest::mousePress(main.StopS.widget(), Qt::LeftButton);
    QCOMPARE(b.t.untrappedErrors, QList<int>{ErrFileNotFound});
}

void TestBrowser::resizeRule_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("addressWidth");
    QTest::addColumn<int>("paneHeight");
    QTest::addColumn<QString>("sound");
    QTest::newRow("normal 5000 by 4000") << 0 << 5000 << 4000 << 4625 << 2100 << "";
    QTest::newRow("too narrow keeps the old sizes") << 0 << 300 << 1000 << -1 << -1 << "";
    QTest::newRow("minimised") << 1 << 0 << 0 << -1 << -1 << "/Art/CloseWin.WAV";
    QTest::newRow("maximised") << 2 << 0 << 0 << 0 << 0 << "/Art/OpenWin.WAV";
}

void TestBrowser::resizeRule()
{
    QFETCH(int, state);
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, addressWidth);
    QFETCH(int, paneHeight);
    QFETCH(QString, sound);
    Browser b(QStringLiteral("about:blank"));
    MainFRM& main = b.open();
    const int oldAddress = main.URLC.Width();
    const int oldPane = main.BrowserWindow.Height();
    b.sounds.clear();
    if (width) {
        main.setWidth(width);
        main.setHeight(height);
    }
    main.setWindowState(state);
    QTRY_COMPARE(main.WindowState(), state);
    const int expectAddress = addressWidth > 0 ? addressWidth : addressWidth == 0 ? main.Width() - 375 : oldAddress;
    const int expectPane = paneHeight > 0 ? paneHeight : paneHeight == 0 ? main.Height() - 1900 : oldPane;
    QCOMPARE(main.URLC.Width(), expectAddress);
    QCOMPARE(main.BrowserWindow.Width(), expectAddress);
    QCOMPARE(main.BrowserWindow.Height(), expectPane);
    QCOMPARE(main.BrowserWindow.Left(), 120);
    QCOMPARE(main.BrowserWindow.Top(), 960);
    QCOMPARE(main.MainFBackGroundImage.Width(), main.Width());
    if (sound.isEmpty())
        QVERIFY(!b.sounds.contains(AppPath() + "/Art/OpenWin.WAV") && !b.sounds.contains(AppPath() + "/Art/CloseWin.WAV"));
    else
        QVERIFY(b.sounds.contains(AppPath() + sound));
    main.setWindowState(vbNormal);
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

void TestBrowser::shutdownPaths()
{
    QFETCH(int, path);
    QFETCH(int, state);
    QFETCH(int, stateAtEnd);
    Browser b(QStringLiteral("about:blank"));
    MainFRM& main = b.open();
    main.setWindowState(state);
    int stateWhenEnded = -1;
    b.t.runtime().setEndHook([&] {
        ++b.t.ends;
        stateWhenEnded = main.WindowState();
    });
    b.sounds.clear();
    // The terminate handler is reached directly: the object is not destroyed in a test.
    struct Terminating : MainFRM {
        using MainFRM::Form_Terminate;
    };
    switch (path) {
    case 0: main.ExitMNU.action()->trigger(); break;
    case 1: main.widget()->close(); break;
    default: runHandler([&] { static_cast<Terminating&>(main).Form_Terminate(); }); break;
    }
    QCOMPARE(b.t.ends, 1);
    QCOMPARE(b.sounds.value(0), kThemes + "/Default/CloseWIN.WAV");
    QCOMPARE(stateWhenEnded, stateAtEnd);
}

void TestBrowser::browserStatusValues()
{
    Browser b(m_server.url("/titled").toString());
    MainFRM& main = b.open();
    QVERIFY(b.waitForDone());
    main.BrowserStatusMNU.action()->trigger();
    BrowserStatusFRM& status = form<BrowserStatusFRM>();
    QVERIFY(status.Visible());
    QCOMPARE(status.Info(3).Caption(), QStringLiteral("Height (Pixles):"));
    main.setWidth(12375); // a pane 12000 twips (800 pixels) wide
    main.setHeight(8000);
    QTRY_COMPARE(status.WidthQ.Caption(), QStringLiteral("12000"));
    QTRY_COMPARE(status.HeightQ.Caption(), QStringLiteral("6100"));
    QCOMPARE(status.LocationURLL.Caption(), m_server.url("/titled").toString());
    QCOMPARE(status.LocationName.Caption(), QStringLiteral("Titled Page"));
    QCOMPARE(status.WindowStateLBL.Caption(), QStringLiteral("Normal"));
    main.setWindowState(vbMinimized);
    QTRY_COMPARE(status.WindowStateLBL.Caption(), QStringLiteral("Minimized"));
    QCOMPARE(status.WidthQ.Caption(), QStringLiteral("12000"));
    main.setWindowState(vbNormal);
    QVERIFY(b.t.untrappedErrors.isEmpty());
}

void TestBrowser::homePageEditor()
{
    Browser b(m_server.url("/titled").toString());
    MainFRM& main = b.open();
    QVERIFY(b.waitForDone());
    main.EditHomePageMNU.action()->trigger();
    HomePageFRM& editor = form<HomePageFRM>();
    QCOMPARE(editor.Data.Text(), m_server.url("/titled").toString()); // the page being viewed
    editor.Data.setText(QStringLiteral("example.org"));
    input::key(editor.Data, Qt::Key_Return);
    QVERIFY(!editor.Visible());
    QCOMPARE(b.t.read("HomePage.TXT"), QByteArray("example.org\r\n"));

    editor.Show();
    editor.Data.setText(QStringLiteral("abandoned"));
    input::click(editor.Cncl);
    QCOMPARE(b.t.read("HomePage.TXT"), QByteArray("example.org\r\n"));
    main.EditHomePageMNU.action()->trigger();
    QCOMPARE(editor.Data.Text(), QStringLiteral("abandoned")); // hidden, not unloaded

    // Read back, the CR LF comes with the address.
    LoadTextFile(main.URLCMirror, AppPath() + "/HomePage.TXT");
    QCOMPARE(main.URLCMirror.Text(), QStringLiteral("example.org\r\n"));
}

void TestBrowser::themeSelectorOkayAndCancel()
{
    Browser b(QStringLiteral("about:blank"));
    MainFRM& main = b.open();
    ThemeSelector& selector = form<ThemeSelector>();
    const QByteArray before = b.t.read("ThemeDir.INI");

    selector.Dir.setPath(kThemes + "/Midnight"); // browsing changes the live directory at once
    QCOMPARE(ThemeDir(), kThemes + "/Midnight");
    input::click(selector.CancelCMD);
    QCOMPARE(b.t.read("ThemeDir.INI"), before);
    QCOMPARE(ThemeDir(), kThemes + "/Midnight");

    selector.Show();
    input::click(selector.OkayCMD);
    QCOMPARE(b.t.read("ThemeDir.INI"), "[Theme Directory]\r\nDIR=" + (kThemes + "/Midnight").toLocal8Bit() + "\r\n");
    QVERIFY(!selector.Visible());
    const QImage midnightGo = QImage(kThemes + "/Midnight/GoUP.BMP");
    QCOMPARE(main.Go.Picture().toImage(), midnightGo.convertToFormat(main.Go.Picture().toImage().format()));
    QCOMPARE(main.MainFBackGroundImage.Picture().size(), QImage(kThemes + "/Midnight/Main.BMP").size());
    QCOMPARE(form<IntroFRM>().Player.FileName(), kThemes + "/Midnight/Intro.MP3");
    QVERIFY(form<IntroFRM>().Player.AutoStart());
}

void TestBrowser::introSizesAndColours()
{
    QTemporaryDir theme;
    themeWithout(theme, QStringLiteral("Intro.BMP"));
    QImage picture(400, 130, QImage::Format_RGB32); // 6000 by 1950 twips
    picture.fill(Qt::red);
    QVERIFY(picture.save(theme.filePath("Intro.BMP"), "BMP"));
    Browser b(QStringLiteral("about:blank"), theme.path());
    b.t.write("ForeC.INI", "2");
    IntroFRM& intro = form<IntroFRM>();
    QCOMPARE(intro.Width(), 6480);
    QCOMPARE(intro.Height(), 2430);
    QCOMPARE(intro.ClickAnywhereToEnter.Width(), 6480);
    QCOMPARE(intro.ImageOne.Height(), 2430);
    QCOMPARE(intro.IntroFormBorder.Width(), 6480);
    QCOMPARE(intro.ClickAnywhereToEnter.ForeColor(), vbBlack);
    QCOMPARE(intro.BackColor(), vbWhite);
    QCOMPARE(intro.IntroFormBorder.BorderColor(), vbWhite);
    QVERIFY(intro.widget()->windowFlags() & Qt::WindowStaysOnTopHint);
    QCOMPARE(intro.Player.FileName(), theme.path() + "/Intro.MP3");
}

void TestBrowser::firstStartAsksForATheme()
{
    TestRuntime t; // no ThemeDir.INI
    IntroFRM& intro = form<IntroFRM>();
    QCOMPARE(t.dialogs->messageBoxes, QStringList{"Please Select a Theme Directory."});
    ThemeSelector& selector = form<ThemeSelector>();
    QVERIFY(selector.Visible());
    QVERIFY(!selector.CancelCMD.Enabled());
    QCOMPARE(selector.Dir.Path(), QDir(AppPath()).absolutePath()); // the program directory proposed
    QVERIFY(!intro.Visible());
    QVERIFY(t.untrappedErrors.isEmpty()); // the missing pictures failed quietly
    selector.widget()->close(); // closing cannot get past the choice: it stays
    QVERIFY(t.runtime().forms().isLoaded<ThemeSelector>());
}

GLIDEPATH_WEB_TEST_MAIN(TestBrowser)
#include "tst_browser.moc"
