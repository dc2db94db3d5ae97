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

const QString kDone = QStringLiteral("Glidepath - [Done Loading Document]");

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
    void copy_data();
    void copy();
    void textSizeChangesTheLayout();
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
    const QByteArray local = p.read("local.html");
    QString answer = p.path("local.html");
    p.dialogs->fileAnswer = [&](const FileDialogRequest&) { return answer; };
    auto navigatedTo = [&](const QString& url) {
        return QTest::qWaitFor([&] { return main->BrowserWindow.LocationURL() == url; }, 20000);
    };

    // Open Page: the exact filter, and the chosen path as it stands.
    p.choose("OpenPageMNU");
    QCOMPARE(p.dialogs->fileRequests.last().filter,
             "All Internet Files (*.hmt,*.html,*.asp,*.shtml,*.js,*.dhtml) | *.htm;*.html;*.asp;*.shtml;*.js;*.dhtml");
    QVERIFY(navigatedTo(QUrl::fromLocalFile(p.path("local.html")).toString()));

    // Save Page offers the name chosen last; the file chosen is replaced by an empty one, and a
    // new one is made empty.
    p.write("saved.htm", "what it held before");
    for (const char* name : {"saved.htm", "new.htm"}) {
        answer = p.path(name);
        p.choose("SavePageMNU");
        QCOMPARE(p.dialogs->fileRequests.last().filter, QStringLiteral("htm (*.htm) | *.htm"));
        QCOMPARE(p.dialogs->fileRequests.last().flags, 0); // no question before a file is replaced
        QVERIFY(QFileInfo::exists(p.path(name)));
        QCOMPARE(p.read(name), QByteArray());
    }
    QCOMPARE(p.dialogs->fileRequests.at(1).fileName, p.path("local.html"));

    // Cancelled, the dialog names no file: a Save Page cancelled after an Open Page leaves the
    // page that was opened as it was, and an Open Page cancelled goes nowhere.
    answer = p.path("local.html");
    p.choose("OpenPageMNU");
    answer.clear();
    p.choose("SavePageMNU");
    QCOMPARE(p.dialogs->fileRequests.last().fileName, p.path("local.html")); // offered all the same
    QCOMPARE(p.read("local.html"), local);
    const qsizetype from = p.captions.size();
    p.choose("OpenPageMNU");
    QCOMPARE(p.dialogs->fileRequests.last().fileName, QString());
    main->BrowserWindow.Navigate(m_server.url("/untitled").toString());
    QVERIFY(p.waitForCaption(kDone, from)); // the next page, not a page from the cancelled question
    QCOMPARE(main->BrowserWindow.LocationURL(), m_server.url("/untitled").toString());
    QCOMPARE(p.untrappedErrors, QList<int>{});
}

void TestMenus::copy_data()
{
    QTest::addColumn<bool>("selectAllFirst");
    QTest::addColumn<QString>("clipboard");
    QTest::addColumn<QList<int>>("errors");
    QTest::addColumn<QStringList>("log");
    // Nothing selected: the component refuses, nothing traps it, and no click follows.
    QTest::newRow("nothing selected") << false << "before" << QList<int>{-2147467259} << QStringList{};
    QTest::newRow("after Select All") << true << "A page with a title." << QList<int>{}
                                      << QStringList{"Click.WAV", "Click.WAV"};
}

void TestMenus::copy()
{
    QFETCH(bool, selectAllFirst);
    QFETCH(QString, clipboard);
    QFETCH(QList<int>, errors);
    QFETCH(QStringList, log);
    Program p({.home = m_server.url("/titled").toString().toLatin1()});
    MainFRM* main = p.main();
    QVERIFY(main);
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    p.log.clear();
    if (selectAllFirst) {
        p.choose("SelectAllMNU");
        QTRY_VERIFY(main->BrowserWindow.view()->hasSelection());
    }
    p.choose("CopyMNU");
    QTRY_COMPARE(QGuiApplication::clipboard()->text().trimmed(), clipboard);
    QCOMPARE(p.untrappedErrors, errors);
    QCOMPARE(p.log, log);
}

void TestMenus::textSizeChangesTheLayout()
{
    Program p({.home = m_server.url("/titled").toString().toLatin1()});
    MainFRM* main = p.main();
    QVERIFY(main);
    WebBrowser& pane = main->BrowserWindow;
    // A larger text leaves fewer CSS pixels across the same pane: the page is laid out anew.
    auto across = [&] { return evaluate(pane, QStringLiteral("window.innerWidth")).toInt(); };
    const int atStart = across();
    QList<int> widths;
    for (const char* entry : {"SmallestMNU", "SmallMNU", "MediumMNU", "LargeMNU", "LargestMNU"}) {
        const int before = across();
        p.choose(QString::fromLatin1(entry));
        QTRY_VERIFY2(across() != before, entry);
        widths << across();
    }
    QCOMPARE(widths[2], atStart); // Medium is the size the page opened with
    QVERIFY2(std::is_sorted(widths.rbegin(), widths.rend()) && std::adjacent_find(widths.begin(), widths.end()) == widths.end(),
             qPrintable(QStringLiteral("%1 %2 %3 %4 %5").arg(widths[0]).arg(widths[1]).arg(widths[2]).arg(widths[3]).arg(widths[4])));
    // The pane keeps the size for the pages that follow, on this site and on another.
    p.write("next.html", "<p>next</p>");
    for (const QString& next : {m_server.url("/untitled").toString(), QUrl::fromLocalFile(p.path("next.html")).toString()}) {
        const qsizetype from = p.captions.size();
        pane.Navigate(next);
        QVERIFY(p.waitForCaption(kDone, from));
        QCOMPARE(across(), widths[4]);
    }
    QCOMPARE(p.untrappedErrors, QList<int>{});
}

