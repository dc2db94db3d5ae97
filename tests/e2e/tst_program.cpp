// The real program as a person meets it: the glidepath executable started from a copy of the
// program directory on a screen with a window manager, driven with the X server's keyboard and
// mouse, against pages on 127.0.0.1. One scenario per window; the in-process tests hold the detail.

#include "e2e/real_program.h"
#include "support/http_server.h"

#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

namespace {

const QString kDone = QStringLiteral("Glidepath - [Done Loading Document]");
const QString kMainTitle = QStringLiteral("^Glidepath - \\[");
constexpr int kTwipsPerPixel = 15; // the test screen runs at 96 dpi

// A point of a window's client area given in twips, in pixels.
QPoint at(int left, int top)
{
    return QPoint(left / kTwipsPerPixel, top / kTwipsPerPixel);
}

// A click into the main window's address box (120, 550 twips below the menu bar), then all of
// its text selected, so that what is typed next replaces it.
void intoAddressBox(RealProgram& program, unsigned long main)
{
    const int menuBar = program.inner(main).height() - 7095 / kTwipsPerPixel;
    program.click(main, QPoint(40, menuBar + (550 + 150) / kTwipsPerPixel));
    program.key(QStringLiteral("ctrl+a"));
}

// A menu command chosen from the keyboard, as a person without a mouse does: Alt highlights the
// menu bar, Right moves along it to the menu-th title (File is 0), Down opens it with its first
// entry highlighted, then the given keys.
void chooseFromMenu(RealProgram& program, unsigned long main, int menu, const QStringList& keys)
{
    program.activate(main);
    program.key(QStringLiteral("alt"));
    for (int i = 0; i < menu; ++i)
        program.key(QStringLiteral("Right"));
    for (const QString& key : QStringList{"Down"} + keys)
        program.key(key);
}

} // namespace

class TestProgram : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void firstStartAsksForATheme();
    void typedAddressThenTheAccessPhrase();
    void resizeFollowsTheOuterSizeThenExit();
    void openPageThenSavePage();
    void favouritesSurviveARestart();
    void goIdleAndClickBack();
    void printSetUpThenPrintToAPdfFile();
    void driveExplorerFollowsItsWindow();
    void sourceViewerThenEditorAndPreview();

private:
    HttpServer m_server;
};

void TestProgram::firstStartAsksForATheme()
{
    RealProgram program;
    program.write(QStringLiteral("HomePage.TXT"), m_server.url(QStringLiteral("/titled")).toString().toLatin1() + "\r\n");
    program.start();
    const unsigned long selector = program.waitForWindow(QStringLiteral("Theme Selector"));
    QVERIFY(selector);
    // The message stands above the selector, with the keyboard and an empty title bar, and
    // waits for its OK.
    const unsigned long message = program.waitForActiveOtherThan(selector);
    QVERIFY(message);
    QVERIFY(program.wholeOnScreen(message));
    QCOMPARE(program.title(message).trimmed(), QString());
    QVERIFY(program.waitForMoment(QStringLiteral("message Please Select a Theme Directory.")));
    program.activate(message);
    program.key(QStringLiteral("Return"));
    QVERIFY(program.waitForGone(message));

    // Cancel is not offered, so closing the selector gets past nothing: it stays and takes the
    // theme's folder, typed into the path box under the directory list, then Okay.
    program.activate(selector);
    program.key(QStringLiteral("alt+F4"));
    program.click(selector, at(120 + 6255 / 2, 4440 + 285 / 2));
    program.key(QStringLiteral("ctrl+a"));
    program.type(program.path(QStringLiteral("Default")));
    program.click(selector, at(2640 + 3735 / 2, 4800 + 375 / 2));

    QVERIFY(program.waitForCaption(kDone));
    QVERIFY(program.read(QStringLiteral("ThemeDir.INI")).contains(program.path(QStringLiteral("Default")).toLocal8Bit()));
    QVERIFY(m_server.paths().contains(QStringLiteral("/titled")));
    const unsigned long main = program.waitForWindowLike(kMainTitle);
    QVERIFY(main);
    QVERIFY(program.wholeOnScreen(main));
}

