// The program's own files and a theme's files holding what they should not, where a person sees
// the outcome: settings, notes and sounds of random bytes, NUL bytes or megabytes (the windows
// still open); a theme directory file that names nothing (the program asks for a theme); a theme
// picture that is no picture (the untrapped-error report, then the end). What the file readers
// make of bad bytes is fuzzed in-process (tests/fuzz); here the real program never dies by a
// signal or hangs, and writes no file it would not write anyway.

#include "e2e/real_program.h"

#include <QDirIterator>
#include <QMap>
#include <QSet>
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

// Every file under the program directory, with its bytes.
QMap<QString, QByteArray> filesOf(const RealProgram& program)
{
    QMap<QString, QByteArray> files;
    const QString root = program.path(QString());
    QDirIterator it(root, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile f(it.next());
        if (f.open(QIODevice::ReadOnly))
            files[f.fileName().mid(root.size())] = f.readAll();
    }
    return files;
}

// The names of the files that are not as they were.
QStringList changed(const QMap<QString, QByteArray>& before, const QMap<QString, QByteArray>& after)
{
    QStringList names;
    for (const QString& name : QSet<QString>(before.keyBegin(), before.keyEnd()) | QSet<QString>(after.keyBegin(), after.keyEnd()))
        if (before.value(name, "<none>") != after.value(name, "<none>"))
            names << name;
    return names;
}

} // namespace

class TestBadFiles : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void settingsNotesAndSounds();
    void themeDirectoryFileNamesNothing();
    void themePictureIsNoPicture();
};

// The home page, the font colour, the favourites, the notes and the readme bad at once, and the
// theme's sounds and music noise: the main window loads, and the favourites, the note pad and
// the readme viewer open.
void TestBadFiles::settingsNotesAndSounds()
{
    RealProgram program;
    program.useTheme();
    program.write(QStringLiteral("HomePage.TXT"), randomBytes(64 * 1024, 1));
    program.write(QStringLiteral("ForeC.INI"), QByteArray(4096, '\0'));
    program.write(QStringLiteral("FavPlaces.INI"), randomBytes(3 * 1024 * 1024, 2));
    program.write(QStringLiteral("Notes.TXT"), randomBytes(3 * 1024 * 1024, 3));
    program.write(QStringLiteral("readme.TXT"), QByteArray(4096, '\0'));
    program.write(QStringLiteral("Default/OpenWIN.WAV"), randomBytes(100000, 11));
    program.write(QStringLiteral("Default/Click.WAV"), QByteArray("RIFF\xff\xff\xff\x7fWAVEfmt ", 16) + randomBytes(5000, 12));
    program.write(QStringLiteral("Default/Intro.MP3"), randomBytes(200000, 13));
    const auto before = filesOf(program);

    const unsigned long main = program.openMainWindow(false);
    QVERIFY2(main, program.errorOutput().right(2000).constData());
    QVERIFY(program.waitForMoment(QStringLiteral("hidden StatF"))); // the load sequence, to its end
    program.chooseMenu(main, {"Down", "Return"});
    QVERIFY(program.waitForWindow(QStringLiteral("Favorite Places"), 30000));
    program.chooseMenu(main, {"Left", "Left", "Down", "Down", "Down", "Return"});
    QVERIFY(program.waitForWindowLike(QStringLiteral("^Notepad "), 30000));
    program.chooseMenu(main, {"Up", "Up", "Up", "Return"});
    QVERIFY(program.waitForWindow(QStringLiteral("Read Me "), 30000));
    QVERIFY2(program.running(), program.errorOutput().right(2000).constData());
    // Only the note pad writes: it saves what it loaded.
    QTRY_COMPARE(changed(before, filesOf(program)), QStringList{QStringLiteral("Notes.TXT")});
}

// A theme directory file that names no directory: the program asks for one, as on a first start.
void TestBadFiles::themeDirectoryFileNamesNothing()
{
    RealProgram program;
    program.write(QStringLiteral("ThemeDir.INI"), randomBytes(64 * 1024, 7));
    const auto before = filesOf(program);
    program.start();
    QVERIFY2(program.waitForWindow(QStringLiteral("Theme Selector"), 30000), program.errorOutput().right(2000).constData());
    QVERIFY(program.waitForMoment(QStringLiteral("message Please Select a Theme Directory.")));
    QVERIFY(program.running());
    QCOMPARE(changed(before, filesOf(program)), QStringList{});
}

// The Go button's picture holding text: the intro comes, and after its click the main window's
// load reports the untrapped error; once it is acknowledged the program ends, by an exit.
void TestBadFiles::themePictureIsNoPicture()
{
    RealProgram program;
    program.useTheme();
    program.write(QStringLiteral("Default/GoUP.BMP"), "This is not a picture.\r\n");
    const auto before = filesOf(program);
    program.start();
    QVERIFY(program.waitForMoment(QStringLiteral("painted IntroFRM")));
    program.clickScreen(program.screen().center());
    QTRY_VERIFY_WITH_TIMEOUT(program.errorOutput().contains("Run-time error '481'"), 30000);
    const unsigned long report = program.waitForWindow(QStringLiteral("Glidepath"));
    QVERIFY(report);
    program.activate(report);
    program.key(QStringLiteral("Return"));
    QVERIFY(program.waitForExit(15000));
    QVERIFY(!program.crashed());
    QCOMPARE(program.exitCode(), 1);
    QCOMPARE(changed(before, filesOf(program)), QStringList{});
}

QTEST_GUILESS_MAIN(TestBadFiles)
#include "tst_bad_files.moc"
