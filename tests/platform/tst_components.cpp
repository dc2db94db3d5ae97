// The hosted components' own decisions: what a typed address means, how a classic dialog
// filter reads, the directory list's path rules, the rich text box's long lines, and the
// commands the browser component refuses.

#include "platform/common_dialog.h"
#include "platform/dir_list.h"
#include "platform/errors.h"
#include "platform/form.h"
#include "platform/rich_text_box.h"
#include "platform/runtime.h"
#include "platform/web_browser.h"
#include "support/input.h"
#include "support/test_main.h"
#include "support/test_runtime.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QGuiApplication>
#include <QDir>
#include <QSignalSpy>

using namespace platform;

namespace {
class Holder : public Form {
public:
    Holder() : Form("Holder", 4000, 4000) {}
    DirListBox Dir{*this, "Dir", {0, 0, 3000, 3000}};
    RichTextBox Rich{*this, "Rich", {0, 3000, 4000, 1000}};
};

class Pane : public Form {
public:
    Pane() : Form("Pane", 4000, 4000) {}
    WebBrowser Browser{*this, "Browser", {0, 0, 4000, 4000}};
};
} // namespace

class TestComponents : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void typedAddresses_data();
    void typedAddresses();
    void dialogFilters_data();
    void dialogFilters();
    void fileDialogAnswer();
    void directoryList();
    void longLinesEditedAsOne_data();
    void longLinesEditedAsOne();
    void execWBRefusals_data();
    void execWBRefusals();
};

void TestComponents::typedAddresses_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("url");
    QTest::newRow("empty: a blank page") << "" << "about:blank";
    QTest::newRow("blanks only") << "  \r\n" << "about:blank";
    QTest::newRow("host without a scheme") << "example.org" << "http://example.org";
    QTest::newRow("home page file's line end") << "example.org/a\r\n" << "http://example.org/a";
    QTest::newRow("address and port") << "127.0.0.1:8080/page" << "http://127.0.0.1:8080/page";
    QTest::newRow("full address kept") << "https://example.org/x?y=1" << "https://example.org/x?y=1";
    QTest::newRow("local path") << "/tmp/some page.html" << "file:///tmp/some%20page.html";
    QTest::newRow("file address") << "file:///etc/hosts" << "file:///etc/hosts";
    QTest::newRow("home directory") << "~/index.html" << QUrl::fromLocalFile(QDir::homePath() + "/index.html").toString(QUrl::FullyEncoded);
}

void TestComponents::typedAddresses()
{
    QFETCH(QString, typed);
    QFETCH(QString, url);
    QCOMPARE(WebBrowser::interpret(typed).toString(QUrl::FullyEncoded), url);
}

void TestComponents::dialogFilters_data()
{
    QTest::addColumn<QString>("classic");
    QTest::addColumn<QStringList>("filters");
    QTest::newRow("open page, blanks around the bar") << "All Internet Files (*.hmt,*.html,*.asp,*.shtml,*.js,*.dhtml) | *.htm;*.html;*.asp;*.shtml;*.js;*.dhtml"
                                                      << QStringList{"All Internet Files (*.hmt,*.html,*.asp,*.shtml,*.js,*.dhtml) (*.htm *.html *.asp *.shtml *.js *.dhtml)"};
    QTest::newRow("save page") << "htm (*.htm) | *.htm" << QStringList{"htm (*.htm) (*.htm)"};
    QTest::newRow("two pairs") << "Text|*.txt|All|*.*" << QStringList{"Text (*.txt)", "All (*.*)"};
    QTest::newRow("no pattern") << "Text" << QStringList{};
}

void TestComponents::dialogFilters()
{
    QFETCH(QString, classic);
    QFETCH(QStringList, filters);
    QCOMPARE(CommonDialog::nameFilters(classic), filters);
}

