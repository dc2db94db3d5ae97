// The main window's menu commands on the real engine against pages on 127.0.0.1 and files on
// disk: each command's steps, questions and sounds in their order, and what the page commands
// do to the page (open, save, print, properties, copy, select all, find, text size).

#include "browser/main_window.h"
#include "companions/drive_explorer.h"
#include "companions/favorite_places.h"
#include "companions/idle_screen.h"
#include "startup/theme_selector.h"
#include "platform/find_bar.h"
#include "platform/page_properties.h"
#include "platform/runtime.h"
#include "platform/sounds.h"
#include "support/http_server.h"
#include "support/input.h"
#include "support/test_main.h"
#include "support/test_runtime.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QPrinter>
#include <QProcess>
#include <QSignalSpy>
#include <QWebEngineView>

using namespace platform;

namespace {

const QString kThemes = QStringLiteral(GLIDEPATH_SOURCE_DIR "/themes");
const QString kDone = QStringLiteral("Glidepath - [Done Loading Document]");
const QString kOpenFilter =
    QStringLiteral("All Internet Files (*.hmt,*.html,*.asp,*.shtml,*.js,*.dhtml) | *.htm;*.html;*.asp;*.shtml;*.js;*.dhtml");
const QString kSaveFilter = QStringLiteral("htm (*.htm) | *.htm");

// The window a command opens, watched while its steps run.
enum class Target { None, Favourites, DriveExplorer, Selector, Idle };

// A program directory with the Default theme, a home page and an empty favourites file, the
// main window loaded and shown, and one log of the command's steps in the order they happen:
// every sound asked for (with whether the window it opens and the main window are on the
// screen at that moment) and every question put to a person.
struct Program {
    explicit Program(const QString& home)
    {
        t.write("ThemeDir.INI", "[Theme Directory]\r\nDIR=" + (kThemes + "/Default").toLocal8Bit() + "\r\n");
        t.write("HomePage.TXT", home.toLocal8Bit());
        t.write("FavPlaces.INI", "");
        t.runtime().forms().setCreatedHook([this](Form& window) {
            if (dynamic_cast<MainFRM*>(&window))
                QObject::connect(&window, &Form::captionWritten, [this](const QString& c) { captions << c; });
        });
        QObject::connect(&t.runtime().sounds(), &WavePlayer::requested, [this](const QString& path) {
            QString entry = QFileInfo(path).fileName();
            if (Form* window = target())
                entry += window->widget()->isVisible() ? QStringLiteral(", window shown") : QStringLiteral(", window hidden");
            entry += m_main && m_main->widget()->isVisible() ? QStringLiteral(", main shown") : QStringLiteral(", main hidden");
            log << entry;
        });
        t.dialogs->fileAnswer = [this](const FileDialogRequest& r) {
            log << (r.save ? QStringLiteral("save file") : QStringLiteral("open file"));
            return fileAnswer;
        };
        t.dialogs->printAnswer = [this](QPrinter& printer) {
            log << QStringLiteral("print");
            return printAnswer && printAnswer(printer);
        };
        t.dialogs->pageSetupAnswer = [this](QPrinter& printer) {
            log << QStringLiteral("page set-up");
            return pageSetupAnswer && pageSetupAnswer(printer);
        };
        runHandler([this] { m_main = &form<MainFRM>(); });
        m_main->Show();
        if (!QTest::qWaitForWindowExposed(m_main->widget()))
            QTest::qFail("the main window never reached the screen", __FILE__, __LINE__);
        if (!QTest::qWaitFor([this] { return captions.contains(kDone); }, 20000))
            QTest::qFail("the home page never finished loading", __FILE__, __LINE__);
        log.clear();
    }

