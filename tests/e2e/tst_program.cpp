// The real program as a person meets it: the glidepath executable started from a copy of the
// program directory on a screen with a window manager, driven with the X server's keyboard and
// mouse, against pages on 127.0.0.1. Few and strong; the in-process tests hold the detail.

#include "e2e/real_program.h"
#include "support/http_server.h"

#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

namespace {

const QString kDone = QStringLiteral("Glidepath - [Done Loading Document]");
const QString kMainTitle = QStringLiteral("^Glidepath - \\[");
constexpr double kTwipsPerPixel = 15; // the test screen runs at 96 dpi


// The program with the Default theme and a loopback page as its home page.
void prepare(RealProgram& program, const HttpServer& server)
{
    program.useTheme();
    program.write(QStringLiteral("HomePage.TXT"), server.url(QStringLiteral("/titled")).toString().toLatin1() + "\r\n");
}

// A click into the main window's address box (120, 550 twips below the menu bar), then all
// of its text selected, so that what is typed next replaces it.
void intoAddressBox(RealProgram& program, unsigned long main)
{
    const int menuBar = program.inner(main).height() - 7095 / int(kTwipsPerPixel);
    program.click(main, QPoint(40, menuBar + int((550 + 150) / kTwipsPerPixel)));
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
    program.key(QStringLiteral("Down"));
    for (const QString& key : keys)
        program.key(key);
}

// Answers a file dialog that waits for a person: the name typed, then Enter.
void answerFileDialog(RealProgram& program, const QString& path)
{
    const unsigned long dialog = program.waitForWindowLike(QStringLiteral("^(Open|Save As|Save)$|^$"), 10000, QSize(300, 200));
    if (dialog)
        program.activate(dialog);
    program.key(QStringLiteral("ctrl+a"));
    program.type(path);
    program.key(QStringLiteral("Return"));
}

bool wholeOnScreen(RealProgram& program, unsigned long window)
{
    return program.screen().contains(program.frame(window));
}

} // namespace

class TestProgram : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void firstStartAsksForATheme();
    void typedAddressAndEnter();
    void accessPhraseStopsTheBrowser();
    void resizeFollowsTheOuterSizeThenExit();
    void savePageEmptiesTheChosenFile();
    void openPageShowsALocalFile();
    void favouritesSurviveARestart();
    void goIdleAndClickBack();
    void printSetUpThenPrintToAPdfFile();
    void driveExplorerFollowsItsWindow();
    void sourceViewerFetchesAtOnceThenEditorAndPreview();
    void longLineEditedThenPreviewed();

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
    // The message stands above the selector, with the keyboard, and waits for its OK.
    const unsigned long message = program.waitForActiveOtherThan(selector);
    QVERIFY(message);
    QVERIFY(wholeOnScreen(program, message));
    program.activate(message);
    program.key(QStringLiteral("Return"));
    QVERIFY(program.waitForGone(message));

    // The theme's folder typed into the path box under the directory list.
    program.click(selector, QPoint(int((120 + 6255 / 2) / kTwipsPerPixel), int((4440 + 285 / 2) / kTwipsPerPixel)));
    program.key(QStringLiteral("ctrl+a"));
    program.type(program.path(QStringLiteral("Default")));
    // Okay: 2640, 4800, 3735 x 375 twips in the selector.
    program.click(selector, QPoint(int((2640 + 3735 / 2) / kTwipsPerPixel), int((4800 + 375 / 2) / kTwipsPerPixel)));

    QVERIFY(program.waitForCaption(kDone));
    QVERIFY(program.read(QStringLiteral("ThemeDir.INI")).contains(program.path(QStringLiteral("Default")).toLocal8Bit()));
    QVERIFY(m_server.paths().contains(QStringLiteral("/titled")));
    const unsigned long main = program.waitForWindowLike(kMainTitle);
    QVERIFY(main);
    QVERIFY(wholeOnScreen(program, main));
}

void TestProgram::typedAddressAndEnter()
{
    RealProgram program;
    prepare(program, m_server);
    const unsigned long main = program.openMainWindow();
    QVERIFY(main);
    // One window, made once: the one that showed the first caption is the one still there.
    QTest::qWait(1000);
    QCOMPARE(program.waitForWindowLike(kMainTitle), main);
    QVERIFY(wholeOnScreen(program, main));

    intoAddressBox(program, main);
    const QString typed = m_server.typed(QStringLiteral("/typed-by-hand"));
    program.type(typed);
    const int before = m_server.paths().size();
    program.key(QStringLiteral("Return"));
    QVERIFY(program.waitForCaption(QStringLiteral("Glidepath - [Going to: ") + typed + QLatin1Char(']')));
    QTRY_COMPARE_WITH_TIMEOUT(m_server.paths().mid(before), QStringList{"/typed-by-hand"}, 10000);
}

