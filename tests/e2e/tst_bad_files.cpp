// The program's own files and a theme's files holding what they should not: random bytes, NUL
// bytes, megabytes; a picture cut short or not a picture at all; sounds that are noise. The real
// program, started from a copy of its directory, must do what it does with good files as far as
// it can: a picture it cannot load is an untrapped run-time error, reported before the program
// ends; everything else goes on. It never dies by a signal or hangs, and it writes no file it
// would not write anyway.

#include "e2e/real_program.h"
#include "support/http_server.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QMap>
#include <QRandomGenerator>
#include <QTest>

namespace {


QByteArray randomBytes(qsizetype size, quint32 seed)
{
    QRandomGenerator random(seed);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char& b : bytes)
        b = char(random.bounded(256));
    return bytes;
}

// Bad content of the given kind, different for every seed.
QByteArray badContent(const QString& kind, quint32 seed)
{
    if (kind == QLatin1String("random"))
        return randomBytes(64 * 1024, seed);
    if (kind == QLatin1String("nul"))
        return QByteArray(4096, '\0');
    return randomBytes(3 * 1024 * 1024, seed); // megabytes
}

// A fingerprint of every file under the program directory.
QMap<QString, QByteArray> fingerprints(const RealProgram& program)
{
    QMap<QString, QByteArray> prints;
    const QString root = program.path(QString());
    QDirIterator it(root, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString file = it.next();
        QFile f(file);
        if (f.open(QIODevice::ReadOnly))
            prints[file.mid(root.size())] = QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha1);
    }
    return prints;
}

// The files that differ between two fingerprints, added and removed ones included.
QStringList changedFiles(const QMap<QString, QByteArray>& before, const QMap<QString, QByteArray>& after)
{
    QStringList changed;
    for (auto it = before.begin(); it != before.end(); ++it)
        if (after.value(it.key()) != it.value())
            changed << it.key();
    for (auto it = after.begin(); it != after.end(); ++it)
        if (!before.contains(it.key()))
            changed << it.key();
    return changed;
}

const QStringList kFavourites{"Down", "Return"};
const QStringList kNotePad{"Left", "Left", "Down", "Down", "Down", "Return"};
const QStringList kReadme{"Up", "Up", "Up", "Return"};

} // namespace

class TestBadFiles : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void settingsFiles_data();
    void settingsFiles();
    void themeDirectoryFile_data();
    void themeDirectoryFile();
    void themeFiles_data();
    void themeFiles();
};

void TestBadFiles::settingsFiles_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("random bytes") << QStringLiteral("random");
    QTest::newRow("NUL bytes") << QStringLiteral("nul");
    QTest::newRow("megabytes") << QStringLiteral("megabytes");
}

// The home page, the font colour, the favourites, the notes and the readme all bad at once:
// the main window loads, and the favourites, the note pad and the readme viewer open.
void TestBadFiles::settingsFiles()
{
    QFETCH(QString, kind);
    RealProgram program;
    program.useTheme();
    quint32 seed = 1;
    const QStringList files{"HomePage.TXT", "ForeC.INI", "FavPlaces.INI", "Notes.TXT", "readme.TXT"};
    for (const QString& file : files)
        program.write(file, badContent(kind, seed++));
    const QByteArray notes = program.read(QStringLiteral("Notes.TXT"));
    const auto before = fingerprints(program);

    const unsigned long main = program.openMainWindow(false);
    QVERIFY2(main, program.errorOutput().right(2000).constData());
    QTest::qWait(2000); // the load sequence, to its end
    QVERIFY(program.running());

    program.chooseMenu(main, kFavourites);
    QVERIFY(program.waitForWindow(QStringLiteral("Favorite Places"), 30000));
    program.chooseMenu(main, kNotePad);
    QVERIFY(program.waitForWindowLike(QStringLiteral("^Notepad "), 30000));
    program.chooseMenu(main, kReadme);
    QVERIFY(program.waitForWindow(QStringLiteral("Read Me "), 30000));
    QTest::qWait(1000);
    QVERIFY2(program.running(), program.errorOutput().right(2000).constData());

    // Only the note pad writes: it saves what it loaded, as its loader read it line by line.
    QVERIFY(!program.read(QStringLiteral("Notes.TXT")).isEmpty() || notes.isEmpty());
    QCOMPARE(changedFiles(before, fingerprints(program)), QStringList{QStringLiteral("Notes.TXT")});
}

void TestBadFiles::themeDirectoryFile_data()
{
    settingsFiles_data();
}

// A theme directory file that names no directory: the program asks for one, as on a first start.
void TestBadFiles::themeDirectoryFile()
{
    QFETCH(QString, kind);
    RealProgram program;
    program.write(QStringLiteral("ThemeDir.INI"), badContent(kind, 7));
    const auto before = fingerprints(program);
    program.start();
    QVERIFY2(program.waitForWindow(QStringLiteral("Theme Selector"), 30000), program.errorOutput().right(2000).constData());
    QTest::qWait(1000);
    QVERIFY(program.running());
    QCOMPARE(changedFiles(before, fingerprints(program)), QStringList{});
}

void TestBadFiles::themeFiles_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("reported"); // an untrapped error ends the program
    RealProgram shipped;
    const QByteArray intro = shipped.read(QStringLiteral("Default/Intro.BMP"));
    QTest::newRow("picture cut short") << QStringLiteral("Default/Intro.BMP") << intro.left(intro.size() / 3) << true;
    QTest::newRow("picture that is text") << QStringLiteral("Default/GoUP.BMP")
                                          << QByteArray("This is not a picture.\r\n") << true;
    QTest::newRow("wave that is noise") << QStringLiteral("Default/OpenWIN.WAV") << randomBytes(100000, 11) << false;
    QTest::newRow("wave with a header and noise")
        << QStringLiteral("Default/Click.WAV") << QByteArray("RIFF\xff\xff\xff\x7fWAVEfmt ", 16) + randomBytes(5000, 12)
        << false;
    QTest::newRow("MP3 that is noise") << QStringLiteral("Default/Intro.MP3") << randomBytes(200000, 13) << false;
    QTest::newRow("MP3 of NUL bytes") << QStringLiteral("Default/Intro.MP3") << QByteArray(200000, '\0') << false;
}

void TestBadFiles::themeFiles()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, content);
    QFETCH(bool, reported);
    RealProgram program;
    program.useTheme();
    program.write(file, content);
    const auto before = fingerprints(program);
    if (reported) {
        program.start();
        // The intro clicked when it comes (a picture of the main window fails only after it),
        // then the report, and the end once it is acknowledged: an exit, not a signal.
        QVERIFY(program.waitForAnyWindow());
        QTest::qWait(1000);
        if (!program.errorOutput().contains("Run-time error '"))
            program.clickScreen(program.screen().center());
        QTRY_VERIFY_WITH_TIMEOUT(program.errorOutput().contains("Run-time error '"), 30000);
        QTest::qWait(500);
        program.key(QStringLiteral("Return"));
        QVERIFY(program.waitForExit(15000));
        QVERIFY(!program.crashed());
        QCOMPARE(program.exitCode(), 1);
    } else {
        const unsigned long main = program.openMainWindow(false);
        QVERIFY2(main, program.errorOutput().right(2000).constData());
        QTest::qWait(2000);
        QVERIFY2(program.running(), program.errorOutput().right(2000).constData());
    }
    QCOMPARE(changedFiles(before, fingerprints(program)), QStringList{});
}

QTEST_MAIN(TestBadFiles)
#include "tst_bad_files.moc"