    MainFRM& main() { return *m_main; }
    void choose(const QString& entry)
    {
        auto* item = m_main->findChild<MenuItem*>(entry);
        QVERIFY2(item, qPrintable(entry));
        item->action()->trigger();
    }
    bool navigatedTo(const QString& url)
    {
        return QTest::qWaitFor([&] { return m_main->BrowserWindow.LocationURL() == url; }, 20000);
    }
    Form* target() const
    {
        Forms& forms = const_cast<TestRuntime&>(t).runtime().forms();
        switch (watched) {
        case Target::Favourites: return forms.isLoaded<FavoritePlacesFRM>() ? &form<FavoritePlacesFRM>() : nullptr;
        case Target::DriveExplorer: return forms.isLoaded<DriveExplorerFRM>() ? &form<DriveExplorerFRM>() : nullptr;
        case Target::Selector: return forms.isLoaded<ThemeSelector>() ? &form<ThemeSelector>() : nullptr;
        case Target::Idle: return forms.isLoaded<IdleFRM>() ? &form<IdleFRM>() : nullptr;
        default: return nullptr;
        }
    }

    TestRuntime t;
    QStringList captions, log;
    Target watched = Target::None;
    QString fileAnswer; // "": the person cancels
    std::function<bool(QPrinter&)> printAnswer, pageSetupAnswer;

private:
    MainFRM* m_main = nullptr;
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
    if (!text.waitForFinished(20000))
        return {};
    return QString::fromUtf8(text.readAllStandardOutput());
}

} // namespace

Q_DECLARE_METATYPE(Target)

class TestMenus : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void stepsAndSounds_data();
    void stepsAndSounds();
    void openAndSavePage();
    void copy_data();
    void copy();
    void textSizeChangesTheLayout();
    void printToPdfAfterPageSetUp();
    void pageProperties_data();
    void pageProperties();
    void findOnThisPage();
    void execWBRefusals_data();
    void execWBRefusals();
    void printWithoutPromptingUsesTheLastPrinter();

private:
    HttpServer m_server;
};

void TestMenus::stepsAndSounds_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("times"); // the log is of the last time
    QTest::addColumn<Target>("target");
    QTest::addColumn<QStringList>("log");
    QTest::addColumn<bool>("mainShownAfter");
    QTest::addColumn<bool>("targetShownAfter");

    const QString click = QStringLiteral("Click.WAV, main shown");
    QTest::newRow("Print, dialog cancelled") << "PrintMNU" << 1 << Target::None << QStringList{"print", click} << true << false;
    QTest::newRow("Print Setup") << "PrintSetupMNU" << 1 << Target::None << QStringList{"page set-up", click} << true << false;
    QTest::newRow("Page Properties") << "PagerPropertiesMNU" << 1 << Target::None << QStringList{click} << true << false;
    QTest::newRow("Select All") << "SelectAllMNU" << 1 << Target::None << QStringList{click} << true << false;
    QTest::newRow("Find: no sound") << "FindMNU" << 1 << Target::None << QStringList{} << true << false;
    QTest::newRow("Smallest") << "SmallestMNU" << 1 << Target::None << QStringList{click} << true << false;
    QTest::newRow("Largest twice: harmless") << "LargestMNU" << 2 << Target::None << QStringList{click} << true << false;
    QTest::newRow("Open Page cancelled: two clicks")
        << "OpenPageMNU" << 1 << Target::None << QStringList{click, "open file", click} << true << false;
    QTest::newRow("Save Page cancelled: two clicks")
        << "SavePageMNU" << 1 << Target::None << QStringList{click, "save file", click} << true << false;
    // The window's own load plays the open sound while it is hidden, the menu again once shown.
    QTest::newRow("Favorite Places")
        << "FavoritePlacesMNU" << 1 << Target::Favourites
        << QStringList{"OpenWIN.WAV, window hidden, main shown", "OpenWIN.WAV, window shown, main shown"} << true << true;
    QTest::newRow("Favorite Places, already open: its sound again")
        << "FavoritePlacesMNU" << 2 << Target::Favourites << QStringList{"OpenWIN.WAV, window shown, main shown"} << true << true;
    QTest::newRow("Drive Explorer")
        << "DriveExplorerMNU" << 1 << Target::DriveExplorer
        << QStringList{"OpenWIN.WAV, window hidden, main shown", "OpenWIN.WAV, window shown, main shown"} << true << true;
    // The selector is shown and clicks before the main window goes.
    QTest::newRow("Theme") << "ThemeMNU" << 1 << Target::Selector << QStringList{"Click.WAV, window shown, main shown"}
                           << false << true;
    // The main window goes first, then the idle screen shows, then the click.
    QTest::newRow("Go Idle") << "GoIdleMNU" << 1 << Target::Idle << QStringList{"Click.WAV, window shown, main hidden"}
                             << false << true;
}

