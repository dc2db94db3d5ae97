// 8-bit text, the delimited-field reader, the file-number rules of sequential files and
// pictures loaded from files.

#include "platform/cp1252.h"
#include "platform/errors.h"
#include "platform/field_reader.h"
#include "platform/files.h"
#include "platform/picture.h"
#include "platform/profile.h"
#include "platform/whole_file.h"
#include "support/test_runtime.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTest>

#include <unistd.h>

using namespace platform;

namespace {
int errorOf(const std::function<void()>& statement)
{
    try {
        statement();
    } catch (const RuntimeError& e) {
        return e.number();
    }
    return 0;
}
} // namespace

class TestFiles : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void everyByteRoundTrips();
    void unmappableCharacters();
    void fields_data();
    void fields();
    void fileNumberRules_data();
    void fileNumberRules();
    void outputReplacesOnlyOnClose();
    void writtenInAReadOnlyDirectory();
    void appendAndReadBack();
    void picturesOfTheSameBytesShared();
};

void TestFiles::everyByteRoundTrips()
{
    QByteArray all;
    for (int b = 0; b < 256; ++b)
        all.append(char(b));
    const QString text = decodeAnsi(all);
    QCOMPARE(text.size(), 256);
    QCOMPARE(encodeAnsi(text), all);
    QCOMPARE(text.at(0x80), QChar(0x20AC)); // the euro sign
    QCOMPARE(text.at(0x81), QChar(0x81));   // undefined in the code page: kept as itself
    QCOMPARE(text.at(0xE9), QChar(0xE9));
}

void TestFiles::unmappableCharacters()
{
    QCOMPARE(encodeAnsi(QStringLiteral("a\u0101b\u20ACc")), QByteArray("a?b\x80" "c"));
}

void TestFiles::fields_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("fields");
    QTest::newRow("comma splits a line") << "one\r\ntwo, three\r\n" << QStringList{"one", "two", "three"};
    QTest::newRow("quotes keep a comma") << "\"a,b\",c" << QStringList{"a,b", "c"};
    QTest::newRow("leading blanks skipped") << "  \tlead\r\n" << QStringList{"lead"};
    QTest::newRow("trailing blanks kept") << "trail  ,x" << QStringList{"trail  ", "x"};
    QTest::newRow("empty line") << "\r\n" << QStringList{""};
    QTest::newRow("empty file") << "" << QStringList{};
    QTest::newRow("comma at line end") << "a,\r\nb" << QStringList{"a", "", "b"};
    QTest::newRow("text after closing quote dropped") << "\"q\" junk,next" << QStringList{"q", "next"};
    QTest::newRow("unterminated quote") << "\"open" << QStringList{"open"};
    QTest::newRow("bare LF and CR") << "x\ny\rz" << QStringList{"x", "y", "z"};
    QTest::newRow("no final line end") << "a,b" << QStringList{"a", "b"};
    QTest::newRow("blank line between") << "a\r\n\r\nb\r\n" << QStringList{"a", "", "b"};
}

void TestFiles::fields()
{
    QFETCH(QString, text);
    QFETCH(QStringList, fields);
    FieldReader reader(text);
    QStringList read;
    while (!reader.atEnd())
        read << reader.next();
    QCOMPARE(read, fields);
    QCOMPARE(errorOf([&] { reader.next(); }), int(ErrInputPastEndOfFile));
}

void TestFiles::fileNumberRules_data()
{
    QTest::addColumn<int>("scenario");
    QTest::addColumn<int>("error");
    QTest::newRow("second open of #1") << 0 << int(ErrFileAlreadyOpen);
    QTest::newRow("input of a missing file") << 1 << int(ErrFileNotFound);
    QTest::newRow("input of a directory") << 2 << int(ErrPathFileAccess);
    QTest::newRow("read of a closed number") << 3 << int(ErrBadFileNameOrNumber);
    QTest::newRow("print to an input file") << 4 << int(ErrBadFileMode);
    QTest::newRow("output in a missing directory") << 5 << int(ErrPathNotFound);
    QTest::newRow("number 0") << 6 << int(ErrBadFileNameOrNumber);
    QTest::newRow("read past the end") << 7 << int(ErrInputPastEndOfFile);
    QTest::newRow("close of a closed number is harmless") << 8 << 0;
}

void TestFiles::fileNumberRules()
{
    QFETCH(int, scenario);
    QFETCH(int, error);
    TestRuntime t;
    t.write("in.txt", "abc");
    const QString in = t.path("in.txt");
    const std::function<void()> statements[] = {
        [&] { Open(in, OpenMode::Input, 1); Open(t.path("other.txt"), OpenMode::Output, 1); },
        [&] { Open(t.path("missing.txt"), OpenMode::Input, 1); },
        [&] { Open(t.path(""), OpenMode::Input, 1); },
        [&] { InputChars(1, 1); },
        [&] { Open(in, OpenMode::Input, 1); PrintLine(1, "x"); },
        [&] { Open(t.path("nowhere/out.txt"), OpenMode::Output, 1); },
        [&] { Open(in, OpenMode::Input, 0); },
        [&] { Open(in, OpenMode::Input, 1); InputChars(4, 1); },
        [&] { Close(1); Close(7); },
    };
    QCOMPARE(errorOf(statements[scenario]), error);
    t.runtime().files().closeAll();
}

