// What the windows share, one table each: every window's designed captions are there and fit
// their boxes in this desktop's font, and its controls stand where they stood (its look); each
// window's colours for the font colour codes; each window's resize rule with its boundary rows and its too-small error; and a theme picture
// that is missing ending the program where the window loads or presses it.

#include "accessories/about.h"
#include "accessories/calculator.h"
#include "accessories/doodle.h"
#include "accessories/note_pad.h"
#include "accessories/read_me.h"
#include "accessories/secret_place.h"
#include "browser/main_window.h"
#include "companions/browser_status.h"
#include "companions/drive_explorer.h"
#include "companions/favorite_places.h"
#include "companions/home_page.h"
#include "htmltools/editor.h"
#include "htmltools/editor_browser.h"
#include "htmltools/html_viewer.h"
#include "shared/statf.h"
#include "startup/intro.h"
#include "startup/theme_selector.h"
#include "support/http_server.h"
#include "support/input.h"
#include "support/program.h"
#include "support/test_main.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QStyle>
#include <QStyleOptionButton>

using namespace platform;

// How a row opens its window, and what it reads from it.
using Opens = std::function<Form*(Program&)>;
using Reads = std::function<QList<int>(Form&)>;
using Presses = std::function<Control*(Form&)>;
Q_DECLARE_METATYPE(Opens)
Q_DECLARE_METATYPE(Reads)
Q_DECLARE_METATYPE(Presses)

namespace {

template <class F>
Opens opens()
{
    return [](Program& p) -> Form* { return p.open<F>(); };
}

// Reads from the window as its own kind.
template <class F>
Reads reads(QList<int> (*read)(F&))
{
    return [read](Form& w) { return read(static_cast<F&>(w)); };
}

QList<int> colours(std::initializer_list<Label*> labels)
{
    QList<int> all;
    for (Label* label : labels)
        all << int(label->ForeColor());
    return all;
}

template <class L>
QList<int> arrayColours(ControlArray<L>& labels)
{
    QList<int> all;
    for (int i = labels.LBound(); i <= labels.UBound(); ++i)
        all << int(labels(i).ForeColor());
    return all;
}

QList<int> twips(std::initializer_list<int> values)
{
    return QList<int>(values);
}

// The room a caption needs in its control, and the room the control has.
struct Fit {
    QString text;
    int needed;
    int room;
};

// What a control shows as its caption: a label's text, a button's or a frame's title.
QString captionOf(const QWidget* w)
{
    if (auto* label = qobject_cast<const QLabel*>(w))
        return label->text();
    if (auto* button = qobject_cast<const QAbstractButton*>(w))
        return button->text();
    if (auto* frame = qobject_cast<const QGroupBox*>(w))
        return frame->title();
    return {};
}

QList<Fit> captionsOf(QWidget& window)
{
    QList<Fit> fits;
    for (QWidget* w : window.findChildren<QWidget*>()) {
        const QString text = captionOf(w);
        if (text.isEmpty() || !w->isVisibleTo(&window))
            continue;
        const int needed = QFontMetrics(w->font()).horizontalAdvance(text);
        if (auto* label = qobject_cast<QLabel*>(w); label && label->wordWrap()) {
            fits.append({text, label->heightForWidth(label->width()), label->height()});
        } else if (auto* box = qobject_cast<QCheckBox*>(w)) {
            // The text stands right of the box's indicator.
            QStyleOptionButton option;
            option.initFrom(box);
            option.text = text;
            fits.append({text, needed, box->style()->subElementRect(QStyle::SE_CheckBoxContents, &option, box).width()});
        } else if (qobject_cast<QAbstractButton*>(w)) {
            // The caption and the button's own bevel on each side.
            fits.append({text, needed + 2 * w->style()->pixelMetric(QStyle::PM_ButtonMargin, nullptr, w), w->width()});
        } else if (qobject_cast<QGroupBox*>(w)) {
            fits.append({text, needed + 16, w->width()});
        } else {
            fits.append({text, needed, w->width()});
        }
    }
    return fits;
}

// Every designed control as a person sees it: where it stands in the window, its font and its
// caption. Compared with the window's file under tests/shared/looks/, which the test writes
// instead when GLIDEPATH_WRITE_LOOKS is set (after a change to a window's look, reviewed in git).
QStringList lookOf(QWidget& window)
{
    QStringList lines{QStringLiteral("window %1x%2").arg(window.width()).arg(window.height())};
    for (QWidget* w : window.findChildren<QWidget*>()) {
        if (w->objectName().isEmpty() || w->objectName().startsWith(QLatin1String("qt_")) || !w->isVisibleTo(&window))
            continue;
        QString caption = captionOf(w);
        const QPoint at = w->mapTo(&window, QPoint());
        lines << QStringLiteral("%1 %2,%3 %4x%5 %6 %7%8 %9")
                     .arg(w->objectName()).arg(at.x()).arg(at.y()).arg(w->width()).arg(w->height())
                     .arg(w->font().family()).arg(w->font().pointSizeF()).arg(w->font().bold() ? " bold" : "")
                     .arg(caption.replace(QLatin1Char('\n'), QLatin1String("\\n"))).trimmed();
    }
    return lines;
}

} // namespace

