// The main window's menus on the real engine against pages on 127.0.0.1: every entry's steps,
// questions and sounds in their order, with the window it opens (its caption, top-most or not,
// and its closing sound), then what the page commands do to the page.

#include "accessories/about.h"
#include "accessories/calculator.h"
#include "accessories/doodle.h"
#include "accessories/mp3_player.h"
#include "accessories/note_pad.h"
#include "accessories/read_me.h"
#include "browser/main_window.h"
#include "companions/browser_status.h"
#include "companions/drive_explorer.h"
#include "companions/favorite_places.h"
#include "companions/home_page.h"
#include "companions/idle_screen.h"
#include "htmltools/editor.h"
#include "htmltools/html_viewer.h"
#include "startup/theme_selector.h"
#include "platform/find_bar.h"
#include "platform/page_properties.h"
#include "support/http_server.h"
#include "support/input.h"
#include "support/program.h"
#include "support/test_main.h"

#include <QApplication>
#include <QClipboard>
#include <QPrinter>
#include <QProcess>
#include <QSignalSpy>
#include <QWebEngineView>

using namespace platform;

// A window a menu entry opens: its name, and the window itself while it is loaded.
struct Target {
    QString name;
    std::function<Form*()> loaded;
};
Q_DECLARE_METATYPE(Target)

namespace {

template <class F>
Target target(const char* name)
{
    return {QString::fromLatin1(name),
            [] { return Runtime::current().forms().isLoaded<F>() ? static_cast<Form*>(&form<F>()) : nullptr; }};
}

PagePropertiesWindow* propertiesWindow()
{
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* p = dynamic_cast<PagePropertiesWindow*>(w); p && p->isVisible())
            return p;
    return nullptr;
}

QString pdfText(const QString& pdf)
{
    QProcess text;
    text.start(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
    return text.waitForFinished(20000) ? QString::fromUtf8(text.readAllStandardOutput()) : QString();
}

} // namespace

class TestMenus : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void entries_data();
    void entries();
    void openAndSavePage();
    void copyAndTextSize();
    void printWithoutPrompting();
    void pageProperties();
    void findOnThisPage();

private:
    // Its own thread: the source viewer's fetch waits without processing this thread's messages.
    HttpServerThread m_serverThread;
    HttpServer& m_server = m_serverThread.server();
    // The entries' table shares one program; each row closes what it opened.
    std::unique_ptr<Program> m_program;
};

