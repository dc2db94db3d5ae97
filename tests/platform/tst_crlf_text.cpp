// The CR LF text of a multi-line box, followed through the changes its document reports:
// typing, Enter and Shift+Enter, deletions across lines, a whole new text, and the reports it
// must refuse rather than follow wrongly. In the documents below, "|" is a paragraph separator
// and "~" a line separator; a document's raw text ends in its final "|".

#include "platform/crlf_text.h"

#include <QTest>

using namespace platform;

namespace {
QString raw(QString text)
{
    return text.replace(QLatin1Char('|'), QChar(QChar::ParagraphSeparator)).replace(QLatin1Char('~'), QChar(QChar::LineSeparator));
}
} // namespace

class TestCrLfText : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void start_data();
    void start();
    void follow_data();
    void follow();
};

void TestCrLfText::start_data()
{
    QTest::addColumn<QString>("document");
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("following");
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "|" << 1 << true << "";
    QTest::newRow("final separator given") << "ab|cd|" << 6 << true << "ab\r\ncd";
    QTest::newRow("final separator left out") << "ab|cd" << 6 << true << "ab\r\ncd";
    QTest::newRow("line separator") << "ab~cd|" << 6 << true << "ab\r\ncd";
    QTest::newRow("no-break space stays") << QStringLiteral("a\u00A0b|") << 4 << true << QStringLiteral("a\u00A0b");
    QTest::newRow("count disagrees") << "ab|" << 7 << false << "";
}

void TestCrLfText::start()
{
    QFETCH(QString, document);
    QFETCH(int, count);
    QFETCH(bool, following);
    QFETCH(QString, text);
    CrLfText crlf;
    QCOMPARE(crlf.start(raw(document), count), following);
    QCOMPARE(crlf.following(), following);
    if (following)
        QCOMPARE(crlf.text(), text);
}

void TestCrLfText::follow_data()
{
    // The document before, then the report: at position, removed characters replaced by the
    // inserted ones. The document after is the report carried out, unless a report that lies
    // about the change gives its own.
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("removed");
    QTest::addColumn<QString>("inserted");
    QTest::addColumn<QString>("after");   // empty: the report carried out
    QTest::addColumn<bool>("following");
    QTest::addColumn<QString>("text");
    QTest::newRow("a letter typed at the end") << "ab|" << 2 << 0 << "c" << "" << true << "abc";
    QTest::newRow("a letter typed at the start") << "ab|cd|" << 0 << 0 << "x" << "" << true << "xab\r\ncd";
    QTest::newRow("Enter in a line") << "abcd|" << 2 << 0 << "|" << "" << true << "ab\r\ncd";
    QTest::newRow("Shift+Enter in a line") << "abcd|" << 2 << 0 << "~" << "" << true << "ab\r\ncd";
    QTest::newRow("Enter in the last line") << "ab|cd|" << 5 << 0 << "|" << "" << true << "ab\r\ncd\r\n";
    QTest::newRow("Backspace over a break") << "ab|cd|" << 2 << 1 << "" << "" << true << "abcd";
    QTest::newRow("a selection across lines deleted") << "ab|cd|ef|" << 1 << 4 << "" << "" << true << "a\r\nef";
    QTest::newRow("lines pasted over a letter") << "abc|" << 1 << 1 << "1|2|3" << "" << true << "a1\r\n2\r\n3c";
    QTest::newRow("a whole new text") << "old|text|" << 0 << 9 << "new||text|" << "" << true << "new\r\n\r\ntext";
    QTest::newRow("everything cleared") << "ab|cd|" << 0 << 6 << "|" << "" << true << "";
    QTest::newRow("the final separator gone alone") << "ab|" << 2 << 1 << "" << "" << false << "";
    QTest::newRow("more added than the document holds") << "ab|" << 2 << 0 << "cd" << "abc|" << false << "";
    QTest::newRow("a change past the end") << "ab|" << 5 << 0 << "c" << "abc|" << false << "";
    QTest::newRow("a negative position") << "ab|" << -1 << 0 << "c" << "cab|" << false << "";
}

void TestCrLfText::follow()
{
    QFETCH(QString, before);
    QFETCH(int, position);
    QFETCH(int, removed);
    QFETCH(QString, inserted);
    QFETCH(QString, after);
    QFETCH(bool, following);
    QFETCH(QString, text);
    const QString document = after.isEmpty() ? QString(before).replace(position, removed, inserted) : after;
    CrLfText crlf;
    QVERIFY(crlf.start(raw(before), int(before.size())));
    const QString now = raw(document);
    crlf.follow(position, removed, int(inserted.size()), int(now.size()), [&](int from, int to) {
        return now.mid(from, to - from);
    });
    QCOMPARE(crlf.following(), following);
    if (following)
        QCOMPARE(crlf.text(), text);
}

QTEST_APPLESS_MAIN(TestCrLfText)
#include "tst_crlf_text.moc"