void TestFiles::outputReplacesOnlyOnClose()
{
    TestRuntime t;
    t.write("out.txt", "old");
    Open(t.path("out.txt"), OpenMode::Output, 1);
    PrintLine(1, QStringLiteral("new \u20AC"));
    QCOMPARE(t.read("out.txt"), QByteArray("old")); // a crash now leaves the old file whole
    Close(1);
    QCOMPARE(t.read("out.txt"), QByteArray("new \x80\r\n"));
    QCOMPARE(QDir(t.path("")).entryList(QDir::Files | QDir::Hidden), QStringList{"out.txt"}); // no temporary left
}

// A directory that takes no new file (read-only for the user; immutable for root, whom no
// permission stops) with settings that may be written: they are written all the same, over
// the file in place; a write that death cut short is finished before the file is read again.
void TestFiles::writtenInAReadOnlyDirectory()
{
    TestRuntime t;
    const QString dir = t.path("settings");
    QVERIFY(QDir().mkpath(dir));
    t.write("settings/Notes.TXT", "old");
    t.write("settings/ThemeDir.INI", "");
    const QString notes = dir + "/Notes.TXT";
    struct ReadOnly {
        explicit ReadOnly(const QString& d) : dir(d) { run(true); }
        ~ReadOnly() { run(false); }
        void run(bool on) const
        {
            if (geteuid() == 0)
                QProcess::execute(QStringLiteral("chattr"), {on ? "+i" : "-i", dir});
            else
                QFile::setPermissions(dir, on ? QFile::ReadOwner | QFile::ExeOwner : QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
        QString dir;
    } readOnly(dir);
    QVERIFY(!QFile(dir + "/new.txt").open(QIODevice::WriteOnly));
    Open(notes, OpenMode::Output, 1);
    PrintLine(1, QStringLiteral("written in place"));
    Close(1);
    QCOMPARE(t.read("settings/Notes.TXT"), QByteArray("written in place\r\n"));
    QVERIFY(WritePrivateProfileStringA("Theme Directory", "DIR", "/t", dir + "/ThemeDir.INI"));
    QCOMPARE(t.read("settings/ThemeDir.INI"), QByteArray("[Theme Directory]\r\nDIR=/t\r\n"));
    QVERIFY(!QFile::exists(unfinishedWritePath(notes)));
    // Died after the new content was kept whole but while the file was half written.
    QFile unfinished(unfinishedWritePath(notes));
    QVERIFY(unfinished.open(QIODevice::WriteOnly) && unfinished.write("the whole note\r\n") > 0);
    unfinished.close();
    t.write("settings/Notes.TXT", "the who");
    Open(notes, OpenMode::Input, 1);
    QCOMPARE(InputChars(LOF(1), 1), QStringLiteral("the whole note\r\n"));
    Close(1);
    QVERIFY(!unfinished.exists());
    QCOMPARE(QDir(dir).entryList(QDir::Files | QDir::Hidden), (QStringList{"Notes.TXT", "ThemeDir.INI"}));
}

void TestFiles::appendAndReadBack()
{
    TestRuntime t;
    QByteArray all;
    for (int b = 0; b < 256; ++b)
        all.append(char(b));
    t.write("data.bin", all);
    Open(t.path("data.bin"), OpenMode::Append, 2);
    PrintLine(2, "end");
    Close(2);
    Open(t.path("data.bin"), OpenMode::Input, 2);
    QCOMPARE(LOF(2), qint64(256 + 5));
    QCOMPARE(encodeAnsi(InputChars(256, 2)), all);
    QVERIFY(!Eof(2));
    QCOMPARE(InputChars(5, 2), QStringLiteral("end\r\n"));
    QVERIFY(Eof(2));
    Close(2);
}

void TestFiles::picturesOfTheSameBytesShared()
{
    TestRuntime t;
    QImage red(40, 30, QImage::Format_RGB32);
    red.fill(Qt::red);
    QVERIFY(red.save(t.path("a.BMP"), "BMP"));
    QVERIFY(QFile::copy(t.path("a.BMP"), t.path("b.BMP")));
    const QPixmap a = LoadPicture(t.path("a.BMP"));
    const QPixmap b = LoadPicture(t.path("b.BMP"));
    QCOMPARE(b.cacheKey(), a.cacheKey()); // one decoded copy for both windows

    // Rewritten in place with a picture of the same size, at once: read afresh.
    QImage blue = red;
    blue.fill(Qt::blue);
    QVERIFY(blue.save(t.path("a.BMP"), "BMP"));
    QCOMPARE(LoadPicture(t.path("a.BMP")).toImage().pixelColor(5, 5), QColor(Qt::blue));
    QCOMPARE(LoadPicture(t.path("b.BMP")).toImage().pixelColor(5, 5), QColor(Qt::red));

    // A copy cut short is no picture, whatever was loaded before; errors come as before.
    QFile whole(t.path("b.BMP"));
    QVERIFY(whole.open(QIODevice::ReadOnly));
    t.write("cut.BMP", whole.readAll().chopped(200));
    QCOMPARE(errorOf([&] { LoadPicture(t.path("cut.BMP")); }), int(ErrInvalidPicture));
    t.write("text.BMP", "not a picture");
    QCOMPARE(errorOf([&] { LoadPicture(t.path("text.BMP")); }), int(ErrInvalidPicture));
    QCOMPARE(errorOf([&] { LoadPicture(t.path("none.BMP")); }), int(ErrFileNotFound));
}

QTEST_MAIN(TestFiles)
#include "tst_files.moc"