void TestMenus::entries_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("times");           // the log is of the last time
    QTest::addColumn<Target>("window");       // the window it opens
    QTest::addColumn<QStringList>("log");     // "+window -main": on the screen or not as it came
    QTest::addColumn<bool>("mainShown");      // afterwards
    QTest::addColumn<QString>("caption");     // of the window it opens, shown
    QTest::addColumn<bool>("topMost");
    QTest::addColumn<QStringList>("closing"); // closing it
    const QString click = QStringLiteral("Click.WAV +main");
    auto page = [&](const char* name, const char* entry, int times, const QStringList& log) {
        QTest::newRow(name) << entry << times << Target{} << log << true << QString() << false << QStringList();
    };
    auto row = [](const char* name, const char* entry, int times, const Target& w, const QStringList& log,
                  const char* caption, bool topMost, const QStringList& closing, bool mainShown = true) {
        QTest::newRow(name) << entry << times << w << log << mainShown << caption << topMost << closing;
    };
    page("Print, dialog cancelled", "PrintMNU", 1, {"print", click});
    page("Print Setup", "PrintSetupMNU", 1, {"page set-up", click});
    page("Page Properties", "PagerPropertiesMNU", 1, {click});
    page("Select All", "SelectAllMNU", 1, {click});
    page("Find: no sound", "FindMNU", 1, {});
    page("Smallest", "SmallestMNU", 1, {click});
    page("Largest twice: harmless", "LargestMNU", 2, {click});
    page("Open Page cancelled: two clicks", "OpenPageMNU", 1, {click, "open file", click});
    page("Save Page cancelled: two clicks", "SavePageMNU", 1, {click, "save file", click});
    // A window's own load plays its open sound while it is still hidden; the entry plays it
    // again once it is shown.
    const QStringList opened{"OpenWIN.WAV -window +main", "OpenWIN.WAV +window +main"};
    const QStringList again{"OpenWIN.WAV +window +main"}, closed{"CloseWIN.WAV"};
    const Target favourites = target<FavoritePlacesFRM>("FavoritePlacesFRM"), about = target<AboutFRM>("AboutFRM");
    const Target calculator = target<CalculatorFRM>("CalculatorFRM"), player = target<MP3PlayerFRM>("MP3PlayerFRM");
    row("Favorite Places", "FavoritePlacesMNU", 1, favourites, opened, "Favorite Places", false, closed);
    row("Favorite Places, again: its sound again", "FavoritePlacesMNU", 2, favourites, again, "Favorite Places", false, closed);
    row("Edit Home Page: no sound of its own", "EditHomePageMNU", 1, target<HomePageFRM>("HomePageFRM"), again,
        "Edit Home Page", false, {});
    // Loaded hidden by the first page's progress: the entry only shows it.
    row("Browser Status", "BrowserStatusMNU", 1, target<BrowserStatusFRM>("BrowserStatusFRM"), again, "Browser Status", true, closed);
    row("Drive Explorer", "DriveExplorerMNU", 1, target<DriveExplorerFRM>("DriveExplorerFRM"), opened, "Drive Explorer", false, closed);
    row("HTML Editor: its load plays nothing", "HTMLEditorMNU", 1, target<EditorFRM>("EditorFRM"), again, "HTML Editor", false, closed);
    // The viewer shows itself as it loads, and fetches the page shown with a click.
    row("HTML Viewer", "HTMLViewerMNU", 1, target<HTMLViewerFRM>("HTMLViewerFRM"),
        {"OpenWIN.WAV +window +main", "Click.WAV +window +main", "OpenWIN.WAV +window +main"}, "HTML Viewer", false, closed);
    row("Calculator: the click, then the window", "CalculatorMNU", 1, calculator,
        {"Click.WAV -window +main", "OpenWIN.WAV -window +main"}, "Calculator", false, {});
    row("Calculator, again: the click alone", "CalculatorMNU", 2, calculator, {"Click.WAV +window +main"}, "Calculator", false, {});
    row("Note Pad: the window, then a click", "NotePadMNU", 1, target<NotePadFRM>("NotePadFRM"),
        {"OpenWIN.WAV -window +main", "Click.WAV +window +main"}, "Notepad (Automaticly Saves, Each Keystroke)", true, closed);
    row("Doodle Pad", "DoodlePadMNU", 1, target<DoodleFRM>("DoodleFRM"), opened, "Doodle [Double Click To Get Options Window]",
        false, closed);
    row("About", "AboutMNU", 1, about, opened, "About This Application", false, closed);
    row("About, again", "AboutMNU", 2, about, again, "About This Application", false, closed);
    row("View Readme: no sound at all", "Readme", 1, target<ReadMeFRM>("ReadMeFRM"), {}, "Read Me ", true, {});
    row("MP3 Player with a file", "MP3PlayerMNU", 1, player,
        {"OpenWIN.WAV -window +main", "Click.WAV -window +main", "open file", "OpenWIN.WAV +window +main"}, "MP3 Player", true, closed);
    // Cancelled, the player closes itself before it can be shown; the entry's sound follows.
    row("MP3 Player cancelled", "MP3PlayerMNU", 1, player,
        {"OpenWIN.WAV -window +main", "Click.WAV -window +main", "open file", "CloseWIN.WAV -window +main",
         "OpenWIN.WAV -window +main"}, "", false, {});
    // The selector shows and clicks before the main window goes; Cancel is offered again.
    row("Theme", "ThemeMNU", 1, target<ThemeSelector>("ThemeSelector"), {"Click.WAV +window +main"}, "Theme Selector", false, {}, false);
    // The main window goes first, then the idle screen shows, then the click.
    row("Go Idle", "GoIdleMNU", 1, target<IdleFRM>("IdleFRM"), {"Click.WAV +window -main"}, "IdleFRM", false, closed, false);
}

void TestMenus::entries()
{
    QFETCH(QString, entry);
    QFETCH(int, times);
    QFETCH(Target, window);
    QFETCH(QStringList, log);
    QFETCH(bool, mainShown);
    QFETCH(QString, caption);
    QFETCH(bool, topMost);
    QFETCH(QStringList, closing);
    if (!m_program) {
        m_program = std::make_unique<Program>(Program::Setup{.home = m_server.url("/titled").toString().toLatin1()});
        m_program->write("readme.TXT", "Read me.\r\n");
        form<ThemeSelector>().CancelCMD.setEnabled(false); // as a first start leaves it
    }
    Program& p = *m_program;
    MainFRM* main = p.main();
    QVERIFY(main);
    const QString tune = QTest::currentDataTag() == QLatin1String("MP3 Player with a file") ? kThemes + "/Default/Intro.MP3" : QString();
    p.dialogs->fileAnswer = [&](const FileDialogRequest&) { return tune; };
    p.watch = window.name.isEmpty() ? QStringList{"MainFRM"} : QStringList{window.name, "MainFRM"};
    for (int i = 0; i < times; ++i) {
        p.log.clear();
        p.choose(entry);
    }
    if (!window.name.isEmpty())
        p.log.replaceInStrings(window.name, QStringLiteral("window"));
    QCOMPARE(p.log.replaceInStrings(QStringLiteral("MainFRM"), QStringLiteral("main")), log);
    QCOMPARE(main->Visible(), mainShown);
    QCOMPARE(p.untrappedErrors, QList<int>{});
    Form* opened = window.loaded ? window.loaded() : nullptr;
    QCOMPARE(opened != nullptr, !caption.isEmpty());
    if (opened) {
        QVERIFY(opened->Visible());
        QCOMPARE(opened->Caption(), caption);
        QCOMPARE(bool(opened->widget()->windowFlags() & Qt::WindowStaysOnTopHint), topMost);
        if (entry == QLatin1String("ThemeMNU"))
            QVERIFY(form<ThemeSelector>().CancelCMD.Enabled());
        p.log.clear();
        p.watch.clear();
        Unload(*opened);
        QCOMPARE(p.log, closing);
    }
    // What the row left open goes, and the main window comes back for the next row.
    if (PagePropertiesWindow* properties = propertiesWindow())
        properties->close();
    form<ThemeSelector>().Hide();
    main->Show();
}