void TestMenus::stepsAndSounds()
{
    QFETCH(QString, entry);
    QFETCH(int, times);
    QFETCH(Target, target);
    QFETCH(QStringList, log);
    QFETCH(bool, mainShownAfter);
    QFETCH(bool, targetShownAfter);
    Program p(m_server.url("/titled").toString());
    p.watched = target;
    form<ThemeSelector>().CancelCMD.setEnabled(false); // as a first start leaves it
    for (int i = 0; i < times; ++i) {
        p.log.clear();
        p.choose(entry);
    }
    QCOMPARE(p.log, log);
    QCOMPARE(p.main().widget()->isVisible(), mainShownAfter);
    if (Form* window = p.target())
        QCOMPARE(window->widget()->isVisible(), targetShownAfter);
    else
        QVERIFY(!targetShownAfter);
    if (target == Target::Selector)
        QVERIFY(form<ThemeSelector>().CancelCMD.Enabled());
    QCOMPARE(p.t.untrappedErrors, QList<int>{});
    if (PagePropertiesWindow* properties = propertiesWindow())
        properties->close();
}

void TestMenus::openAndSavePage()
{
    Program p(m_server.url("/titled").toString());
    p.t.write("local.html", "<title>On Disk</title><p>local</p>");
    const QByteArray local = p.t.read("local.html");

    // Open Page: the exact filter, and the chosen path as it stands.
    p.fileAnswer = p.t.path("local.html");
    p.choose("OpenPageMNU");
    QCOMPARE(p.t.dialogs->fileRequests.last().filter, kOpenFilter);
    QVERIFY(!p.t.dialogs->fileRequests.last().save);
    QVERIFY(p.navigatedTo(QUrl::fromLocalFile(p.t.path("local.html")).toString()));

    // Save Page offers the name chosen last; the file chosen is replaced by an empty one.
    p.t.write("saved.htm", "what it held before");
    p.fileAnswer = p.t.path("saved.htm");
    p.choose("SavePageMNU");
    const FileDialogRequest save = p.t.dialogs->fileRequests.last();
    QVERIFY(save.save);
    QCOMPARE(save.filter, kSaveFilter);
    QCOMPARE(save.fileName, p.t.path("local.html"));
    QVERIFY(QFileInfo::exists(p.t.path("saved.htm")));
    QCOMPARE(p.t.read("saved.htm"), QByteArray());
    // A new file is made empty too.
    p.fileAnswer = p.t.path("new.htm");
    p.choose("SavePageMNU");
    QVERIFY(QFileInfo::exists(p.t.path("new.htm")));
    QCOMPARE(QFileInfo(p.t.path("new.htm")).size(), 0);

    // Cancelled, the dialog names no file: a Save Page cancelled after an Open Page leaves the
    // page that was opened as it was, and an Open Page cancelled goes nowhere.
    p.fileAnswer = p.t.path("local.html");
    p.choose("OpenPageMNU");
    p.fileAnswer.clear();
    p.choose("SavePageMNU");
    QCOMPARE(p.t.dialogs->fileRequests.last().fileName, p.t.path("local.html")); // offered all the same
    QCOMPARE(p.t.read("local.html"), local);
    QVERIFY(p.navigatedTo(QUrl::fromLocalFile(p.t.path("local.html")).toString()));
    p.main().BrowserWindow.Navigate(m_server.url("/titled").toString());
    QVERIFY(p.navigatedTo(m_server.url("/titled").toString()));
    p.choose("OpenPageMNU");
    QCOMPARE(p.t.dialogs->fileRequests.last().fileName, QString());
    QTest::qWait(500);
    QCOMPARE(p.main().BrowserWindow.LocationURL(), m_server.url("/titled").toString());
    QCOMPARE(p.t.untrappedErrors, QList<int>{});
}

