// The note pad: the note written whole on every keystroke typed on the real keyboard, one more
// CR LF at its end on every opening, the resize rule with its untrapped error, top-most.

#include "accessories/note_pad.h"
#include "startup/theme_selector.h"
#include "platform/cp1252.h"
#include "platform/errors.h"
#include "platform/sounds.h"
#include "support/input.h"
#include "support/test_runtime.h"

#include <QApplication>
#include <QTest>

using namespace platform;

namespace {

const QString kThemes = QStringLiteral(GLIDEPATH_SOURCE_DIR "/themes");

NotePadFRM& openNotePad()
{
    form<ThemeSelector>().TPath.setText(kThemes + "/Default");
    NotePadFRM* pad = nullptr;
    runHandler([&] { pad = &form<NotePadFRM>(); });
    pad->Show();
    if (!QTest::qWaitForWindowExposed(pad->widget()))
        qWarning("the note pad was not exposed");
    return *pad;
}

} // namespace

class TestNotePad : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void growsByOneLineBreakPerOpening_data();
    void growsByOneLineBreakPerOpening();
    void everyKeystrokeIsSaved();
    void editsAsTheyAreSaved_data();
    void editsAsTheyAreSaved();
    void emptiedNoteIsALineBreak();
    void resizeRule_data();
    void resizeRule();
    void lookAndSounds();
};

void TestNotePad::growsByOneLineBreakPerOpening_data()
{
    QTest::addColumn<QByteArray>("initial"); // "-" for no file
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    QTest::newRow("three letters") << QByteArray("abc") << QByteArray("abc\r\n") << QByteArray("abc\r\n\r\n");
    QTest::newRow("as the pad writes them") << QByteArray("abc\r\n") << QByteArray("abc\r\n\r\n")
                                            << QByteArray("abc\r\n\r\n\r\n");
    QTest::newRow("two lines") << QByteArray("one\r\ntwo") << QByteArray("one\r\ntwo\r\n") << QByteArray("one\r\ntwo\r\n\r\n");
    QTest::newRow("8-bit text") << QByteArray("caf\xe9 \x80") << QByteArray("caf\xe9 \x80\r\n")
                                << QByteArray("caf\xe9 \x80\r\n\r\n");
    QTest::newRow("empty file") << QByteArray("") << QByteArray("\r\n") << QByteArray("\r\n\r\n");
    QTest::newRow("no file") << QByteArray("-") << QByteArray("\r\n") << QByteArray("\r\n\r\n");
}

void TestNotePad::growsByOneLineBreakPerOpening()
{
    QFETCH(QByteArray, initial);
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);
    TestRuntime t;
    if (initial != "-")
        t.write("Notes.TXT", initial);
    NotePadFRM& pad = openNotePad();
    QCOMPARE(t.read("Notes.TXT"), first);
    Unload(pad);
    QCOMPARE(t.read("Notes.TXT"), first); // nothing is saved on closing
    openNotePad();
    QCOMPARE(t.read("Notes.TXT"), second);
    QVERIFY(t.untrappedErrors.isEmpty());
}

void TestNotePad::everyKeystrokeIsSaved()
{
    TestRuntime t;
    t.write("Notes.TXT", "end\r\n");
    NotePadFRM& pad = openNotePad();
    // The caret stands at the start of the note, as after the text is set.
    QByteArrayList saved;
    for (const char* keys : {"H", "i", " "}) {
        input::type(pad.Data, QString::fromLatin1(keys));
        saved << t.read("Notes.TXT");
    }
    QCOMPARE(saved, (QByteArrayList{"Hend\r\n\r\n", "Hiend\r\n\r\n", "Hi end\r\n\r\n"}));
    // A typed line break is a CR LF in the file, as the classic box holds it.
    input::key(pad.Data, Qt::Key_Return);
    QCOMPARE(t.read("Notes.TXT"), QByteArray("Hi \r\nend\r\n\r\n"));
    input::key(pad.Data, Qt::Key_Backspace);
    QCOMPARE(t.read("Notes.TXT"), QByteArray("Hi end\r\n\r\n"));
    // Reopened, the typed note comes back with one more CR LF.
    Unload(pad);
    NotePadFRM& again = openNotePad();
    QCOMPARE(again.Data.Text(), QStringLiteral("Hi end\r\n\r\n"));
    QCOMPARE(t.read("Notes.TXT"), QByteArray("Hi end\r\n\r\n\r\n"));
}