void TestMenus::openAndSavePage()
{
    Program p({.home = m_server.url("/titled").toString().toLatin1()});
    MainFRM* main = p.main();
    QVERIFY(main);
    p.write("local.html", "<title>On Disk</title><p>local</p>");
    QString answer = p.path("local.html");
    p.dialogs->fileAnswer = [&](const FileDialogRequest&) { return answer; };
    // Open Page: the exact filter, and the chosen path as it stands.
    p.choose("OpenPageMNU");
    QCOMPARE(p.dialogs->fileRequests.last().filter,
             "All Internet Files (*.hmt,*.html,*.asp,*.shtml,*.js,*.dhtml) | *.htm;*.html;*.asp;*.shtml;*.js;*.dhtml");
    QTRY_COMPARE(main->BrowserWindow.LocationURL(), QUrl::fromLocalFile(p.path("local.html")).toString());
    // Save Page offers the name chosen last, asks nothing before replacing, and makes the file
    // it names empty.
    answer = p.path("new.htm");
    p.choose("SavePageMNU");
    const FileDialogRequest save = p.dialogs->fileRequests.last();
    QCOMPARE(std::tuple(save.filter, save.flags, save.fileName), std::tuple(QStringLiteral("htm (*.htm) | *.htm"), 0, p.path("local.html")));
    QVERIFY(QFileInfo::exists(p.path("new.htm")) && p.read("new.htm").isEmpty());
    // Cancelled, the dialog names no file: a Save Page cancelled after an Open Page leaves the
    // page that was opened as it was, and an Open Page cancelled goes nowhere.
    answer = p.path("local.html");
    p.choose("OpenPageMNU");
    answer.clear();
    p.choose("SavePageMNU");
    QCOMPARE(p.read("local.html"), QByteArray("<title>On Disk</title><p>local</p>"));
    const qsizetype from = p.captions.size();
    p.choose("OpenPageMNU");
    main->BrowserWindow.Navigate(m_server.url("/untitled").toString());
    QVERIFY(p.waitForCaption(kDone, from)); // the next page, not a page from the cancelled question
    QCOMPARE(main->BrowserWindow.LocationURL(), m_server.url("/untitled").toString());
    QCOMPARE(p.untrappedErrors, QList<int>{});
}

void TestMenus::copyAndTextSize()
{
    Program p({.home = m_server.url("/titled").toString().toLatin1()});
    MainFRM* main = p.main();
    QVERIFY(main);
    p.log.clear();
    p.choose("SelectAllMNU");
    QTRY_VERIFY(main->BrowserWindow.view()->hasSelection());
    p.choose("CopyMNU");
    QTRY_COMPARE(QGuiApplication::clipboard()->text().trimmed(), QStringLiteral("A page with a title."));
    QCOMPARE(p.log, (QStringList{"Click.WAV", "Click.WAV"}));
    // A larger text leaves fewer CSS pixels across the same pane; the pane keeps the size for
    // the pages that follow.
    WebBrowser& pane = main->BrowserWindow;
    auto across = [&] { return evaluate(pane, QStringLiteral("window.innerWidth")).toInt(); };
    const int medium = across();
    p.choose("SmallestMNU");
    QTRY_VERIFY(across() > medium);
    // Each size up from the smallest leaves fewer pixels across than the one before.
    for (const char* entry : {"SmallMNU", "MediumMNU", "LargeMNU", "LargestMNU"}) {
        const int before = across();
        p.choose(QString::fromLatin1(entry));
        QTRY_VERIFY2(across() < before, entry);
        if (qstrcmp(entry, "MediumMNU") == 0)
            QTRY_COMPARE(across(), medium);
    }
    const int largest = across();
    const qsizetype from = p.captions.size();
    pane.Navigate(m_server.url("/untitled").toString());
    QVERIFY(p.waitForCaption(kDone, from));
    QCOMPARE(across(), largest);
    // Copy with nothing selected: the component refuses, nothing traps it, and no click follows.
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    p.log.clear();
    p.choose("CopyMNU");
    QCOMPARE(std::tuple(p.untrappedErrors, p.log, QGuiApplication::clipboard()->text()),
             std::tuple(QList<int>{-2147467259}, QStringList{}, QStringLiteral("before")));
}