void TestMenus::copy_data()
{
    QTest::addColumn<bool>("selectAllFirst");
    QTest::addColumn<QString>("clipboard");
    QTest::addColumn<QList<int>>("errors");
    QTest::addColumn<QStringList>("log");
    const QString click = QStringLiteral("Click.WAV, main shown");
    // Nothing selected: the component refuses, nothing traps it, and no click follows.
    QTest::newRow("nothing selected") << false << "before" << QList<int>{-2147467259} << QStringList{};
    QTest::newRow("after Select All") << true << "A page with a title." << QList<int>{} << QStringList{click, click};
}

void TestMenus::copy()
{
    QFETCH(bool, selectAllFirst);
    QFETCH(QString, clipboard);
    QFETCH(QList<int>, errors);
    QFETCH(QStringList, log);
    Program p(m_server.url("/titled").toString());
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    if (selectAllFirst) {
        p.choose("SelectAllMNU");
        QTRY_VERIFY(p.main().BrowserWindow.view()->hasSelection());
    }
    p.choose("CopyMNU");
    QTRY_COMPARE(QGuiApplication::clipboard()->text().trimmed(), clipboard);
    QCOMPARE(p.t.untrappedErrors, errors);
    QCOMPARE(p.log, log);
}

void TestMenus::textSizeChangesTheLayout()
{
    Program p(m_server.url("/titled").toString());
    WebBrowser& pane = p.main().BrowserWindow;
    // A larger text leaves fewer CSS pixels across the same pane: the page is laid out anew.
    auto across = [&] { return evaluate(pane, QStringLiteral("window.innerWidth")).toInt(); };
    const int atStart = across();
    QVERIFY(atStart > 0);
    QList<int> widths;
    for (const char* entry : {"SmallestMNU", "SmallMNU", "MediumMNU", "LargeMNU", "LargestMNU"}) {
        const int before = across();
        p.choose(QString::fromLatin1(entry));
        QTRY_VERIFY2(across() != before, entry);
        widths << across();
        // No check mark: the window does not keep the level.
        QVERIFY(!p.main().findChild<MenuItem*>(QString::fromLatin1(entry))->action()->isCheckable());
    }
    QCOMPARE(widths[2], atStart); // Medium is the size the page opened with
    QVERIFY2(std::is_sorted(widths.rbegin(), widths.rend()) &&
                 std::adjacent_find(widths.begin(), widths.end()) == widths.end(),
             qPrintable(QStringLiteral("%1 %2 %3 %4 %5").arg(widths[0]).arg(widths[1]).arg(widths[2]).arg(widths[3]).arg(widths[4])));
    QCOMPARE(p.log.count(QStringLiteral("Click.WAV, main shown")), 5);
    // The pane keeps the size for the pages that follow, on this site and on another.
    for (const QString& next : {m_server.url("/untitled").toString(), QUrl::fromLocalFile(p.t.path("next.html")).toString()}) {
        p.t.write("next.html", "<p>next</p>");
        pane.Navigate(next);
        QVERIFY(p.navigatedTo(next));
        QTRY_COMPARE(evaluate(pane, QStringLiteral("document.readyState")).toString(), QStringLiteral("complete"));
        QCOMPARE(across(), widths[4]);
    }
    QCOMPARE(p.t.untrappedErrors, QList<int>{});
}

void TestMenus::printToPdfAfterPageSetUp()
{
    Program p(m_server.url("/titled").toString());
    QTemporaryDir out;
    const QString pdf = out.filePath("page.pdf");
    QPageLayout::Orientation seen = QPageLayout::Portrait;
    p.pageSetupAnswer = [](QPrinter& printer) {
        printer.setPageOrientation(QPageLayout::Landscape);
        return true;
    };
    p.printAnswer = [&](QPrinter& printer) {
        seen = printer.pageLayout().orientation(); // what the set-up chose
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(pdf);
        return true;
    };
    p.choose("PrintSetupMNU");
    QSignalSpy printed(&p.main().BrowserWindow, &WebBrowser::printed);
    p.choose("PrintMNU");
    QVERIFY(printed.wait(30000));
    QCOMPARE(printed.first().first().toBool(), true);
    QCOMPARE(seen, QPageLayout::Landscape);
    const QString text = pdfText(pdf);
    QVERIFY2(text.contains(QLatin1String("A page with a title.")), qPrintable(text));

    // A cancelled print dialog prints nothing.
    printed.clear();
    p.printAnswer = {};
    p.choose("PrintMNU");
    QVERIFY(!printed.wait(1000));
    QCOMPARE(p.t.untrappedErrors, QList<int>{});
}