class TestWindows : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void captions_data();
    void captions();
    void fontColours_data();
    void fontColours();
    void resizeRules_data();
    void resizeRules();
    void missingPictures_data();
    void missingPictures();
    void tabMovesTheKeyboardOn();

private:
    // Its own thread: the source viewer's fetch waits without processing this thread's messages.
    HttpServerThread m_serverThread;
    HttpServer& m_server = m_serverThread.server();
};

void TestWindows::captions_data()
{
    QTest::addColumn<Opens>("open");
    QTest::addColumn<QStringList>("texts"); // the designed ones, among all it shows
    QTest::newRow("IntroFRM") << opens<IntroFRM>() << QStringList{"Click Anywhere To Enter."};
    QTest::newRow("ThemeSelector") << opens<ThemeSelector>()
                                   << QStringList{"Please Select a Directory For a Theme.", "Cancel", "Okay"};
    QTest::newRow("StatF, its longest text") << Opens([](Program& p) -> Form* {
        auto* pop = p.open<StatF>();
        pop->Info.setCaption(QStringLiteral("Loading BackGround (Main) Image..."));
        return pop;
    }) << QStringList{"Loading BackGround (Main) Image..."};
    QTest::newRow("MainFRM") << opens<MainFRM>() << QStringList{"Block Pop-Ups"};
    QTest::newRow("HomePageFRM") << opens<HomePageFRM>() << QStringList{"Cancel", "Okay"};
    QTest::newRow("BrowserStatusFRM") << Opens([](Program& p) -> Form* {
        p.open<MainFRM>(); // the window it reports on
        return p.open<BrowserStatusFRM>();
    }) << QStringList{"Percentage Loaded:", "Location Name:", "Location URL:", "Height (Pixles):", "Width (Pixles):",
                      "Window State:"};
    QTest::newRow("CalculatorFRM") << opens<CalculatorFRM>()
                                   << QStringList{"Back", "CE", "C", "MC", "MR", "MS", "M+", "7", "8", "9", "4", "5", "6",
                                                  "1", "2", "3", "0", ".", "+/-", "/", "*", "-", "+", "Sqrt", "%", "1/X", "="};
    QTest::newRow("DoodleFRM, the options in view") << Opens([](Program& p) -> Form* {
        auto* pad = p.open<DoodleFRM>();
        pad->TFrame.setTop(240);
        // Its timer's first tick shows the pen size in place of "...".
        return QTest::qWaitFor([&] { return pad->Data(4).Caption() != QLatin1String("..."); }) ? pad : nullptr;
    }) << QStringList{"Options", "Pen Size", "Clear", "Hide This Window"};
    QTest::newRow("AboutFRM") << opens<AboutFRM>()
                              << QStringList{"Glide Path", "Programmer:", "Thanks To:", "Form Count:",
                                             "18 Plus 1 Unveiwable and 1 Hidden. (Secret Place)", "Version:", "2.0",
                                             "Files Included with Executive File:", "All Skins and Sounds", "Other:",
                                             "932 Lines of Code, Total", "Please Enjoy This Marlo Production"};
    QTest::newRow("SecretPlace") << opens<SecretPlace>()
                                 << QStringList{"Author", "You've Found the Secret Place.",
                                                "This is the Author of This Application, Marlo...",
                                                "This Little Window Will Disappear in 15 Seconds", "His E-Mail Adresses are:"};
    QTest::newRow("EditorFRM") << opens<EditorFRM>() << QStringList{"&Open", "&Save", "&Preview"};
    QTest::newRow("HTMLViewerFRM") << Opens([this](Program& p) -> Form* {
        p.open<MainFRM>()->URLC.setText(m_server.url("/titled").toString()); // what it fetches first
        return p.open<HTMLViewerFRM>();
    }) << QStringList{"URL:", "View Source", "Open In Editor"};
    // Windows without a designed caption, for their look.
    QTest::newRow("EditorBrowserFRM") << opens<EditorBrowserFRM>() << QStringList{};
    QTest::newRow("NotePadFRM") << opens<NotePadFRM>() << QStringList{};
    QTest::newRow("ReadMeFRM") << opens<ReadMeFRM>() << QStringList{};
    QTest::newRow("DriveExplorerFRM") << opens<DriveExplorerFRM>() << QStringList{};
    QTest::newRow("FavoritePlacesFRM") << opens<FavoritePlacesFRM>() << QStringList{};
}