void TestMenus::printWithoutPrompting()
{
    Program p({.home = m_server.url("/titled").toString().toLatin1()});
    MainFRM* main = p.main();
    QVERIFY(main);
    QTemporaryDir out;
    p.dialogs->printAnswer = [&](QPrinter& printer) {
        printer.setOutputFileName(out.filePath("page.pdf"));
        return true;
    };
    QSignalSpy printed(&main->BrowserWindow, &WebBrowser::printed);
    p.choose("PrintMNU");
    QVERIFY(printed.wait(30000) && QFile::remove(out.filePath("page.pdf")));
    // A cancelled print dialog prints nothing; "do not prompt" asks nothing and prints where the
    // last print went: one print more, not two.
    p.dialogs->printAnswer = {};
    p.log.clear();
    p.choose("PrintMNU");
    runHandler([&] { main->BrowserWindow.ExecWB(OLECMDID_PRINT, OLECMDEXECOPT_DONTPROMPTUSER); });
    QCOMPARE(p.log, (QStringList{"print", "Click.WAV"}));
    QVERIFY(printed.wait(30000));
    QVERIFY(pdfText(out.filePath("page.pdf")).contains(QLatin1String("A page with a title.")));
    QCOMPARE(printed.size(), 2);
}

void TestMenus::pageProperties()
{
    Program p;
    MainFRM* main = p.main();
    QVERIFY(main);
    p.write("disk.html", "<title>On Disk</title><p>on disk</p>");
    // The server's page with its dates; a file's, with its size and the date it was changed.
    const QStringList pages[] = {
        {m_server.url("/dated").toString(), "Dated Page", "HTTP", " bytes", "2015", QDate::currentDate().toString("yyyy")},
        {QUrl::fromLocalFile(p.path("disk.html")).toString(), "On Disk", "FILE", "36 bytes", QDate::currentDate().toString("yyyy"), ""},
    };
    for (const QStringList& page : pages) {
        const qsizetype from = p.captions.size();
        main->BrowserWindow.Navigate(page[0]);
        QVERIFY(p.waitForCaption(kDone, from));
        p.choose("PagerPropertiesMNU");
        PagePropertiesWindow* properties = propertiesWindow();
        QVERIFY(properties);
        QTRY_VERIFY(properties->complete());
        QCOMPARE(QStringList({properties->value("Address:"), properties->value("Title:"), properties->value("Protocol:")}), page.mid(0, 3));
        QCOMPARE(properties->value("Type:"), QStringLiteral("text/html"));
        QVERIFY2(properties->value("Size:").endsWith(page[3]), qPrintable(properties->value("Size:")));
        QVERIFY2(properties->value("Modified:").contains(page[4]), qPrintable(properties->value("Modified:")));
        QVERIFY2(page[5].isEmpty() ? properties->value("Served:").isEmpty() : properties->value("Served:").contains(page[5]),
                 qPrintable(properties->value("Served:")));
        properties->close();
    }
}

void TestMenus::findOnThisPage()
{
    Program p({.home = m_server.url("/titled").toString().toLatin1()});
    MainFRM* main = p.main();
    QVERIFY(main);
    // From the address box, the menu gives the pane the keyboard and sends Ctrl+F to the window
    // that has it: the component's find bar opens with the keyboard in its text box.
    input::focus(main->URLC);
    p.log.clear();
    p.choose("FindMNU");
    FindBar& bar = main->BrowserWindow.findBar();
    QTRY_VERIFY(bar.isVisible());
    // "A page with a title.": three a's. Enter goes to the next, Shift+Enter back.
    QWidget& window = *main->widget();
    input::typeInto(window, "a");
    QTRY_COMPARE(bar.resultText(), QStringLiteral("1 of 3"));
    input::keyInto(window, Qt::Key_Return);
    QTRY_COMPARE(bar.resultText(), QStringLiteral("2 of 3"));
    input::keyInto(window, Qt::Key_Return, Qt::ShiftModifier);
    QTRY_COMPARE(bar.resultText(), QStringLiteral("1 of 3"));
    input::typeInto(window, "x");
    QTRY_COMPARE(bar.resultText(), QStringLiteral("Not found"));
    input::keyInto(window, Qt::Key_Escape);
    QTRY_VERIFY(!bar.isVisible());
    QCOMPARE(p.log, QStringList{});
}

GLIDEPATH_TEST_MAIN(TestMenus)
#include "tst_menus.moc"