void TestComponents::fileDialogAnswer()
{
    TestRuntime t;
    const QList<FileDialogRequest>& asked = t.dialogs->fileRequests;
    QString answer = QStringLiteral("/tmp/chosen.htm");
    t.dialogs->fileAnswer = [&](const FileDialogRequest&) { return answer; };
    CommonDialog cd;
    cd.Filter = QStringLiteral("htm (*.htm) | *.htm");
    cd.ShowSave();
    QCOMPARE(cd.FileName, answer);
    QVERIFY(asked.at(0).save);
    answer.clear(); // cancelled: the last choice stays
    cd.ShowOpen();
    QCOMPARE(cd.FileName, QStringLiteral("/tmp/chosen.htm"));
    QCOMPARE(asked.at(1).fileName, QStringLiteral("/tmp/chosen.htm")); // and is offered again
    QVERIFY(!asked.at(1).save);
    QCOMPARE(asked.at(1).filter, cd.Filter);
}

void TestComponents::directoryList()
{
    TestRuntime t;
    QDir(AppPath()).mkpath(QStringLiteral("Blue/Deep"));
    Holder& holder = form<Holder>();
    int changed = 0;
    holder.Dir.onChange([&] { ++changed; });
    holder.Dir.setPath(AppPath() + "\\Blue"); // either slash
    QCOMPARE(holder.Dir.Path(), AppPath() + "/Blue");
    QCOMPARE(changed, 1);
    holder.Dir.setPath(AppPath() + "/Blue"); // the same path again: no change
    QCOMPARE(changed, 1);
    OnErrorResumeNext next;
    next([&] { holder.Dir.setPath(AppPath() + "/Missing"); });
    QCOMPARE(next.Err(), int(ErrPathNotFound));
    QCOMPARE(holder.Dir.Path(), AppPath() + "/Blue");
    holder.Show(); // filled when first shown, opened at its path
    QVERIFY(QTest::qWaitForWindowExposed(holder.widget()));
    QCOMPARE(holder.Dir.Path(), AppPath() + "/Blue");

    // An arrow key only highlights the sub-directory; Enter opens it.
    auto* tree = static_cast<QAbstractItemView*>(holder.Dir.widget());
    QTRY_COMPARE(tree->model()->rowCount(tree->currentIndex()), 1); // "Deep" has been read
    input::key(holder.Dir, Qt::Key_Down);
    QTRY_COMPARE(tree->currentIndex().data().toString(), QStringLiteral("Deep"));
    // A directory above it changing on disk, read again, leaves the highlight where it is.
    QSignalSpy reread(tree->model(), SIGNAL(directoryLoaded(QString)));
    QDir(AppPath()).mkdir(QStringLiteral("Green"));
    QTRY_VERIFY(reread.contains(QVariantList{AppPath()}));
    QCOMPARE(tree->currentIndex().data().toString(), QStringLiteral("Deep"));
    QCOMPARE(holder.Dir.Path(), AppPath() + "/Blue");
    QCOMPARE(changed, 1);
    input::key(holder.Dir, Qt::Key_Return);
    QCOMPARE(holder.Dir.Path(), AppPath() + "/Blue/Deep");
    QCOMPARE(changed, 2);
}