void TestWindows::captions()
{
    QFETCH(Opens, open);
    QFETCH(QStringList, texts);
    Program p;
    Form* window = open(p);
    QVERIFY(window);
    const QList<Fit> fits = captionsOf(*window->widget());
    QStringList shown;
    for (const Fit& fit : fits) {
        shown << fit.text;
        QVERIFY2(fit.needed <= fit.room, qPrintable(QStringLiteral("\"%1\" needs %2 px, has %3").arg(fit.text).arg(fit.needed).arg(fit.room)));
    }
    for (const QString& text : texts)
        QVERIFY2(shown.contains(text), qPrintable(text + " is not among " + shown.join(" | ")));

    // The main window's layout follows its menu bar's height in this desktop's font.
    if (dynamic_cast<MainFRM*>(window) || dynamic_cast<BrowserStatusFRM*>(window))
        return;
    QFile file(QStringLiteral(GLIDEPATH_SOURCE_DIR "/tests/shared/looks/") + window->objectName() + ".txt");
    const QStringList look = lookOf(*window->widget());
    if (qEnvironmentVariableIsSet("GLIDEPATH_WRITE_LOOKS")) {
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write((look.join('\n') + '\n').toUtf8());
        return;
    }
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName()));
    const QStringList designed = QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < std::max(look.size(), designed.size()); ++i)
        QCOMPARE(look.value(i), designed.value(i));
}