void TestProgram::typedAddressThenTheAccessPhrase()
{
    RealProgram program;
    program.useTheme();
    program.write(QStringLiteral("HomePage.TXT"), m_server.url(QStringLiteral("/titled")).toString().toLatin1() + "\r\n");
    const unsigned long main = program.openMainWindow(false);
    QVERIFY(main);
    // One window, made once: the one that showed the first caption is the one still there.
    QVERIFY(program.waitForCaption(kDone));
    QCOMPARE(program.waitForWindowLike(kMainTitle), main);
    QVERIFY(program.wholeOnScreen(main));

    intoAddressBox(program, main);
    const QString typed = m_server.typed(QStringLiteral("/typed-by-hand"));
    program.type(typed);
    const qsizetype requests = m_server.paths().size();
    program.key(QStringLiteral("Return"));
    QVERIFY(program.waitForCaption(QStringLiteral("Glidepath - [Going to: ") + typed + QLatin1Char(']')));
    QTRY_COMPARE_WITH_TIMEOUT(m_server.paths().mid(requests).count(QStringLiteral("/typed-by-hand")), 1, 10000);
    // F5 with the page holding the keyboard (a click into it) loads it again.
    program.click(main, QPoint(300, program.inner(main).height() - 100));
    program.key(QStringLiteral("F5"));
    QTRY_COMPARE_WITH_TIMEOUT(m_server.paths().mid(requests).count(QStringLiteral("/typed-by-hand")), 2, 10000);

    // The access phrase with other capitals opens nothing; the phrase itself opens the hidden
    // page on the key after its last letter (Enter here, whose Go comes first), stops the
    // browser, and the intro's music plays again.
    QTRY_VERIFY_WITH_TIMEOUT(!program.playing().contains(QStringLiteral("Glidepath Default")), 15000);
    for (const QString& phrase : {QStringLiteral("crane at dusk"), QStringLiteral("Crane at Dusk")}) {
        intoAddressBox(program, main);
        program.type(phrase);
        program.key(QStringLiteral("Return"));
        QVERIFY(program.waitForCaption("Glidepath - [Going to: " + phrase + "]"));
    }
    const unsigned long page = program.waitForWindow(QStringLiteral("Secret Place!"));
    QVERIFY(page);
    QStringList order = program.moments().filter(QRegularExpression("^(loading SecretPlace|caption MainFRM Glidepath - \\[Going to: .rane at .usk\\])$"));
    QCOMPARE(order, (QStringList{"caption MainFRM Glidepath - [Going to: crane at dusk]",
                                 "caption MainFRM Glidepath - [Going to: Crane at Dusk]", "loading SecretPlace"}));
    QTRY_VERIFY_WITH_TIMEOUT(program.playing().contains(QStringLiteral("Glidepath Default")), 5000);
    const QStringList afterPhrase = program.captions().mid(program.captions().lastIndexOf("Glidepath - [Going to: Crane at Dusk]"));
    QVERIFY2(!afterPhrase.contains(kDone), qPrintable(afterPhrase.join('\n')));
    QVERIFY(program.running());
}

void TestProgram::resizeFollowsTheOuterSizeThenExit()
{
    RealProgram program;
    const unsigned long main = program.openOn(m_server);
    QVERIFY(main);
    // The first layout already counts the frame: the pane ends 255 twips short of the outer
    // width, and 1900 twips above the outer height. The window manager may still be settling
    // the window: its size is read again each time.
    auto expectLayout = [&] {
        return QTest::qWaitFor([&] {
            const QRect outer = program.frame(main);
            const int width = outer.width() * kTwipsPerPixel;
            const int height = outer.height() * kTwipsPerPixel;
            return program.lastSize(QStringLiteral("MainFRM.URLC"), QStringLiteral("width")) == width - 375 &&
                   program.lastSize(QStringLiteral("MainFRM.BrowserWindow"), QStringLiteral("width")) == width - 375 &&
                   program.lastSize(QStringLiteral("MainFRM.BrowserWindow"), QStringLiteral("height")) == height - 1900;
        }, 10000);
    };
    QVERIFY(expectLayout());
    // The designed client area lies below the menu bar.
    QCOMPARE(program.inner(main).width(), 9975 / kTwipsPerPixel);
    QVERIFY(program.inner(main).height() > 7095 / kTwipsPerPixel);

    program.resize(main, QSize(800, 600));
    QTRY_COMPARE(program.inner(main).size(), QSize(800, 600));
    QVERIFY(expectLayout());

    // Maximised by a double-click on its title bar: the layout follows the frame it has then.
    const QRect before = program.frame(main);
    program.doubleClickScreen(QPoint(before.center().x(), before.top() + (program.inner(main).top() - before.top()) / 2));
    QTRY_VERIFY(program.inner(main).width() > before.width());
    QVERIFY(expectLayout());

    // File, then its last entry, Exit: the program ends at once.
    program.click(main, QPoint(20, 8));
    program.key(QStringLiteral("Up"));
    program.key(QStringLiteral("Return"));
    QVERIFY(program.waitForExit());
    QCOMPARE(program.exitCode(), 0);
}

