// Private-profile files: the classic platform's matching, trimming and quoting on reads, and
// in-place replacement, section creation and atomic writing on writes.

#include "platform/profile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace platform;

class TestProfile : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void read_data();
    void read();
    void write_data();
    void write();
    void bufferLimits();
    void fileCreatedAndReplacedWhole();
    void unwritableLeavesFileAlone();
};

void TestProfile::read_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("found");
    QTest::newRow("odd case") << "[Theme Directory]\r\nDIR=C:\\x\r\n" << "theme DIRECTORY" << "dir" << "C:\\x" << true;
    QTest::newRow("blanks trimmed") << "  [ S ]  \r\n  Key  =  some value  \r\n" << "S" << "key" << "some value" << true;
    QTest::newRow("double quotes removed") << "[S]\r\nk=\"quoted \"\r\n" << "S" << "k" << "quoted " << true;
    QTest::newRow("single quotes removed") << "[S]\r\nk='single'\r\n" << "S" << "k" << "single" << true;
    QTest::newRow("unbalanced quote kept") << "[S]\r\nk=\"open\r\n" << "S" << "k" << "\"open" << true;
    QTest::newRow("second section") << "[A]\r\nk=1\r\n[B]\r\nk=2\r\n" << "b" << "K" << "2" << true;
    QTest::newRow("missing section") << "[A]\r\nk=1\r\n" << "B" << "k" << "" << false;
    QTest::newRow("key before any section") << "k=0\r\n[A]\r\n" << "A" << "k" << "" << false;
    QTest::newRow("LF line ends") << "[A]\nk=lf only\n" << "A" << "k" << "lf only" << true;
    QTest::newRow("equals in value") << "[A]\r\nk=a=b\r\n" << "A" << "k" << "a=b" << true;
    QTest::newRow("empty value") << "[A]\r\nk=\r\n" << "A" << "k" << "" << true;
    QTest::newRow("first of duplicates") << "[A]\r\nk=1\r\nK=2\r\n" << "A" << "k" << "1" << true;
    QTest::newRow("header without bracket") << "[A\r\nk=v\r\n" << "A" << "k" << "v" << true;
}

void TestProfile::read()
{
    QFETCH(QString, text);
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(bool, found);
    const auto result = profileValue(text, section, key);
    QCOMPARE(result.has_value(), found);
    if (found)
        QCOMPARE(*result, value);
}

void TestProfile::write_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("after");
    QTest::newRow("new file") << "" << "Theme Directory" << "DIR" << "/t" << "[Theme Directory]\r\nDIR=/t\r\n";
    QTest::newRow("replaced in place, any case") << "[S]\r\ndir=old\r\nx=1\r\n" << "s" << "DIR" << "new"
                                                 << "[S]\r\nDIR=new\r\nx=1\r\n";
    QTest::newRow("added at end of its section") << "[S]\r\na=1\r\n\r\n[T]\r\nb=2\r\n" << "S" << "c" << "3"
                                                 << "[S]\r\na=1\r\nc=3\r\n\r\n[T]\r\nb=2\r\n";
    QTest::newRow("new section after unterminated line") << "[T]\r\nb=2" << "S" << "k" << "v"
                                                         << "[T]\r\nb=2\r\n[S]\r\nk=v\r\n";
    QTest::newRow("last line without line end") << "[S]\r\nk=1" << "S" << "k" << "2" << "[S]\r\nk=2\r\n";
    QTest::newRow("comments and other lines kept") << ";c\r\n[S]\n k = 1\n" << "S" << "K" << "2"
                                                   << ";c\r\n[S]\nK=2\n";
    QTest::newRow("empty value") << "[S]\r\nk=1\r\n" << "S" << "k" << "" << "[S]\r\nk=\r\n";
    QTest::newRow("only the first duplicate") << "[S]\r\nk=1\r\nk=2\r\n" << "S" << "K" << "3"
                                              << "[S]\r\nK=3\r\nk=2\r\n";
}

void TestProfile::write()
{
    QFETCH(QString, before);
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, after);
    const QString result = profileWithValue(before, section, key, value);
    QCOMPARE(result, after);
    QCOMPARE(profileValue(result, section, key).value_or("<none>"), value);
}

void TestProfile::bufferLimits()
{
    QTemporaryDir dir;
    const QString file = dir.filePath("long.ini");
    const QString value(800, QLatin1Char('v'));
    QVERIFY(WritePrivateProfileStringA("S", "k", value, file));

    QString buffer;
    QCOMPARE(GetPrivateProfileStringA("S", "K", "", buffer, 750, file), 749u);
    QCOMPARE(buffer.left(749), value.left(749));
    QCOMPARE(GetPrivateProfileStringA("S", "k", "", buffer, 0, file), 0u);
    QCOMPARE(GetPrivateProfileStringA("S", "missing", "fallback", buffer, 750, file), 8u);
    QCOMPARE(buffer.left(8), QStringLiteral("fallback"));
    QCOMPARE(GetPrivateProfileStringA("S", "k", "def", buffer, 750, dir.filePath("none.ini")), 3u);
}

void TestProfile::fileCreatedAndReplacedWhole()
{
    QTemporaryDir dir;
    const QString file = dir.filePath("ThemeDir.INI");
    QVERIFY(WritePrivateProfileStringA("Theme Directory", "DIR", "", file));
    QVERIFY(WritePrivateProfileStringA("Theme Directory", "DIR", "/themes/Blue \u00E9", file));
    QFile f(file);
    QVERIFY(f.open(QIODevice::ReadOnly));
    QCOMPARE(f.readAll(), QByteArray("[Theme Directory]\r\nDIR=/themes/Blue \xE9\r\n"));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{"ThemeDir.INI"});
}

void TestProfile::unwritableLeavesFileAlone()
{
    QTemporaryDir dir;
    QVERIFY(!WritePrivateProfileStringA("S", "k", "v", dir.filePath("no/such/dir.ini")));
    QVERIFY(!QFile::exists(dir.filePath("no/such/dir.ini")));
}

QTEST_APPLESS_MAIN(TestProfile)
#include "tst_profile.moc"
