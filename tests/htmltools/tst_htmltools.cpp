// The HTML tools on the real windows, the real web engine and a real HTTP server on 127.0.0.1:
// the editor's template, Open, Save and Preview, both resize rules, the source viewer's fetch
// at once and on Enter, its error text, the hand-over to the editor, and the transfer control.

#include "browser/main_window.h"
#include "htmltools/editor.h"
#include "htmltools/editor_browser.h"
#include "htmltools/html_viewer.h"
#include "shared/statf.h"
#include "startup/theme_selector.h"
#include "platform/inet.h"
#include "platform/runtime.h"
#include "support/http_server.h"
#include "support/input.h"
#include "support/test_main.h"
#include "support/test_runtime.h"

#include <QElapsedTimer>
#include <QTcpServer>

using namespace platform;

namespace {

const QString kThemes = QStringLiteral(GLIDEPATH_SOURCE_DIR "/themes");
const QString kNothing = QStringLiteral("There Was an Error. Check Your Internet Connection or URL.");

// A program directory with the Default theme and the given home page, and what the status
// pop-up says.
struct Tools {
    explicit Tools(const QString& home = QStringLiteral("about:blank"))
    {
        t.write("ThemeDir.INI", "[Theme Directory]\r\nDIR=" + (kThemes + "/Default").toLocal8Bit() + "\r\n");
        t.write("HomePage.TXT", home.toLocal8Bit());
        form<ThemeSelector>().TPath.setText(kThemes + "/Default"); // as the program's start leaves it
        // Every status pop-up, each made afresh after an unload.
        t.runtime().forms().setCreatedHook([this](Form& window) {
            if (auto* pop = dynamic_cast<StatF*>(&window))
                QObject::connect(&pop->Info, &Control::textWritten, [this](const QString& s) { status << s; });
        });
    }
    template <class F>
    F& open()
    {
        F* window = nullptr;
        runHandler([&] { window = &form<F>(); });
        return *window;
    }
    TestRuntime t;
    QStringList status;
};

int deadPort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort(); // closed again when the probe goes
}

} // namespace

class TestHtmlTools : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void editorTemplateOpenAndSave();
    void editorResizeRule_data();
    void editorResizeRule();
    void previewResizeRuleTrapsNothing();
    void previewShowsTheTypedPage();
    void viewerFetchesAtOnce_data();
    void viewerFetchesAtOnce();
    void viewerEnterFetchesAgainAndHandsOver();
    void viewerColourCodeEndsTheProgram();
    void transferControlAddresses_data();
    void transferControlAddresses();

private:
    // Its own thread: the viewer's fetch waits without processing this thread's messages.
    HttpServerThread m_serverThread;
    HttpServer& m_server = m_serverThread.server();
};

void TestHtmlTools::editorTemplateOpenAndSave()
{
    Tools tools;
    EditorFRM& editor = tools.open<EditorFRM>();
    QCOMPARE(editor.RichText.Text(), QStringList({"<HTML>", "", "<HEAD>", "<TITLE>Web Page</TITLE>", "</HEAD>", "",
                                                  "<BODY>", "", "</BODY>", "", "</HTML>"})
                                         .join(QLatin1String("\r\n")));
    QString answer = tools.t.path("three.html");
    tools.t.dialogs->fileAnswer = [&](const FileDialogRequest&) { return answer; };

    tools.t.write("three.html", "a\r\nb\r\nc\r\n");
    input::click(editor.OpenCMD);
    QCOMPARE(editor.RichText.Text(), QStringLiteral("abc")); // lines joined with nothing between
    QCOMPARE(tools.t.dialogs->fileRequests.last().filter, QStringLiteral("HTML Files (*.html)|*.html|HTM Files (*.htm)|*.htm)"));

    tools.t.write("empty.html", "");
    answer = tools.t.path("empty.html");
    input::click(editor.OpenCMD);
    QCOMPARE(editor.RichText.Text(), QStringLiteral("abc")); // an empty file changes nothing

    answer = tools.t.path("saved.html");
    editor.RichText.setText(QStringLiteral("<p>x</p>"));
    input::click(editor.SaveCMD);
    QCOMPARE(tools.t.read("saved.html"), QByteArray("<p>x</p>\r\n"));
    answer.clear(); // cancelled: the last name is used again
    editor.RichText.setText(QStringLiteral("<p>y</p>"));
    input::click(editor.SaveCMD);
    QCOMPARE(tools.t.read("saved.html"), QByteArray("<p>y</p>\r\n"));
    QVERIFY(tools.t.dialogs->fileRequests.last().save);
    QCOMPARE(tools.t.untrappedErrors, QList<int>{});
}