void TestWindows::fontColours_data()
{
    QTest::addColumn<QByteArray>("code"); // ForeC.INI; null: none
    QTest::addColumn<Opens>("open");
    QTest::addColumn<Reads>("read");
    QTest::addColumn<QList<int>>("colours");
    QTest::addColumn<int>("error");
    auto list = [](int n, OleColor c) { return QList<int>(n, int(c)); };
    const int white = vbWhite, black = vbBlack, face = int(vbButtonFace), work = int(vbApplicationWorkspace);
    const int grey = int(RGB(224, 224, 224));
    // The intro: its label's text, the window's background and the frame around it.
    const Reads intro = reads<IntroFRM>([](IntroFRM& w) {
        return QList<int>{int(w.ClickAnywhereToEnter.ForeColor()), int(w.BackColor()), int(w.IntroFormBorder.BorderColor())};
    });
    QTest::newRow("intro, 1") << QByteArray("1") << opens<IntroFRM>() << intro << QList<int>{white, black, black} << 0;
    QTest::newRow("intro, 2") << QByteArray("2") << opens<IntroFRM>() << intro << QList<int>{black, white, white} << 0;
    QTest::newRow("intro, 3") << QByteArray("3") << opens<IntroFRM>() << intro << QList<int>{face, work, work} << 0;
    QTest::newRow("intro, 2 with its line end: as designed") << QByteArray("2\r\n") << opens<IntroFRM>() << intro
                                                             << QList<int>{white, face, int(vbWindowText)} << 0;
    const Reads main = reads<MainFRM>([](MainFRM& w) { return QList<int>{int(w.CheckData.ForeColor())}; });
    QTest::newRow("main window, 1") << QByteArray("1") << opens<MainFRM>() << main << QList<int>{white} << 0;
    QTest::newRow("main window, 2") << QByteArray("2") << opens<MainFRM>() << main << QList<int>{black} << 0;
    QTest::newRow("main window, 3") << QByteArray("3") << opens<MainFRM>() << main << QList<int>{face} << 0;
    QTest::newRow("main window, none") << QByteArray() << opens<MainFRM>() << main << QList<int>{int(vbButtonText)} << 0;
    // The browser status window's twelve labels; it tests "?" where the others test "3".
    const Reads status = reads<BrowserStatusFRM>([](BrowserStatusFRM& w) {
        return arrayColours(w.Info) + colours({&w.PercentageLoaded, &w.LocationName, &w.LocationURLL, &w.WindowStateLBL,
                                               &w.HeightQ, &w.WidthQ});
    });
    QList<int> statusDesigned = list(12, vbWhite);
    statusDesigned[1] = grey;
    QTest::newRow("browser status, 1") << QByteArray("1") << opens<BrowserStatusFRM>() << status << list(12, vbWhite) << 0;
    QTest::newRow("browser status, 2") << QByteArray("2") << opens<BrowserStatusFRM>() << status << list(12, vbBlack) << 0;
    QTest::newRow("browser status, ?") << QByteArray("?") << opens<BrowserStatusFRM>() << status << list(12, vbButtonFace) << 0;
    QTest::newRow("browser status, 3: as designed") << QByteArray("3") << opens<BrowserStatusFRM>() << status << statusDesigned << 0;
    // The about box's fifteen labels, by index.
    const Reads about = reads<AboutFRM>([](AboutFRM& w) { return arrayColours(w.Data); });
    QList<int> aboutDesigned = list(15, vbWhite);
    aboutDesigned[1] = grey;
    QTest::newRow("about, 1") << QByteArray("1") << opens<AboutFRM>() << about << list(15, vbWhite) << 0;
    QTest::newRow("about, 2") << QByteArray("2") << opens<AboutFRM>() << about << list(15, vbBlack) << 0;
    QTest::newRow("about, 3") << QByteArray("3") << opens<AboutFRM>() << about << list(15, vbButtonFace) << 0;
    QTest::newRow("about, 4: as designed") << QByteArray("4") << opens<AboutFRM>() << about << aboutDesigned << 0;
    QTest::newRow("about, none: as designed") << QByteArray() << opens<AboutFRM>() << about << aboutDesigned << 0;
    // The source viewer gives its colour to an object it never set: a code ends the program.
    const Opens viewer = [this](Program& p) -> Form* {
        p.open<MainFRM>()->URLC.setText(m_server.url("/titled").toString());
        return p.open<HTMLViewerFRM>();
    };
    const Reads nothing = [](Form&) { return QList<int>{}; };
    QTest::newRow("source viewer, 2") << QByteArray("2") << viewer << nothing << QList<int>{} << int(ErrObjectRequired);
    QTest::newRow("source viewer, 4") << QByteArray("4") << viewer << nothing << QList<int>{} << 0;
}

void TestWindows::fontColours()
{
    QFETCH(QByteArray, code);
    QFETCH(Opens, open);
    QFETCH(Reads, read);
    QFETCH(QList<int>, colours);
    QFETCH(int, error);
    Program p({.fontColour = code});
    const int requests = m_server.requests();
    Form* window = open(p);
    QCOMPARE(p.untrappedErrors, error ? QList<int>{error} : QList<int>{});
    if (error) {
        QCOMPARE(m_server.requests(), requests); // it ended before it fetched anything
        return;
    }
    QVERIFY(window);
    QCOMPARE(read(*window), colours);
}