void TestNotePad::editsAsTheyAreSaved_data()
{
    // Keys: text typed as it stands, "<Key>" for a named key, "^k" for Ctrl with a letter.
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QString>("note");
    QTest::newRow("lines") << QStringList{"one", "<Return>", "two"} << "one\r\ntwo";
    QTest::newRow("backspaces") << QStringList{"abc", "<Backspace>", "<Backspace>"} << "a";
    QTest::newRow("undo") << QStringList{"abc", "<Return>", "def", "^z"} << "abc\r\n";
    QTest::newRow("all replaced") << QStringList{"abc", "<Return>", "def", "^a", "x"} << "x";
    QTest::newRow("home and end") << QStringList{"abc", "<Home>", "X", "<End>", "Y"} << "XabcY";
    QTest::newRow("empty lines") << QStringList{"ab", "<Return>", "<Return>", "<Return>", "<Backspace>"} << "ab\r\n\r\n";
    QTest::newRow("joined lines") << QStringList{"ab", "<Return>", "cd", "<Home>", "<Backspace>"} << "abcd";
}

void TestNotePad::editsAsTheyAreSaved()
{
    QFETCH(QStringList, keys);
    QFETCH(QString, note);
    TestRuntime t;
    NotePadFRM& pad = openNotePad();
    const QMap<QString, Qt::Key> named{{"<Return>", Qt::Key_Return}, {"<Backspace>", Qt::Key_Backspace},
                                       {"<Home>", Qt::Key_Home}, {"<End>", Qt::Key_End}};
    for (const QString& k : keys) {
        if (named.contains(k))
            input::key(pad.Data, named[k]);
        else if (k.startsWith('^'))
            input::key(pad.Data, Qt::Key(Qt::Key_A + (k[1].unicode() - 'a')), Qt::ControlModifier);
        else
            input::type(pad.Data, k);
    }
    QCOMPARE(pad.Data.Text(), note);
    QCOMPARE(t.read("Notes.TXT"), platform::encodeAnsi(note) + "\r\n");
}

void TestNotePad::emptiedNoteIsALineBreak()
{
    TestRuntime t;
    t.write("Notes.TXT", "some words\r\nand more\r\n");
    NotePadFRM& pad = openNotePad();
    input::key(pad.Data, Qt::Key_A, Qt::ControlModifier);
    input::key(pad.Data, Qt::Key_Delete);
    QCOMPARE(pad.Data.Text(), QString());
    QCOMPARE(t.read("Notes.TXT"), QByteArray("\r\n"));
}

void TestNotePad::resizeRule_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<QSize>("box");
    QTest::addColumn<int>("error");
    QTest::newRow("designed") << 6270 << 3975 << QSize(6150, 3575) << 0;
    QTest::newRow("larger") << 9000 << 6000 << QSize(8880, 5600) << 0;
    QTest::newRow("smallest") << 120 << 400 << QSize(0, 0) << 0;
    QTest::newRow("too narrow") << 105 << 3000 << QSize() << int(ErrInvalidPropertyValue);
    QTest::newRow("too low") << 3000 << 390 << QSize() << int(ErrInvalidPropertyValue);
}

void TestNotePad::resizeRule()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(QSize, box);
    QFETCH(int, error);
    TestRuntime t;
    NotePadFRM& pad = openNotePad();
    runHandler([&] {
        pad.setWidth(width);
        pad.setHeight(height);
    });
    if (error) {
        QCOMPARE(t.untrappedErrors.value(0), error);
        QVERIFY(t.runtime().ended());
        return;
    }
    QVERIFY(t.untrappedErrors.isEmpty());
    QCOMPARE(QSize(pad.Data.Width(), pad.Data.Height()), box);
    QCOMPARE(QPoint(pad.Data.Left(), pad.Data.Top()), QPoint(0, 0));
}

void TestNotePad::lookAndSounds()
{
    TestRuntime t;
    QStringList sounds;
    QObject::connect(&t.runtime().sounds(), &WavePlayer::requested, [&](const QString& p) { sounds << p; });
    NotePadFRM& pad = openNotePad();
    QCOMPARE(sounds, QStringList{kThemes + "/Default/OpenWIN.WAV"});
    QCOMPARE(pad.Caption(), QStringLiteral("Notepad (Automaticly Saves, Each Keystroke)"));
    QVERIFY(pad.widget()->windowFlags() & Qt::WindowStaysOnTopHint);
    QCOMPARE(pad.Data.ForeColor(), RGB(192, 192, 192));
    QCOMPARE(pad.Data.BackColor(), RGB(64, 64, 64));
    QCOMPARE(pad.Data.widget()->font().pointSizeF(), 8.25);
    QCOMPARE(pad.widget()->size(), QSize(6270 / 15, 3975 / 15));
    sounds.clear();
    Unload(pad);
    QCOMPARE(sounds, QStringList{kThemes + "/Default/CloseWIN.WAV"});
}

QTEST_MAIN(TestNotePad)
#include "tst_note_pad.moc"
