// The HTML tools on the real windows, the real web engine and a real HTTP server on 127.0.0.1:
// the editor's template, Open, Save and Preview, the source viewer's fetch at once and on Enter,
// its error text, the hand-over to the editor, and the transfer control.

#include "browser/main_window.h"
#include "htmltools/editor.h"
#include "htmltools/editor_browser.h"
#include "htmltools/html_viewer.h"
#include "shared/statf.h"
#include "platform/inet.h"
#include "support/http_server.h"
#include "support/input.h"
#include "support/program.h"
#include "support/test_main.h"

#include <QElapsedTimer>
#include <QTcpServer>

using namespace platform;

namespace {

const QString kNothing = QStringLiteral("There Was an Error. Check Your Internet Connection or URL.");

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
    void previewShowsTheTypedPage();
    void viewerFetchesAtOnce_data();
    void viewerFetchesAtOnce();
    void transferControlAddresses_data();
    void transferControlAddresses();

private:
    // Its own thread: the viewer's fetch waits without processing this thread's messages.
    HttpServerThread m_serverThread;
    HttpServer& m_server = m_serverThread.server();
};

void TestHtmlTools::editorTemplateOpenAndSave()
{
    Program tools;
    auto* opened = tools.open<EditorFRM>();
    QVERIFY(opened);
    EditorFRM& editor = *opened;
    QCOMPARE(editor.RichText.Text(), QStringList({"<HTML>", "", "<HEAD>", "<TITLE>Web Page</TITLE>", "</HEAD>", "",
                                                  "<BODY>", "", "</BODY>", "", "</HTML>"})
                                         .join(QLatin1String("\r\n")));
    QString answer = tools.path("three.html");
    tools.dialogs->fileAnswer = [&](const FileDialogRequest&) { return answer; };

    tools.write("three.html", "a\r\nb\r\nc\r\n");
    input::click(editor.OpenCMD);
    QCOMPARE(editor.RichText.Text(), QStringLiteral("abc")); // lines joined with nothing between
    QCOMPARE(tools.dialogs->fileRequests.last().filter, QStringLiteral("HTML Files (*.html)|*.html|HTM Files (*.htm)|*.htm)"));

    tools.write("empty.html", "");
    answer = tools.path("empty.html");
    input::click(editor.OpenCMD);
    QCOMPARE(editor.RichText.Text(), QStringLiteral("abc")); // an empty file changes nothing

    answer = tools.path("saved.html");
    editor.RichText.setText(QStringLiteral("<p>x</p>"));
    input::click(editor.SaveCMD);
    QCOMPARE(tools.read("saved.html"), QByteArray("<p>x</p>\r\n"));
    answer.clear(); // cancelled: the last name is used again
    editor.RichText.setText(QStringLiteral("<p>y</p>"));
    input::click(editor.SaveCMD);
    QCOMPARE(tools.read("saved.html"), QByteArray("<p>y</p>\r\n"));
    QVERIFY(tools.dialogs->fileRequests.last().save);
    QCOMPARE(tools.untrappedErrors, QList<int>{});
}

void TestHtmlTools::previewShowsTheTypedPage()
{
    Program tools;
    auto* editor = tools.open<EditorFRM>();
    QVERIFY(editor);
    editor->RichText.setText(QString());
    input::type(editor->RichText, QStringLiteral("<html><head><title>Typed Here</title></head><body>hi</body></html>"));
    input::click(editor->PreviewCMD);
    EditorBrowserFRM& preview = form<EditorBrowserFRM>();
    QVERIFY(preview.Visible());
    QTRY_COMPARE_WITH_TIMEOUT(preview.BrowserWindow.LocationName(), QStringLiteral("Typed Here"), 20000);
    QCOMPARE(tools.read("Preview.html"), QByteArray("<html><head><title>Typed Here</title></head><body>hi</body></html>\r\n"));
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
    Program tools;
    tools.open<MainFRM>()->URLC.setText(address);
    tools.status.clear(); // the main window's own start-up texts
    QElapsedTimer clock;
    clock.start();
    auto* viewer = tools.open<HTMLViewerFRM>();
    QVERIFY(viewer);
    QVERIFY(clock.elapsed() < Inet::kTimeoutMs);
    QCOMPARE(viewer->URL.Text(), address);
    QVERIFY2(viewer->HTML.Text().contains(shows), qPrintable(viewer->HTML.Text().left(200)));
    // The load shows the pop-up around its own fetch, and the fetch around itself.
    QCOMPARE(tools.status, (QStringList{"Loading HTML Code... Please Wait.", "Loading HTML Code... Please Wait.",
                                        "Done Loading HTML Code.", "Done Loading HTML Code."}));
    QVERIFY(viewer->VS.Enabled());
    QCOMPARE(tools.untrappedErrors, QList<int>{});
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

GLIDEPATH_TEST_MAIN(TestHtmlTools)
#include "tst_htmltools.moc"