void TestHtmlTools::editorResizeRule_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("previewLeft");
    QTest::addColumn<int>("textWidth");
    QTest::addColumn<int>("textHeight");
    QTest::newRow("wider: Preview right-aligned") << 9000 << 6000 << 7185 << 8650 << 4900;
    QTest::newRow("narrow: Preview stops at Save") << 4000 << 3000 << 2760 << 3650 << 1900;
    QTest::newRow("too small: the text keeps its size") << 300 << 900 << 2760 << 3650 << 1900;
}

void TestHtmlTools::editorResizeRule()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, previewLeft);
    QFETCH(int, textWidth);
    QFETCH(int, textHeight);
    Tools tools;
    EditorFRM& editor = tools.open<EditorFRM>();
    editor.Show();
    QVERIFY(QTest::qWaitForWindowExposed(editor.widget()));
    if (width < 1000) { // the size before, which a window too small leaves
        editor.setWidth(4000);
        editor.setHeight(3000);
    }
    editor.setWidth(width);
    editor.setHeight(height);
    QCOMPARE(editor.PreviewCMD.Left(), previewLeft);
    QCOMPARE(editor.RichText.Width(), textWidth);
    QCOMPARE(editor.RichText.Height(), textHeight);
    QCOMPARE(editor.ImagePic.Width(), width);
    QCOMPARE(tools.t.untrappedErrors, QList<int>{});
}

void TestHtmlTools::previewResizeRuleTrapsNothing()
{
    Tools tools;
    EditorBrowserFRM& preview = tools.open<EditorBrowserFRM>(); // it shows itself
    QVERIFY(QTest::qWaitForWindowExposed(preview.widget()));
    preview.setWidth(8280);
    QCOMPARE(preview.BrowserWindow.Width(), 7920);
    QCOMPARE(tools.t.untrappedErrors, QList<int>{});
    preview.setWidth(300); // narrower than three margins: the error ends the program
    QCOMPARE(tools.t.untrappedErrors, QList<int>{ErrInvalidPropertyValue});
}

void TestHtmlTools::previewShowsTheTypedPage()
{
    Tools tools;
    EditorFRM& editor = tools.open<EditorFRM>();
    editor.Show();
    editor.RichText.setText(QString());
    input::type(editor.RichText, QStringLiteral("<html><head><title>Typed Here</title></head><body>hi</body></html>"));
    input::click(editor.PreviewCMD);
    EditorBrowserFRM& preview = form<EditorBrowserFRM>();
    QVERIFY(preview.Visible());
    QTRY_COMPARE_WITH_TIMEOUT(preview.BrowserWindow.LocationName(), QStringLiteral("Typed Here"), 20000);
    QCOMPARE(tools.t.read("Preview.html"), QByteArray("<html><head><title>Typed Here</title></head><body>hi</body></html>\r\n"));
    QCOMPARE(tools.status, (QStringList{"Creating Preview...", "Done Creating Preview."}));
    QVERIFY(!form<StatF>().Visible());
}

void TestHtmlTools::viewerFetchesAtOnce_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("shows");
    QTest::newRow("a page") << m_server.url("/titled").toString() << "<title>Titled Page</title>";
    QTest::newRow("a redirect followed") << m_server.url("/redirect").toString() << "<title>Titled Page</title>";
    QTest::newRow("a 404 page's own text") << m_server.url("/missing").toString() << "No such page.";
    QTest::newRow("an empty body") << m_server.url("/empty").toString() << kNothing;
    QTest::newRow("nobody listening") << QStringLiteral("http://127.0.0.1:%1/").arg(deadPort()) << kNothing;
    QTest::newRow("the home page file's line end") << m_server.url("/titled").toString() + "\r\n" << "<title>Titled Page</title>";
}