void TestProgram::accessPhraseStopsTheBrowser()
{
    RealProgram program;
    prepare(program, m_server);
    const unsigned long main = program.openMainWindow();
    QVERIFY(main);
    intoAddressBox(program, main);
    program.type(QStringLiteral("Crane at Dusk"));
    // The phrase's last letter alone does nothing; the key after it stops the browser, so the
    // navigation Enter starts for the phrase never reaches a page.
    const qsizetype from = program.captions().size();
    program.key(QStringLiteral("Return"));
    QVERIFY(program.waitForCaption(QStringLiteral("Glidepath - [Going to: Crane at Dusk]")));
    QTest::qWait(2000);
    QVERIFY(!program.captions().mid(from).contains(kDone));
    QVERIFY(program.running());
}

void TestProgram::resizeFollowsTheOuterSizeThenExit()
{
    RealProgram program;
    prepare(program, m_server);
    const unsigned long main = program.openMainWindow();
    QVERIFY(main);

    // The first layout already counts the frame: the pane ends 255 twips short of the outer
    // width, and 1900 twips above the outer height.
    // The window manager may still be settling the window: its size is read again each time.
    auto expectLayout = [&] {
        return QTest::qWaitFor([&] {
            const QRect outer = program.frame(main);
            const int width = int(outer.width() * kTwipsPerPixel);
            const int height = int(outer.height() * kTwipsPerPixel);
            return program.lastSize(QStringLiteral("MainFRM.URLC"), QStringLiteral("width")) == width - 375 &&
                   program.lastSize(QStringLiteral("MainFRM.BrowserWindow"), QStringLiteral("width")) == width - 375 &&
                   program.lastSize(QStringLiteral("MainFRM.BrowserWindow"), QStringLiteral("height")) == height - 1900;
        }, 10000);
    };
    QVERIFY(expectLayout());
    // The designed client area lies below the menu bar.
    QCOMPARE(program.inner(main).width(), 9975 / int(kTwipsPerPixel));
    QVERIFY(program.inner(main).height() > 7095 / int(kTwipsPerPixel));

    program.resize(main, QSize(800, 600));
    QTRY_COMPARE(program.inner(main).size(), QSize(800, 600));
    QVERIFY(expectLayout());

    // Maximised by a double-click on its title bar: the layout follows the frame it has then.
    const QRect before = program.frame(main);
    program.doubleClickScreen(QPoint(before.center().x(), before.top() + (program.inner(main).top() - before.top()) / 2));
    QTRY_VERIFY(program.inner(main).width() > before.width());
    QTest::qWait(300);
    QVERIFY(expectLayout());

    // File, then its last entry, Exit: the program ends at once.
    program.click(main, QPoint(20, 8));
    program.key(QStringLiteral("Up"));
    program.key(QStringLiteral("Return"));
    QVERIFY(program.waitForExit());
    QCOMPARE(program.exitCode(), 0);
}

void TestProgram::savePageEmptiesTheChosenFile()
{
    RealProgram program;
    prepare(program, m_server);
    program.write(QStringLiteral("page.htm"), "what it held before");
    const unsigned long main = program.openMainWindow();
    QVERIFY(main);
    // File, Page (the fourth entry), Save Page.
    chooseFromMenu(program, main, 0, {"Down", "Down", "Right", "Down", "Return"});
    answerFileDialog(program, program.path(QStringLiteral("page.htm")));
    // The dialog asks before it replaces a file: Yes.
    QTest::qWait(500);
    program.key(QStringLiteral("alt+y"));
    QTRY_COMPARE_WITH_TIMEOUT(program.read(QStringLiteral("page.htm")), QByteArray(), 10000);
    QVERIFY(QFileInfo::exists(program.path(QStringLiteral("page.htm"))));
    QVERIFY(program.running());
}