void TestMenus::pageProperties_data()
{
    QTest::addColumn<QString>("page"); // a path on the server, or "file" for a page on disk
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("protocol");
    QTest::addColumn<QStringList>("dates"); // the date rows shown, each with a text it holds
    QTest::addColumn<QStringList>("noDates"); // the date rows not shown

    QTest::newRow("server gives no dates") << "/titled" << "Titled Page" << "HTTP" << QStringList{}
                                           << QStringList{"Modified:", "Served:", "Expires:"};
    QTest::newRow("server gives its dates")
        << "/dated" << "Dated Page" << "HTTP" << QStringList{"Modified:", "2015", "Served:", "2026", "Expires:", "2026"}
        << QStringList{};
    QTest::newRow("page on disk") << "file" << "On Disk" << "FILE" << QStringList{"Modified:", ""} << QStringList{"Served:"};
}

void TestMenus::pageProperties()
{
    QFETCH(QString, page);
    QFETCH(QString, title);
    QFETCH(QString, protocol);
    QFETCH(QStringList, dates);
    QFETCH(QStringList, noDates);
    Program p(QStringLiteral("about:blank"));
    QString url = m_server.url(page).toString();
    qint64 size = -1;
    if (page == QLatin1String("file")) {
        p.t.write("disk.html", "<title>On Disk</title><p>on disk</p>");
        url = QUrl::fromLocalFile(p.t.path("disk.html")).toString();
        size = QFileInfo(p.t.path("disk.html")).size();
    }
    p.main().BrowserWindow.Navigate(url);
    QVERIFY(p.navigatedTo(url));
    QTRY_COMPARE(p.main().BrowserWindow.LocationName(), title);

    p.choose("PagerPropertiesMNU");
    PagePropertiesWindow* properties = propertiesWindow();
    QVERIFY(properties);
    QTRY_VERIFY(properties->complete());
    QCOMPARE(properties->value("Title:"), title);
    QCOMPARE(properties->value("Address:"), url);
    QCOMPARE(properties->value("Protocol:"), protocol);
    QCOMPARE(properties->value("Type:"), QStringLiteral("text/html"));
    if (size >= 0)
        QCOMPARE(properties->value("Size:"), QStringLiteral("%1 bytes").arg(size));
    else
        QVERIFY(properties->value("Size:").endsWith(QLatin1String(" bytes")));
    for (qsizetype i = 0; i + 1 < dates.size(); i += 2) {
        QVERIFY2(!properties->value(dates[i]).isEmpty(), qPrintable(dates[i]));
        QVERIFY2(properties->value(dates[i]).contains(dates[i + 1]), qPrintable(properties->value(dates[i])));
    }
    for (const QString& heading : noDates)
        QCOMPARE(properties->value(heading), QString());
    properties->close();
}