void TestWindows::resizeRules_data()
{
    QTest::addColumn<Opens>("open");
    QTest::addColumn<QSize>("outer"); // twips
    QTest::addColumn<Reads>("read");
    QTest::addColumn<QList<int>>("twips"); // -1: as it was before
    QTest::addColumn<int>("error");
    const Reads main = reads<MainFRM>([](MainFRM& w) {
        return QList<int>{w.URLC.Width(), w.BrowserWindow.Width(), w.BrowserWindow.Height(), w.MainFBackGroundImage.Width(),
                          w.MainFBackGroundImage.Height()};
    });
    QTest::newRow("main window") << opens<MainFRM>() << QSize(5000, 4000) << main << twips({4625, 4625, 2100, 5000, 4000}) << 0;
    QTest::newRow("main window too narrow") << opens<MainFRM>() << QSize(300, 1000) << main << twips({-1, -1, -1, 300, 1000}) << 0;
    // The pane's width, height and top below the list (315 high), and the list's width.
    const Reads drives = reads<DriveExplorerFRM>([](DriveExplorerFRM& w) {
        return QList<int>{w.DriveExplorerWindow.Width(), w.DriveExplorerWindow.Height(), w.DriveExplorerWindow.Top(),
                          w.DriveOne.Width()};
    });
    QTest::newRow("drive explorer") << opens<DriveExplorerFRM>() << QSize(6000, 4000) << drives << twips({5870, 3165, 315, 5870}) << 0;
    QTest::newRow("drive explorer too low") << opens<DriveExplorerFRM>() << QSize(3000, 600) << drives << twips({2870, -1, 315, 2870}) << 0;
    const Reads editor = reads<EditorFRM>([](EditorFRM& w) {
        return QList<int>{w.PreviewCMD.Left(), w.RichText.Width(), w.RichText.Height(), w.ImagePic.Width(), w.ImagePic.Height()};
    });
    QTest::newRow("editor: Preview right-aligned") << opens<EditorFRM>() << QSize(9000, 6000) << editor << twips({7185, 8650, 4900, 9000, 6000}) << 0;
    QTest::newRow("editor: Preview stops at Save") << opens<EditorFRM>() << QSize(4000, 3000) << editor << twips({2760, 3650, 1900, 4000, 3000}) << 0;
    QTest::newRow("editor too small") << opens<EditorFRM>() << QSize(300, 900) << editor << twips({2760, -1, -1, 300, 900}) << 0;
    const Reads preview = reads<EditorBrowserFRM>([](EditorBrowserFRM& w) {
        return QList<int>{w.BrowserWindow.Width(), w.BrowserWindow.Height()};
    });
    QTest::newRow("preview") << opens<EditorBrowserFRM>() << QSize(8280, 6000) << preview << twips({7920, 5640}) << 0;
    QTest::newRow("preview too narrow: untrapped") << opens<EditorBrowserFRM>() << QSize(300, 6000) << preview << twips({})
                                                   << int(ErrInvalidPropertyValue);
    const Reads notes = reads<NotePadFRM>([](NotePadFRM& w) {
        return QList<int>{w.Data.Width(), w.Data.Height(), w.Data.Left(), w.Data.Top()};
    });
    QTest::newRow("note pad") << opens<NotePadFRM>() << QSize(6270, 3975) << notes << twips({6150, 3575, 0, 0}) << 0;
    QTest::newRow("note pad smallest") << opens<NotePadFRM>() << QSize(120, 400) << notes << twips({0, 0, 0, 0}) << 0;
    QTest::newRow("note pad too narrow: untrapped") << opens<NotePadFRM>() << QSize(105, 3000) << notes << twips({})
                                                    << int(ErrInvalidPropertyValue);
    QTest::newRow("note pad too low: untrapped") << opens<NotePadFRM>() << QSize(3000, 390) << notes << twips({})
                                                 << int(ErrInvalidPropertyValue);
    const Reads readme = reads<ReadMeFRM>([](ReadMeFRM& w) { return QList<int>{w.Data.Width(), w.Data.Height()}; });
    QTest::newRow("readme") << opens<ReadMeFRM>() << QSize(12000, 8000) << readme << twips({11880, 7600}) << 0;
    QTest::newRow("readme too low: untrapped") << opens<ReadMeFRM>() << QSize(3000, 300) << readme << twips({})
                                               << int(ErrInvalidPropertyValue);
    const Reads secret = reads<SecretPlace>([](SecretPlace& w) { return QList<int>{w.TImage(0).Width(), w.TImage(0).Height()}; });
    QTest::newRow("hidden page") << opens<SecretPlace>() << QSize(9000, 6000) << secret << twips({9000, 6000}) << 0;
}

void TestWindows::resizeRules()
{
    QFETCH(Opens, open);
    QFETCH(QSize, outer);
    QFETCH(Reads, read);
    QFETCH(QList<int>, twips);
    QFETCH(int, error);
    Program p;
    Form* window = open(p);
    QVERIFY(window);
    const QList<int> before = read(*window);
    runHandler([&] {
        window->setWidth(outer.width());
        window->setHeight(outer.height());
    });
    QCOMPARE(p.untrappedErrors, error ? QList<int>{error} : QList<int>{});
    if (error)
        return;
    QList<int> expected = twips;
    for (qsizetype i = 0; i < expected.size(); ++i)
        if (expected[i] < 0)
            expected[i] = before.value(i);
    QCOMPARE(read(*window), expected);
}