void TestProgram::openPageShowsALocalFile()
{
    RealProgram program;
    prepare(program, m_server);
    program.write(QStringLiteral("local.html"), "<title>On Disk</title><p>here</p>");
    const unsigned long main = program.openMainWindow();
    QVERIFY(main);
    chooseFromMenu(program, main, 0, {"Down", "Down", "Right", "Return"}); // File, Page, Open Page
    answerFileDialog(program, program.path(QStringLiteral("local.html")));
    QVERIFY(program.waitForCaption(QStringLiteral("Glidepath - [ On Disk ] - [ Loading -1  of  0 ]")));
}

void TestProgram::favouritesSurviveARestart()
{
    for (const QString& typed : {QStringLiteral("http://a.example/x,y"), QStringLiteral("z")}) {
        RealProgram program;
        prepare(program, m_server);
        if (typed == QLatin1String("z"))
            program.write(QStringLiteral("FavPlaces.INI"), "http://a.example/x,y\r\n"); // as the first run left it
        const unsigned long main = program.openMainWindow();
        QVERIFY(main);
        chooseFromMenu(program, main, 0, {"Return"}); // File, Favorite Places
        const unsigned long favourites = program.waitForWindow(QStringLiteral("Favorite Places"));
        QVERIFY(favourites);
        QVERIFY(wholeOnScreen(program, favourites));
        // Into the address box (120, 600 twips), replacing the page's address it offers.
        program.click(favourites, QPoint(int(2880 / kTwipsPerPixel), int(740 / kTwipsPerPixel)));
        program.key(QStringLiteral("ctrl+a"));
        program.type(typed);
        program.key(QStringLiteral("Return"));
        if (typed == QLatin1String("z")) {
            // The comma came back as two entries, and the list was written whole.
            QTRY_COMPARE(program.read(QStringLiteral("FavPlaces.INI")), QByteArray("http://a.example/x\r\ny\r\nz\r\n"));
        } else {
            QTRY_COMPARE(program.read(QStringLiteral("FavPlaces.INI")), QByteArray("http://a.example/x,y\r\n"));
        }
    }
}

void TestProgram::goIdleAndClickBack()
{
    RealProgram program;
    prepare(program, m_server);
    const unsigned long main = program.openMainWindow();
    QVERIFY(main);
    chooseFromMenu(program, main, 5, {"Down", "Down", "Return"}); // Misc., Go Idle
    QVERIFY(program.waitForGone(main));
    const unsigned long idle = program.waitForWindow(QStringLiteral("IdleFRM"));
    QVERIFY(idle);
    QTRY_VERIFY(program.inner(idle).width() > 1000); // maximised
    QTest::qWait(500);
    program.clickScreen(program.inner(idle).center());
    QVERIFY(program.waitForGone(idle));
    QCOMPARE(program.waitForWindowLike(kMainTitle), main);
}

void TestProgram::printSetUpThenPrintToAPdfFile()
{
    RealProgram program;
    prepare(program, m_server);
    const unsigned long main = program.openMainWindow();
    QVERIFY(main);
    // File, Printer (after Favorite Places, Edit Home Page and Page), Print Setup.
    chooseFromMenu(program, main, 0, {"Down", "Down", "Down", "Right", "Down", "Return"});
    const unsigned long setUp = program.waitForWindow(QStringLiteral("Page Setup"));
    QVERIFY(setUp);
    QVERIFY(wholeOnScreen(program, setUp));
    // The paper size box has the keyboard: "l" picks Ledger, 17 by 11 inches; Enter is OK.
    program.key(QStringLiteral("l"));
    program.key(QStringLiteral("Return"));
    QVERIFY(program.waitForGone(setUp));

    // File, Printer, Print: the print dialog, its output file typed (Alt+F), Enter prints.
    chooseFromMenu(program, main, 0, {"Down", "Down", "Down", "Right", "Return"});
    const unsigned long print = program.waitForWindow(QStringLiteral("Print"));
    QVERIFY(print);
    QVERIFY(wholeOnScreen(program, print));
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
    QVERIFY2(poppler(QStringLiteral("pdfinfo"), pdf).contains(QLatin1String("1224 x 792 pts")),
             qPrintable(poppler(QStringLiteral("pdfinfo"), pdf)));
    QVERIFY(program.running());
}