void TestMenus::findOnThisPage()
{
    Program p(m_server.url("/titled").toString());
    MainFRM& main = p.main();
    // From the address box, the menu gives the pane the keyboard and sends Ctrl+F to the window
    // that has it: the component's find bar opens with the keyboard in its text box.
    input::focus(main.URLC);
    p.choose("FindMNU");
    FindBar& bar = main.BrowserWindow.findBar();
    QTRY_VERIFY(bar.isVisible());
    QCOMPARE(p.log, QStringList{});

    // "A page with a title.": three a's. Enter goes to the next, Shift+Enter back.
    input::typeInto(main, "a");
    QTRY_COMPARE(bar.resultText(), QStringLiteral("1 of 3"));
    input::keyInto(main, Qt::Key_Return);
    QTRY_COMPARE(bar.resultText(), QStringLiteral("2 of 3"));
    input::keyInto(main, Qt::Key_Return, Qt::ShiftModifier);
    QTRY_COMPARE(bar.resultText(), QStringLiteral("1 of 3"));

    input::typeInto(main, " title");
    QTRY_COMPARE(bar.resultText(), QStringLiteral("1 of 1"));
    input::keyInto(main, Qt::Key_Home);
    input::keyInto(main, Qt::Key_Delete);
    input::typeInto(main, "A");
    // Match case (Tab past Previous and Next, then Space): "A title" is not on the page as typed.
    input::keyInto(main, Qt::Key_Tab);
    input::keyInto(main, Qt::Key_Tab);
    input::keyInto(main, Qt::Key_Tab);
    input::keyInto(main, Qt::Key_Space);
    QTRY_COMPARE(bar.resultText(), QStringLiteral("Not found"));

    // Escape closes the bar and gives the page the keyboard back.
    input::keyInto(main, Qt::Key_Escape);
    QTRY_VERIFY(!bar.isVisible());
    QCOMPARE(p.log, QStringList{});
    QCOMPARE(p.t.untrappedErrors, QList<int>{});
}

void TestMenus::execWBRefusals_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("option");
    QTest::addColumn<QVariant>("in");
    QTest::addColumn<int>("error");
    QTest::newRow("zoom level 5") << int(OLECMDID_ZOOM) << int(OLECMDEXECOPT_DONTPROMPTUSER) << QVariant(5) << int(ErrInvalidProcedureCall);
    QTest::newRow("zoom level -1") << int(OLECMDID_ZOOM) << int(OLECMDEXECOPT_DONTPROMPTUSER) << QVariant(-1) << int(ErrInvalidProcedureCall);
    QTest::newRow("zoom without a level") << int(OLECMDID_ZOOM) << int(OLECMDEXECOPT_DONTPROMPTUSER) << QVariant() << int(ErrInvalidProcedureCall);
    QTest::newRow("a command the component lacks") << 99 << int(OLECMDEXECOPT_DODEFAULT) << QVariant() << -2147467259;
    QTest::newRow("zoom level 4 is fine") << int(OLECMDID_ZOOM) << int(OLECMDEXECOPT_DONTPROMPTUSER) << QVariant(4) << 0;
}

void TestMenus::execWBRefusals()
{
    QFETCH(int, command);
    QFETCH(int, option);
    QFETCH(QVariant, in);
    QFETCH(int, error);
    Program p(QStringLiteral("about:blank"));
    QVariant out = 1;
    runHandler([&] { p.main().BrowserWindow.ExecWB(command, option, in, &out); });
    QCOMPARE(p.t.untrappedErrors, error ? QList<int>{error} : QList<int>{});
}

void TestMenus::printWithoutPromptingUsesTheLastPrinter()
{
    Program p(m_server.url("/titled").toString());
    QTemporaryDir out;
    const QString pdf = out.filePath("page.pdf");
    p.printAnswer = [&](QPrinter& printer) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(pdf);
        return true;
    };
    WebBrowser& pane = p.main().BrowserWindow;
    QSignalSpy printed(&pane, &WebBrowser::printed);
    p.choose("PrintMNU");
    QVERIFY(printed.wait(30000));
    QVERIFY(QFile::remove(pdf));
    // "Do not prompt": no dialog; the page goes where the last print went.
    p.log.clear();
    runHandler([&] { pane.ExecWB(OLECMDID_PRINT, OLECMDEXECOPT_DONTPROMPTUSER); });
    QVERIFY(printed.wait(30000));
    QCOMPARE(p.log, QStringList{});
    QVERIFY(pdfText(pdf).contains(QLatin1String("A page with a title.")));
    QCOMPARE(p.t.untrappedErrors, QList<int>{});
}

GLIDEPATH_WEB_TEST_MAIN(TestMenus)
#include "tst_menus.moc"