void TestProgram::openPageThenSavePage()
{
    RealProgram program;
    program.write(QStringLiteral("local.html"), "<title>On Disk</title><p>here</p>");
    const unsigned long main = program.openOn(m_server);
    QVERIFY(main);
    chooseFromMenu(program, main, 0, {"Down", "Down", "Right", "Return"}); // File, Page, Open Page
    program.answerFileDialog(program.path(QStringLiteral("local.html")));
    QVERIFY(program.waitForCaption(QStringLiteral("Glidepath - [ On Disk ] - [ Loading -1  of  0 ]")));

    // File, Page, Save Page over a file that holds something: the dialog asks nothing (the page
    // asks for no such question), and the file is left empty.
    program.write(QStringLiteral("page.htm"), "what it held before");
    chooseFromMenu(program, main, 0, {"Down", "Down", "Right", "Down", "Return"});
    QVERIFY(program.waitForGone(program.answerFileDialog(program.path(QStringLiteral("page.htm")))));
    QTRY_COMPARE_WITH_TIMEOUT(program.read(QStringLiteral("page.htm")), QByteArray(), 10000);
    QVERIFY(QFileInfo::exists(program.path(QStringLiteral("page.htm"))));
    QVERIFY(program.running());
}

void TestProgram::favouritesSurviveARestart()
{
    for (const QString& typed : {QStringLiteral("http://a.example/x,y"), QStringLiteral("z")}) {
        RealProgram program;
        if (typed == QLatin1String("z"))
            program.write(QStringLiteral("FavPlaces.INI"), "http://a.example/x,y\r\n"); // as the first run left it
        const unsigned long main = program.openOn(m_server);
        QVERIFY(main);
        chooseFromMenu(program, main, 0, {"Return"}); // File, Favorite Places
        const unsigned long favourites = program.waitForWindow(QStringLiteral("Favorite Places"));
        QVERIFY(favourites);
        QVERIFY(program.wholeOnScreen(favourites));
        // Into the address box (120, 600 twips), replacing the page's address it offers.
        program.click(favourites, at(2880, 740));
        program.key(QStringLiteral("ctrl+a"));
        program.type(typed);
        program.key(QStringLiteral("Return"));
        // The comma came back as two entries, and the list was written whole.
        QTRY_COMPARE(program.read(QStringLiteral("FavPlaces.INI")),
                     typed == QLatin1String("z") ? QByteArray("http://a.example/x\r\ny\r\nz\r\n") : QByteArray("http://a.example/x,y\r\n"));
    }
}

void TestProgram::goIdleAndClickBack()
{
    RealProgram program;
    const unsigned long main = program.openOn(m_server);
    QVERIFY(main);
    const qsizetype from = program.moments().size();
    chooseFromMenu(program, main, 5, {"Down", "Down", "Return"}); // Misc., Go Idle
    QVERIFY(program.waitForGone(main));
    const unsigned long idle = program.waitForWindow(QStringLiteral("IdleFRM"));
    QVERIFY(idle);
    QTRY_VERIFY(program.inner(idle).width() > 1000); // maximised
    QVERIFY(program.waitForMoment(QStringLiteral("painted IdleFRM"), from));
    program.clickScreen(program.inner(idle).center());
    QVERIFY(program.waitForGone(idle));
    QCOMPARE(program.waitForWindowLike(kMainTitle), main);
}

void TestProgram::printSetUpThenPrintToAPdfFile()
{
    RealProgram program;
    const unsigned long main = program.openOn(m_server);
    QVERIFY(main);
    // File, Printer (after Favorite Places, Edit Home Page and Page), Print Setup.
    chooseFromMenu(program, main, 0, {"Down", "Down", "Down", "Right", "Down", "Return"});
    const unsigned long setUp = program.waitForWindow(QStringLiteral("Page Setup"));
    QVERIFY(setUp);
    QVERIFY(program.wholeOnScreen(setUp));
    // The paper size box has the keyboard: "l" picks Ledger, 17 by 11 inches; Enter is OK.
    program.key(QStringLiteral("l"));
    program.key(QStringLiteral("Return"));
    QVERIFY(program.waitForGone(setUp));

    // File, Printer, Print: the print dialog, its output file typed (Alt+F), Enter prints.
    chooseFromMenu(program, main, 0, {"Down", "Down", "Down", "Right", "Return"});
    const unsigned long print = program.waitForWindow(QStringLiteral("Print"));
    QVERIFY(print);
    QVERIFY(program.wholeOnScreen(print));
    program.activate(print);
    const QString pdf = program.path(QStringLiteral("page.pdf"));
    program.key(QStringLiteral("alt+f"));
    program.key(QStringLiteral("ctrl+a"));
    program.type(pdf);
    program.key(QStringLiteral("Return"));

    // The page as the engine lays it out for print, its text kept, on the paper set up before.
    auto poppler = [](const QString& tool, const QString& file) {
        QProcess p;
        p.start(tool, tool == QLatin1String("pdftotext") ? QStringList{file, QStringLiteral("-")} : QStringList{file});
        p.waitForFinished(20000);
        return QString::fromUtf8(p.readAllStandardOutput());
    };
    QTRY_VERIFY_WITH_TIMEOUT(poppler(QStringLiteral("pdftotext"), pdf).contains(QLatin1String("A page with a title.")), 30000);
    QVERIFY2(poppler(QStringLiteral("pdfinfo"), pdf).contains(QLatin1String("1224 x 792 pts")), qPrintable(poppler(QStringLiteral("pdfinfo"), pdf)));
    QVERIFY(program.running());
}