void TestProgram::driveExplorerFollowsItsWindow()
{
    RealProgram program;
    prepare(program, m_server);
    const unsigned long main = program.openMainWindow();
    QVERIFY(main);
    chooseFromMenu(program, main, 4, {"Down", "Return"}); // Tools, Drive Explorer
    const unsigned long explorer = program.waitForWindow(QStringLiteral("Drive Explorer"));
    QVERIFY(explorer);
    QVERIFY(wholeOnScreen(program, explorer));
    // Resized by the window manager: the pane and the drive list follow the outer size, the
    // pane below the list (315 twips high).
    for (const QSize inner : {QSize(700, 500), QSize(420, 300)}) {
        program.resize(explorer, inner);
        QTRY_COMPARE(program.inner(explorer).size(), inner);
        const QRect outer = program.frame(explorer);
        const int width = int(outer.width() * kTwipsPerPixel);
        const int height = int(outer.height() * kTwipsPerPixel);
        QTRY_COMPARE(program.lastSize(QStringLiteral("DriveExplorerFRM.DriveExplorerWindow"), QStringLiteral("width")), width - 130);
        QTRY_COMPARE(program.lastSize(QStringLiteral("DriveExplorerFRM.DriveOne"), QStringLiteral("width")), width - 130);
        QTRY_COMPARE(program.lastSize(QStringLiteral("DriveExplorerFRM.DriveExplorerWindow"), QStringLiteral("height")),
                     height - 315 - 520);
    }
    QVERIFY(program.running());
}

// The HTML viewer opened from the menu on the page shown, then Open In Editor (6240, 120,
// 1695 x 285 twips): the editor's window, raised above the viewer.
unsigned long sourceInEditor(RealProgram& program, unsigned long main)
{
    chooseFromMenu(program, main, 4, {"Up", "Right", "Down", "Return"}); // Tools, HTML, HTML Viewer
    const unsigned long viewer = program.waitForWindow(QStringLiteral("HTML Viewer"));
    if (!viewer)
        return 0;
    QTest::qWait(1500); // the status pop-up lingers a moment after the fetch
    program.click(viewer, QPoint(int((6240 + 1695 / 2) / kTwipsPerPixel), int((120 + 285 / 2) / kTwipsPerPixel)));
    const unsigned long editor = program.waitForWindow(QStringLiteral("HTML Editor"));
    if (!editor)
        return 0;
    QTest::qWait(500); // placed by the window manager
    program.activate(editor); // the viewer, clicked last, may stand above it
    return editor;
}

// The editor's Preview button (6480, 120, 1575 x 255 twips).
void preview(RealProgram& program, unsigned long editor)
{
    program.click(editor, QPoint(int((6480 + 1575 / 2) / kTwipsPerPixel), int((120 + 255 / 2) / kTwipsPerPixel)));
}

void TestProgram::sourceViewerFetchesAtOnceThenEditorAndPreview()
{
    RealProgram program;
    prepare(program, m_server);
    const unsigned long main = program.openMainWindow();
    QVERIFY(main);
    const int fetched = int(m_server.paths().count(QStringLiteral("/titled")));
    const unsigned long editor = sourceInEditor(program, main);
    // The page's source was fetched at once, without a click.
    QCOMPARE(int(m_server.paths().count(QStringLiteral("/titled"))), fetched + 1);
    QVERIFY(editor);
    preview(program, editor);
    QVERIFY(program.waitForWindow(QStringLiteral("Preview")));
    QVERIFY(program.read(QStringLiteral("Preview.html")).contains("<title>Titled Page</title>"));
}

// A page of 20,000 characters on one line, edited at its end: the preview holds the line
// whole, with the typed letter and nothing else added.
void TestProgram::longLineEditedThenPreviewed()
{
    RealProgram program;
    program.useTheme();
    program.write(QStringLiteral("HomePage.TXT"), m_server.url(QStringLiteral("/long")).toString().toLatin1() + "\r\n");
    const unsigned long main = program.openMainWindow();
    QVERIFY(main);
    const unsigned long editor = sourceInEditor(program, main);
    QVERIFY(editor);
    program.click(editor, QPoint(int((120 + 600) / kTwipsPerPixel), int((480 + 600) / kTwipsPerPixel))); // the text
    program.key(QStringLiteral("ctrl+End"));
    program.type(QStringLiteral("!"));
    preview(program, editor);
    QVERIFY(program.waitForWindow(QStringLiteral("Preview")));
    QTRY_COMPARE(program.read(QStringLiteral("Preview.html")), HttpServer::longPage() + "!\r\n");
}

QTEST_GUILESS_MAIN(TestProgram)
#include "tst_program.moc"