// A line too long to lay out at every key is shown in pieces; whatever a person does with the
// keyboard, the text reads as if the line had never been broken.
void TestComponents::longLinesEditedAsOne_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("keys"); // a key, then its modifiers
    QTest::addColumn<QString>("expected");
    QTest::addColumn<bool>("copyAll"); // the clipboard after select all and copy holds expected

    QString line;
    for (int i = 0; line.size() < 10000; ++i)
        line += QStringLiteral("<b>%1</b>").arg(i);
    const int piece = 4096;
    const int ctrl = int(Qt::ControlModifier), none = 0;
    const QList<int> toSecondPiece{Qt::Key_Home, ctrl, Qt::Key_Down, none};
    QTest::newRow("typed at the start") << line << QList<int>{Qt::Key_Home, ctrl, Qt::Key_X, none}
                                        << QStringLiteral("x") + line << false;
    QTest::newRow("typed at the end") << line << QList<int>{Qt::Key_End, ctrl, Qt::Key_X, none} << line + QStringLiteral("x") << false;
    QTest::newRow("Enter at a piece's start breaks the line")
        << line << toSecondPiece + QList<int>{Qt::Key_Return, none}
        << line.left(piece) + QStringLiteral("\r\n") + line.mid(piece) << false;
    QTest::newRow("a piece emptied, then Enter and a letter")
        << line << toSecondPiece + QList<int>{Qt::Key_End, int(Qt::ShiftModifier), Qt::Key_Delete, none, Qt::Key_Return, none, Qt::Key_Y, none}
        << line.left(piece) + QStringLiteral("\r\ny") + line.mid(2 * piece) << false;
    QTest::newRow("Backspace at a piece's start") << line << toSecondPiece + QList<int>{Qt::Key_Backspace, none}
                                                  << line.left(piece - 1) + line.mid(piece) << false;
    QTest::newRow("Delete at a piece's end") << line << QList<int>{Qt::Key_Home, ctrl, Qt::Key_End, none, Qt::Key_Delete, none}
                                             << line.left(piece) + line.mid(piece + 1) << false;
    QTest::newRow("Enter undone") << line << toSecondPiece + QList<int>{Qt::Key_Return, none, Qt::Key_Z, ctrl, Qt::Key_X, none}
                                  << line.left(piece) + QStringLiteral("x") + line.mid(piece) << false;
    QTest::newRow("among short lines") << QStringLiteral("short\r\n") + line + QStringLiteral("\r\nend")
                                       << QList<int>{Qt::Key_End, ctrl, Qt::Key_X, none}
                                       << QStringLiteral("short\r\n") + line + QStringLiteral("\r\nendx") << true;
    QTest::newRow("two long lines, a lone CR between") << line + QStringLiteral("\r\n\r") + line
                                                       << QList<int>{Qt::Key_End, ctrl, Qt::Key_X, none}
                                                       << line + QStringLiteral("\r\n\r\n") + line + QStringLiteral("x") << false;
    QTest::newRow("one past a piece") << line.left(piece + 1) << QList<int>{Qt::Key_End, ctrl, Qt::Key_X, none}
                                      << line.left(piece + 1) + QStringLiteral("x") << true;
    QTest::newRow("copied whole") << line << QList<int>{Qt::Key_End, ctrl, Qt::Key_X, none} << line + QStringLiteral("x") << true;
}

void TestComponents::longLinesEditedAsOne()
{
    QFETCH(QString, text);
    QFETCH(QList<int>, keys);
    QFETCH(QString, expected);
    QFETCH(bool, copyAll);
    TestRuntime t;
    Holder& holder = form<Holder>();
    holder.Rich.setText(text);
    QCOMPARE(holder.Rich.Text(), text);
    QVERIFY(input::focus(holder.Rich));
    for (int i = 0; i < keys.size(); i += 2)
        input::key(holder.Rich, Qt::Key(keys.at(i)), Qt::KeyboardModifiers(keys.at(i + 1)));
    QCOMPARE(holder.Rich.Text(), expected);
    if (copyAll) {
        input::key(holder.Rich, Qt::Key_A, Qt::ControlModifier);
        input::key(holder.Rich, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QString(expected).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
    }
}

void TestComponents::execWBRefusals_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<QVariant>("in");
    QTest::addColumn<int>("error");
    QTest::newRow("zoom level 5") << int(OLECMDID_ZOOM) << QVariant(5) << int(ErrInvalidProcedureCall);
    QTest::newRow("zoom level -1") << int(OLECMDID_ZOOM) << QVariant(-1) << int(ErrInvalidProcedureCall);
    QTest::newRow("zoom without a level") << int(OLECMDID_ZOOM) << QVariant() << int(ErrInvalidProcedureCall);
    QTest::newRow("zoom level 4 is fine") << int(OLECMDID_ZOOM) << QVariant(4) << 0;
    QTest::newRow("a command the component lacks") << 99 << QVariant() << -2147467259;
}

void TestComponents::execWBRefusals()
{
    QFETCH(int, command);
    QFETCH(QVariant, in);
    QFETCH(int, error);
    TestRuntime t;
    QVariant out = 1;
    runHandler([&] { form<Pane>().Browser.ExecWB(command, OLECMDEXECOPT_DONTPROMPTUSER, in, &out); });
    QCOMPARE(t.untrappedErrors, error ? QList<int>{error} : QList<int>{});
}

GLIDEPATH_TEST_MAIN(TestComponents)
#include "tst_components.moc"