void TestProgram::driveExplorerFollowsItsWindow()
{
    RealProgram program;
    const unsigned long main = program.openOn(m_server);
    QVERIFY(main);
    chooseFromMenu(program, main, 4, {"Down", "Return"}); // Tools, Drive Explorer
    const unsigned long explorer = program.waitForWindow(QStringLiteral("Drive Explorer"));
    QVERIFY(explorer);
    QVERIFY(program.wholeOnScreen(explorer));
    // Resized by the window manager: the pane and the drive list follow the outer size, the
    // pane below the list (315 twips high).
    for (const QSize inner : {QSize(700, 500), QSize(420, 300)}) {
        program.resize(explorer, inner);
        QTRY_COMPARE(program.inner(explorer).size(), inner);
        const QRect outer = program.frame(explorer);
        const int width = outer.width() * kTwipsPerPixel;
        const int height = outer.height() * kTwipsPerPixel;
        QTRY_COMPARE(program.lastSize(QStringLiteral("DriveExplorerFRM.DriveExplorerWindow"), QStringLiteral("width")), width - 130);
        QTRY_COMPARE(program.lastSize(QStringLiteral("DriveExplorerFRM.DriveOne"), QStringLiteral("width")), width - 130);
        QTRY_COMPARE(program.lastSize(QStringLiteral("DriveExplorerFRM.DriveExplorerWindow"), QStringLiteral("height")), height - 315 - 520);
    }
    QVERIFY(program.running());
}

// The HTML viewer opened from the menu fetches the page shown at once; another page's address
// typed into it with Enter; Open In Editor (6240, 120, 1695 x 285 twips); a letter typed at the
// end of the long line there; Preview (6480, 120, 1575 x 255 twips): the preview holds the
// page of 20,000 characters on one line whole, with the letter and a CR LF added, nothing else.
void TestProgram::sourceViewerThenEditorAndPreview()
{
    RealProgram program;
    const unsigned long main = program.openOn(m_server);
    QVERIFY(main);
    const qsizetype fetched = m_server.paths().count(QStringLiteral("/titled"));
    qsizetype from = program.moments().size();
    // The status pop-up goes once after a fetch, twice after the viewer's load around its fetch.
    auto popUpGone = [&](int times) {
        return QTest::qWaitFor([&] { return program.moments().mid(from).count(QStringLiteral("hidden StatF")) >= times; }, 20000);
    };
    chooseFromMenu(program, main, 4, {"Up", "Right", "Down", "Return"}); // Tools, HTML, HTML Viewer
    const unsigned long viewer = program.waitForWindow(QStringLiteral("HTML Viewer"));
    QVERIFY(viewer);
    QVERIFY(popUpGone(2));
    QCOMPARE(m_server.paths().count(QStringLiteral("/titled")), fetched + 1);
    QVERIFY(program.lastText(QStringLiteral("HTMLViewerFRM.HTML")).contains(QLatin1String("<title>Titled Page</title>")));

    program.click(viewer, at(600 + 1800, 120 + 140)); // the address box
    program.key(QStringLiteral("ctrl+a"));
    program.type(m_server.typed(QStringLiteral("/long")));
    from = program.moments().size();
    program.key(QStringLiteral("Return"));
    QVERIFY(popUpGone(1));
    program.click(viewer, at(6240 + 1695 / 2, 120 + 285 / 2));
    const unsigned long editor = program.waitForWindow(QStringLiteral("HTML Editor"));
    QVERIFY(editor);
    program.activate(editor); // the viewer, clicked last, may stand above it
    program.click(editor, at(120 + 600, 480 + 600)); // the text
    program.key(QStringLiteral("ctrl+End"));
    program.type(QStringLiteral("!"));
    program.click(editor, at(6480 + 1575 / 2, 120 + 255 / 2));
    QVERIFY(program.waitForWindow(QStringLiteral("Preview")));
    QTRY_COMPARE(program.read(QStringLiteral("Preview.html")), HttpServer::longPage() + "!\r\n");
}

QTEST_GUILESS_MAIN(TestProgram)
#include "tst_program.moc"