void TestMenus::printWithoutPrompting()
{
    Program p({.home = m_server.url("/titled").toString().toLatin1()});
    MainFRM* main = p.main();
    QVERIFY(main);
    QTemporaryDir out;
    const QString pdf = out.filePath("page.pdf");
    p.dialogs->printAnswer = [&](QPrinter& printer) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(pdf);
        return true;
    };
    QSignalSpy printed(&main->BrowserWindow, &WebBrowser::printed);
    p.choose("PrintMNU");
    QVERIFY(printed.wait(30000));
    QVERIFY(QFile::remove(pdf));
    // A cancelled print dialog prints nothing; "do not prompt" asks nothing and prints where the
    // last print went: one print more, not two.
    p.dialogs->printAnswer = {};
    p.log.clear();
    p.choose("PrintMNU");
    runHandler([&] { main->BrowserWindow.ExecWB(OLECMDID_PRINT, OLECMDEXECOPT_DONTPROMPTUSER); });
    QCOMPARE(p.log, (QStringList{"print", "Click.WAV"}));
    QVERIFY(printed.wait(30000));
    QVERIFY(pdfText(pdf).contains(QLatin1String("A page with a title.")));
    QCOMPARE(printed.size(), 2);
    QCOMPARE(p.untrappedErrors, QList<int>{});
}

void TestMenus::pageProperties()
{
    Program p;
    MainFRM* main = p.main();
    QVERIFY(main);
    const QByteArray disk = "<title>On Disk</title><p>on disk</p>";
    p.write("disk.html", disk);
    struct Page {
        QString url, title, protocol;
        QStringList dates;   // a heading shown, then a text its date holds
        QStringList noDates; // headings not shown
    };
    const Page pages[] = {
        {m_server.url("/titled").toString(), "Titled Page", "HTTP", {}, {"Modified:", "Served:", "Expires:"}},
        {m_server.url("/dated").toString(), "Dated Page", "HTTP", {"Modified:", "2015", "Served:", "2026", "Expires:", "2026"}, {}},
        {QUrl::fromLocalFile(p.path("disk.html")).toString(), "On Disk", "FILE", {"Modified:", ""}, {"Served:"}},
    };
    for (const Page& page : pages) {
        const qsizetype from = p.captions.size();
        main->BrowserWindow.Navigate(page.url);
        QVERIFY(p.waitForCaption(kDone, from));
        p.choose("PagerPropertiesMNU");
        PagePropertiesWindow* properties = propertiesWindow();
        QVERIFY(properties);
        QTRY_VERIFY(properties->complete());
        QCOMPARE(properties->value("Title:"), page.title);
        QCOMPARE(properties->value("Address:"), page.url);
        QCOMPARE(properties->value("Protocol:"), page.protocol);
        QCOMPARE(properties->value("Type:"), QStringLiteral("text/html"));
        // A page's own size exactly for a file; the server's pages as the engine counts them.
        const QString size = page.protocol == QLatin1String("FILE") ? QStringLiteral("%1 bytes").arg(disk.size()) : QStringLiteral(" bytes");
        QVERIFY2(properties->value("Size:").endsWith(size), qPrintable(properties->value("Size:")));
        for (qsizetype i = 0; i + 1 < page.dates.size(); i += 2)
            QVERIFY2(!properties->value(page.dates[i]).isEmpty() && properties->value(page.dates[i]).contains(page.dates[i + 1]),
                     qPrintable(page.dates[i] + properties->value(page.dates[i])));
        for (const QString& heading : page.noDates)
            QCOMPARE(properties->value(heading), QString());
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
    input::typeInto(window, " title");
    QTRY_COMPARE(bar.resultText(), QStringLiteral("1 of 1"));
    input::keyInto(window, Qt::Key_Home);
    input::keyInto(window, Qt::Key_Delete);
    input::typeInto(window, "A");
    // Match case (Tab past Previous and Next, then Space): "A title" is not on the page as typed.
    for (int i = 0; i < 3; ++i)
        input::keyInto(window, Qt::Key_Tab);
    input::keyInto(window, Qt::Key_Space);
    QTRY_COMPARE(bar.resultText(), QStringLiteral("Not found"));
    // Escape closes the bar.
    input::keyInto(window, Qt::Key_Escape);
    QTRY_VERIFY(!bar.isVisible());
    QCOMPARE(p.log, QStringList{});
    QCOMPARE(p.untrappedErrors, QList<int>{});
}

GLIDEPATH_TEST_MAIN(TestMenus)
#include "tst_menus.moc"