void TestHtmlTools::viewerFetchesAtOnce()
{
    QFETCH(QString, address);
    QFETCH(QString, shows);
    Tools tools;
    MainFRM& main = tools.open<MainFRM>();
    main.URLC.setText(address);
    tools.status.clear(); // the main window's own start-up texts
    QElapsedTimer clock;
    clock.start();
    HTMLViewerFRM& viewer = tools.open<HTMLViewerFRM>();
    QVERIFY(clock.elapsed() < Inet::kTimeoutMs);
    QVERIFY(viewer.Visible());
    QCOMPARE(viewer.URL.Text(), address);
    QVERIFY2(viewer.HTML.Text().contains(shows), qPrintable(viewer.HTML.Text().left(200)));
    // The load shows the pop-up around its own fetch, and the fetch around itself.
    QCOMPARE(tools.status, (QStringList{"Loading HTML Code... Please Wait.", "Loading HTML Code... Please Wait.",
                                        "Done Loading HTML Code.", "Done Loading HTML Code."}));
    QVERIFY(viewer.VS.Enabled());
    QCOMPARE(tools.t.untrappedErrors, QList<int>{});
}

void TestHtmlTools::viewerEnterFetchesAgainAndHandsOver()
{
    Tools tools;
    tools.open<MainFRM>().URLC.setText(m_server.url("/empty").toString());
    HTMLViewerFRM& viewer = tools.open<HTMLViewerFRM>();
    QCOMPARE(viewer.HTML.Text(), kNothing);
    viewer.URL.setText(QString());
    input::type(viewer.URL, m_server.typed("/titled")); // no scheme, as a person types it
    const int before = m_server.requests();
    input::key(viewer.URL, Qt::Key_Return);
    QCOMPARE(m_server.requests(), before + 1);
    QVERIFY(viewer.HTML.Text().contains(QLatin1String("<title>Titled Page</title>")));
    QVERIFY(!viewer.HTML.Text().contains(kNothing)); // replaced, not appended

    input::click(viewer.OpenInEd);
    EditorFRM& editor = form<EditorFRM>();
    QVERIFY(editor.Visible());
    QCOMPARE(editor.RichText.Text(), viewer.HTML.Text()); // the template replaced
    QVERIFY(viewer.Visible());
}

void TestHtmlTools::viewerColourCodeEndsTheProgram()
{
    Tools tools;
    tools.t.write("ForeC.INI", "1");
    tools.open<MainFRM>().URLC.setText(m_server.url("/titled").toString());
    runHandler([] { form<HTMLViewerFRM>(); }); // the load ends in the error: no window to hand back
    QCOMPARE(tools.t.untrappedErrors, QList<int>{ErrObjectRequired});
    QCOMPARE(m_server.paths().count("/titled") >= 1, true);
}

void TestHtmlTools::transferControlAddresses_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("error");
    QTest::newRow("nothing") << "" << ErrInetBadUrl;
    QTest::newRow("a scheme it cannot fetch") << "gopher2://example/" << ErrInetBadUrl;
    QTest::newRow("a local file") << "file" << 0;
}

void TestHtmlTools::transferControlAddresses()
{
    QFETCH(QString, address);
    QFETCH(int, error);
    TestRuntime t;
    t.write("page.html", "<p>on disk</p>");
    const QString asked = address == QLatin1String("file") ? QUrl::fromLocalFile(t.path("page.html")).toString() : address;
    Inet inet;
    OnErrorResumeNext next;
    QString text;
    next([&] { text = inet.OpenURL(asked); });
    QCOMPARE(next.Err(), error);
    if (!error)
        QCOMPARE(text, QStringLiteral("<p>on disk</p>"));
}

GLIDEPATH_WEB_TEST_MAIN(TestHtmlTools)
#include "tst_htmltools.moc"