void TestWindows::missingPictures_data()
{
    QTest::addColumn<QString>("missing");
    QTest::addColumn<Opens>("open");
    QTest::addColumn<Presses>("press"); // null: the window's load fails
    const Presses none;
    QTest::newRow("main window, StopUP.BMP") << "StopUP.BMP" << opens<MainFRM>() << none;
    QTest::newRow("main window, StopDOWN.BMP") << "StopDOWN.BMP" << opens<MainFRM>()
                                               << Presses([](Form& w) -> Control* { return &static_cast<MainFRM&>(w).StopS; });
    QTest::newRow("favourites, AddUP.BMP") << "AddUP.BMP" << opens<FavoritePlacesFRM>() << none;
    QTest::newRow("favourites, Main.BMP") << "Main.BMP" << opens<FavoritePlacesFRM>() << none;
    QTest::newRow("favourites, DeleteDOWN.BMP") << "DeleteDOWN.BMP" << opens<FavoritePlacesFRM>()
                                                << Presses([](Form& w) -> Control* { return &static_cast<FavoritePlacesFRM&>(w).Del; });
    QTest::newRow("browser status, Main.BMP") << "Main.BMP" << opens<BrowserStatusFRM>() << none;
    QTest::newRow("calculator, Main.BMP") << "Main.BMP" << opens<CalculatorFRM>() << none;
    QTest::newRow("about, Main.BMP") << "Main.BMP" << opens<AboutFRM>() << none;
    QTest::newRow("editor, Main.BMP") << "Main.BMP" << opens<EditorFRM>() << none;
    QTest::newRow("intro, Intro.BMP") << "Intro.BMP" << opens<IntroFRM>() << none;
}

void TestWindows::missingPictures()
{
    QFETCH(QString, missing);
    QFETCH(Opens, open);
    QFETCH(Presses, press);
    QTemporaryDir theme;
    Program p({.theme = themeWithout(theme, missing)});
    Form* window = open(p);
    if (press) {
        QVERIFY(window);
        QCOMPARE(p.untrappedErrors, QList<int>{});
        input::click(*press(*window));
    }
    QCOMPARE(p.untrappedErrors, QList<int>{ErrFileNotFound});
}

// Tab and Shift+Tab walk a window's controls in their tab order, the multi-line text box among
// them, and are no character for a control's KeyPress while another control takes the keyboard.
void TestWindows::tabMovesTheKeyboardOn()
{
    auto has = [](Control& c) { return QApplication::focusWidget() && (QApplication::focusWidget() == c.widget() ||
                                                                      c.widget()->isAncestorOf(QApplication::focusWidget())); };
    Program p;
    p.open<MainFRM>()->URLC.setText(m_server.url("/titled").toString());
    HTMLViewerFRM* viewer = p.open<HTMLViewerFRM>();
    QVERIFY(viewer);
    const QString source = viewer->HTML.Text();
    input::focus(viewer->URL);
    for (Control* next : std::initializer_list<Control*>{&viewer->VS, &viewer->HTML, &viewer->OpenInEd}) {
        input::keyInto(*viewer->widget(), Qt::Key_Tab);
        QVERIFY2(has(*next), qPrintable(next->Name()));
    }
    input::keyInto(*viewer->widget(), Qt::Key_Tab, Qt::ShiftModifier);
    QVERIFY(has(viewer->HTML));
    QCOMPARE(viewer->HTML.Text(), source);
    // The address box holding the access phrase: Tab opens nothing. The calculator's "=": Tab
    // leaves the display as it was.
    MainFRM& main = form<MainFRM>();
    main.URLC.setText(QString());
    input::type(main.URLC, QStringLiteral("Crane at Dusk"));
    input::key(main.URLC, Qt::Key_Tab);
    QVERIFY(!has(main.URLC));
    QVERIFY(!p.runtime().forms().isLoaded<SecretPlace>());
    CalculatorFRM* calc = p.open<CalculatorFRM>();
    QVERIFY(calc);
    QTRY_VERIFY(has(calc->cmdEqual));
    input::keyInto(*calc->widget(), Qt::Key_Tab);
    QVERIFY(!has(calc->cmdEqual));
    QCOMPARE(calc->txtDisplay.Text(), QStringLiteral("0"));
    QCOMPARE(p.untrappedErrors, QList<int>{});
}

GLIDEPATH_TEST_MAIN(TestWindows)
#include "tst_windows.moc"
