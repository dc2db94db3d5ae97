// The small accessories on the real windows with the real keyboard and mouse: the note pad's
// whole note written on every keystroke and one CR LF longer on every opening; the doodle pad's
// segments, options and Clear; the MP3 player's questions and transport; the readme in full or
// its stand-in; the hidden page giving way to its picture.

#include "accessories/about.h"
#include "accessories/doodle.h"
#include "accessories/mp3_player.h"
#include "accessories/note_pad.h"
#include "accessories/read_me.h"
#include "accessories/secret_place.h"
#include "startup/intro.h"
#include "platform/cp1252.h"
#include "platform/paths.h"
#include "support/input.h"
#include "support/test_main.h"
#include "support/program.h"

#include <QAudioOutput>
#include <QMediaPlayer>
#include <QElapsedTimer>
#include <QTimer>
#include <QTest>

using namespace platform;

namespace {

constexpr int kTwips = 15; // per pixel on the test screen

// Two MP3 files in a folder of their own.
struct Tunes {
    Tunes()
    {
        QFile::copy(kThemes + "/Default/Intro.MP3", first());
        QFile::copy(kThemes + "/Midnight/Intro.MP3", second());
    }
    QString first() const { return dir.filePath("first.mp3"); }
    QString second() const { return dir.filePath("second.MP3"); }
    QTemporaryDir dir;
};

} // namespace

class TestAccessories : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void notes_data();
    void notes();
    void doodleGestures_data();
    void doodleGestures();
    void doodleOptionsPanelAndClear();
    void doodleYBeyondSixteenBitsOverflows();
    void mp3Questions();
    void mp3Transport();
    void readme_data();
    void readme();
    void aboutAndHiddenPage();
};

void TestAccessories::notes_data()
{
    // Keys: text typed as it stands, "<Key>" for a named key, "^k" for Ctrl with a letter.
    QTest::addColumn<QByteArray>("initial"); // null: no file
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QString>("note");
    // Opened, the note is saved at once, one CR LF longer; the caret stands at its start.
    QTest::newRow("typed before the note") << QByteArray("end\r\n") << QStringList{"Hi "} << "Hi end\r\n";
    QTest::newRow("8-bit text") << QByteArray("caf\xe9 \x80") << QStringList{"x"} << QString::fromUtf8("xcafé €");
    QTest::newRow("no file") << QByteArray() << QStringList{"one", "<Return>", "<Return>", "two"} << "one\r\n\r\ntwo";
    QTest::newRow("backspaces") << QByteArray() << QStringList{"abc", "<Backspace>", "<Backspace>"} << "a";
    QTest::newRow("undo") << QByteArray() << QStringList{"abc", "<Return>", "def", "^z"} << "abc\r\n";
    QTest::newRow("joined lines") << QByteArray() << QStringList{"ab", "<Return>", "cd", "<Home>", "<Backspace>"} << "abcd";
    QTest::newRow("emptied: a line break") << QByteArray("some words\r\nand more") << QStringList{"^a", "<Delete>"} << "";
}

void TestAccessories::notes()
{
    QFETCH(QByteArray, initial);
    QFETCH(QStringList, keys);
    QFETCH(QString, note);
    Program p;
    if (!initial.isNull())
        p.write("Notes.TXT", initial);
    auto* pad = p.open<NotePadFRM>();
    QVERIFY(pad);
    QCOMPARE(p.read("Notes.TXT"), initial + "\r\n");
    const QMap<QString, Qt::Key> named{{"<Return>", Qt::Key_Return}, {"<Backspace>", Qt::Key_Backspace},
                                       {"<Home>", Qt::Key_Home}, {"<Delete>", Qt::Key_Delete}};
    // After every key the file holds the whole note as shown, its line breaks CR LF, and a CR LF.
    for (const QString& k : keys) {
        if (named.contains(k))
            input::key(pad->Data, named[k]);
        else if (k.startsWith('^'))
            input::key(pad->Data, Qt::Key(Qt::Key_A + (k[1].unicode() - 'a')), Qt::ControlModifier);
        else
            input::type(pad->Data, k);
        QCOMPARE(p.read("Notes.TXT"), encodeAnsi(pad->Data.Text()) + "\r\n");
    }
    QCOMPARE(pad->Data.Text(), note);
    Unload(*pad);
    QCOMPARE(p.read("Notes.TXT"), encodeAnsi(note) + "\r\n"); // nothing saved on closing
    QCOMPARE(p.untrappedErrors, QList<int>{});
}

void TestAccessories::doodleGestures_data()
{
    // Steps: "p x y" press, "m x y" move, "r x y" release (capitals with the right button),
    // "d x y" double-click, in pixels.
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QList<QLine>>("segments");
    QTest::newRow("a stroke") << QStringList{"p 100 100", "m 110 105", "m 130 120", "r 130 120", "m 200 200"}
                              << QList<QLine>{{100, 100, 110, 105}, {110, 105, 130, 120}};
    QTest::newRow("a click draws nothing") << QStringList{"p 50 60", "r 50 60"} << QList<QLine>{};
    QTest::newRow("the right button draws too") << QStringList{"P 40 40", "m 45 50", "R 45 50"} << QList<QLine>{{40, 40, 45, 50}};
    QTest::newRow("a double-click draws nothing") << QStringList{"d 400 300", "m 420 300"} << QList<QLine>{};
}

void TestAccessories::doodleGestures()
{
    QFETCH(QStringList, steps);
    QFETCH(QList<QLine>, segments);
    Program p;
    auto* pad = p.open<DoodleFRM>();
    QVERIFY(pad);
    for (const QString& step : steps) {
        const QStringList s = step.split(' ');
        const QPoint at(s[1].toInt(), s[2].toInt());
        const Qt::MouseButton button = s[0].at(0).isUpper() ? Qt::RightButton : Qt::LeftButton;
        switch (s[0].at(0).toLower().unicode()) {
        case 'p': input::press(*pad, at, button); break;
        case 'm': input::move(*pad, at); break;
        case 'r': input::release(*pad, at, button); break;
        default: input::doubleClick(*pad, at);
        }
    }
    QList<QLine> drawn;
    for (int i = 1; i <= pad->Line1.UBound(); ++i) {
        const platform::Line& l = pad->Line1(i);
        QVERIFY(l.Visible());
        drawn << QLine(l.X1() / kTwips, l.Y1() / kTwips, l.X2() / kTwips, l.Y2() / kTwips);
    }
    QCOMPARE(drawn, segments);
    QVERIFY(!pad->Line1(0).Visible()); // the template
}

void TestAccessories::doodleOptionsPanelAndClear()
{
    Program p;
    auto* pad = p.open<DoodleFRM>();
    QVERIFY(pad);
    QTRY_COMPARE(pad->Data(4).Caption(), QStringLiteral("1")); // the timer has run
    input::press(*pad, {100, 250});
    input::move(*pad, {160, 280});
    input::release(*pad, {160, 280});
    // The panel by a double-click; the red slider and the pen size pushed to their ends with the
    // keyboard, and five clicks on the blue slider's right arrow, one step each.
    input::doubleClick(*pad, {500, 350});
    QCOMPARE(pad->TFrame.Top(), 240);
    input::key(pad->RedSLD, Qt::Key_End);
    input::key(pad->PenSize, Qt::Key_End);
    for (int i = 0; i < 5; ++i)
        input::click(pad->BlueSLD, Qt::LeftButton, QPoint(pad->BlueSLD.widget()->width() - 4, pad->BlueSLD.widget()->height() / 2));
    const OleColor mixed = RGB(255, 0, 5);
    QTRY_COMPARE(pad->Line1(0).BorderColor(), mixed); // applied by the timer
    QCOMPARE(std::tuple(pad->Preview.BackColor(), pad->Line1(0).BorderWidth(), pad->Data(4).Caption()),
             std::tuple(mixed, 50, QStringLiteral("50")));
    // A stroke from below the panel across it, ending right of it: wide and red where the first
    // keeps what it was drawn with, and the panel stands above it.
    input::press(*pad, {100, 330});
    input::move(*pad, {100, 120});
    input::move(*pad, {450, 120});
    input::release(*pad, {450, 120});
    QCOMPARE(std::pair(pad->Line1(3).BorderColor(), pad->Line1(3).BorderWidth()), std::pair(mixed, 50));
    QCOMPARE(std::pair(pad->Line1(1).BorderColor(), pad->Line1(1).BorderWidth()), std::pair(vbBlack, 1));
    QImage shot;
    QTRY_COMPARE((shot = pad->widget()->grab().toImage()).pixelColor(440, 120).rgb(), QColor(255, 0, 5).rgb());
    QVERIFY(shot.pixelColor(250, 120).rgb() != QColor(255, 0, 5).rgb()); // the panel's face hides it
    // A press on the panel belongs to the panel: no drawing starts.
    input::press(*pad, {200, 30});
    input::move(*pad, {550, 300});
    input::release(*pad, {550, 300});
    QCOMPARE(pad->Line1.Count(), 4);
    // A component above 255 counts as 255.
    pad->RedSLD.setRange(0, 400);
    pad->RedSLD.setValue(300);
    QCOMPARE(DoodleFRM::MixColour(pad->RedSLD, pad->GreenSLD, pad->BlueSLD), mixed);
    // Hide This Window: the panel goes, with a click. Clear: a fresh window, the options as designed.
    p.log.clear();
    input::click(pad->HideMe);
    QCOMPARE(pad->TFrame.Top(), 99999);
    input::doubleClick(*pad, {500, 350});
    input::click(pad->TClear);
    QCOMPARE(p.log, (QStringList{"Click.WAV", "Click.WAV", "CloseWIN.WAV", "OpenWIN.WAV"}));
    DoodleFRM& fresh = form<DoodleFRM>();
    QVERIFY(&fresh != pad && fresh.Visible());
    QCOMPARE(std::tuple(fresh.Line1.Count(), fresh.TFrame.Top(), fresh.RedSLD.Value(), fresh.PenSize.Value()),
             std::tuple(1, 99999, 0, 1));
    QTRY_COMPARE(fresh.Data(4).Caption(), QStringLiteral("1"));
    QCOMPARE(fresh.Line1(0).BorderColor(), vbBlack);
    QCOMPARE(p.untrappedErrors, QList<int>{});
}

void TestAccessories::doodleYBeyondSixteenBitsOverflows()
{
    // The previous y is a 16-bit integer of twips: a press lower than 32,767 twips (2,184 pixels)
    // on a tall window ends the program with "Overflow", whatever part of it the screen shows.
    Program p;
    auto* pad = p.open<DoodleFRM>();
    QVERIFY(pad);
    pad->setHeight(2300 * kTwips);
    input::press(*pad, {100, 2190});
    QCOMPARE(p.untrappedErrors, QList<int>{ErrOverflow});
}

void TestAccessories::mp3Questions()
{
    // Cancelled at once, it closes itself before it could be shown.
    Program p;
    QVERIFY(!p.open<MP3PlayerFRM>());
    QVERIFY(!p.runtime().forms().isLoaded<MP3PlayerFRM>());
    Program again;
    Tunes tunes;
    QString answer = tunes.first();
    again.dialogs->fileAnswer = [&](const FileDialogRequest&) { return answer; };
    auto* player = again.open<MP3PlayerFRM>();
    QVERIFY(player);
    QTRY_VERIFY_WITH_TIMEOUT(player->Player.isPlaying(), 10000);
    // OpenMore: two clicks, then the question afresh with its own filter, in the fixed folder
    // and with no name from before; the window stays in view and plays the new tune.
    answer = tunes.second();
    again.log.clear();
    input::click(player->OpenMore);
    QCOMPARE(again.log, (QStringList{"Click.WAV", "Click.WAV", "open file"}));
    for (const FileDialogRequest& asked : {p.dialogs->fileRequests.value(0), again.dialogs->fileRequests.value(1)})
        QCOMPARE(std::tuple(asked.save, asked.flags, asked.initDir, asked.fileName),
                 std::tuple(false, int(cdlOFNHideReadOnly), DesktopFolder(), QString()));
    QCOMPARE(p.dialogs->fileRequests.value(0).filter, QStringLiteral("MP3 Files (*.MP3)|*.MP3"));
    QCOMPARE(again.dialogs->fileRequests.value(1).filter, QStringLiteral("MP3 Files|*.MP3"));
    QTRY_VERIFY(player->Player.displayText().startsWith(QStringLiteral("second.MP3\nPlaying\n")));
    // Cancelled: the tune stopped before the question stays stopped, the window stays open.
    answer.clear();
    input::click(player->OpenMore);
    QTRY_VERIFY(!player->Player.isPlaying());
    QVERIFY(player->Visible());
    // The minimise button, with a click; the exit button closes it once, playback and all.
    again.log.clear();
    input::click(player->MiniMe);
    QCOMPARE(player->WindowState(), int(vbMinimized));
    player->setWindowState(vbNormal);
    QPointer<QObject> gone(player->widget());
    input::click(player->ExitMe);
    QCOMPARE(again.log, (QStringList{"Click.WAV", "CloseWIN.WAV"}));
    QTRY_VERIFY(gone.isNull());
    QCOMPARE(again.untrappedErrors, QList<int>{});
}

void TestAccessories::mp3Transport()
{
    Program p;
    Tunes tunes;
    p.dialogs->fileAnswer = [&](const FileDialogRequest&) { return tunes.first(); };
    auto* player = p.open<MP3PlayerFRM>();
    QVERIFY(player);
    MediaPlayer& m = player->Player;
    // The open-folder button: "1" in Wingdings, shown as its yellow folder.
    const QImage face = player->OpenMore.widget()->grab().toImage();
    int folder = 0;
    for (int y = 0; y < face.height(); ++y)
        for (int x = 0; x < face.width(); ++x)
            folder += face.pixelColor(x, y).red() > 200 && face.pixelColor(x, y).blue() < 140;
    QVERIFY2(folder > 20, "no open folder on the button");
    // No play command: the file starts by itself.
    QTRY_VERIFY_WITH_TIMEOUT(m.isPlaying() && m.Duration() > 0, 10000);
    QVERIFY(m.displayText().startsWith(QStringLiteral("first.mp3\nPlaying\n0:0")));
    QVERIFY(m.displayText().endsWith(QStringLiteral(" / 0:0") + QString::number(m.Duration() / 1000)));
    auto clickPart = [&](MediaPlayer::Part part, double along = 0.5) {
        const QRect r = m.partRect(part);
        input::click(m, Qt::LeftButton, QPoint(r.left() + int(r.width() * along), r.center().y()));
    };
    clickPart(MediaPlayer::Part::PlayPause); // pause
    QTRY_VERIFY(m.displayText().contains(QStringLiteral("\nPaused\n")));
    // A click on the slider puts the tune where it was clicked, well away from where it paused.
    const double along = m.Position() < m.Duration() / 2 ? 0.8 : 0.2;
    clickPart(MediaPlayer::Part::Position, along);
    QTRY_VERIFY2(std::abs(m.Position() - qint64(along * m.Duration())) < m.Duration() / 8, qPrintable(QString::number(m.Position())));
    clickPart(MediaPlayer::Part::PlayPause); // play again
    QTRY_VERIFY(m.isPlaying());
    clickPart(MediaPlayer::Part::Stop);
    QTRY_VERIFY(m.displayText().contains(QStringLiteral("\nStopped\n")) && m.Position() == 0);
    // The volume: a click low on its slider turns it down, for the sound server's stream too.
    clickPart(MediaPlayer::Part::Volume, 0.02);
    QVERIFY(m.Volume() < 100);
    QCOMPARE(qRound(m.player()->audioOutput()->volume() * 100), m.Volume());
}

void TestAccessories::readme_data()
{
    QTest::addColumn<QByteArray>("file"); // null: none
    QTest::addColumn<bool>("message");
    QFile shipped(QStringLiteral(GLIDEPATH_SOURCE_DIR "/program/readme.TXT"));
    shipped.open(QIODevice::ReadOnly);
    QTest::newRow("the shipped readme") << shipped.readAll() << false;
    QTest::newRow("8-bit text") << QByteArray("Gr\xfc\xdf" "e \x80 5\r\n") << false;
    QTest::newRow("missing") << QByteArray() << true;
    QTest::newRow("empty") << QByteArray("") << true;
}

void TestAccessories::readme()
{
    QFETCH(QByteArray, file);
    QFETCH(bool, message);
    Program p;
    if (!file.isNull())
        p.write("readme.TXT", file);
    auto* readme = p.open<ReadMeFRM>();
    QVERIFY(readme);
    const QString text = message ? QStringLiteral("Glide Path - By: Marlo. Enjoy.") : decodeAnsi(file);
    QCOMPARE(readme->Data.Text(), text); // in full, every byte
    QCOMPARE(p.dialogs->messageBoxes,
             message ? QStringList{"Sorry, The Readme File (In The Same Directory As Glidepath.exe, Named ''readme.txt'') Cannot be Found."}
                     : QStringList{});
    QCOMPARE(p.dialogs->messageBoxTitles, message ? QStringList{"Glidepath"} : QStringList{}); // the program's own title
    // An ordinary text box: what is typed shows, and nothing is saved.
    input::type(readme->Data, QStringLiteral("typed "));
    QCOMPARE(QString(readme->Data.Text()).remove('\r'), QString("typed " + text).remove('\r'));
    QCOMPARE(p.read("readme.TXT"), file);
    QCOMPARE(p.untrappedErrors, QList<int>{});
}

void TestAccessories::aboutAndHiddenPage()
{
    Program p;
    auto* about = p.open<AboutFRM>();
    QVERIFY(about);
    QCOMPARE(about->Image.Picture().size(), QSize(122, 131)); // stored with the window
    // The hidden page: the intro window is made for it, hidden, and its player plays the
    // theme's music, on after the page closes.
    auto* page = p.open<SecretPlace>();
    QVERIFY(page);
    QVERIFY(page->widget()->windowFlags() & Qt::WindowStaysOnTopHint);
    QCOMPARE(form<IntroFRM>().Player.FileName(), kThemes + "/Default/Intro.MP3");
    QTRY_VERIFY_WITH_TIMEOUT(form<IntroFRM>().Player.isPlaying(), 10000);
    QVERIFY(!form<IntroFRM>().Visible());
    Unload(*page);
    QVERIFY(form<IntroFRM>().Player.isPlaying());
    // Shown again half-way, the timer is not started afresh: it ends the panel once, fifteen
    // seconds after the page was made (not twenty-two and a half), and stops.
    page = p.open<SecretPlace>();
    QVERIFY(page);
    QElapsedTimer made;
    made.start();
    QVERIFY(page->AuthorFRM.Visible() && !page->TImage(0).Visible());
    QTimer::singleShot(7500, page->widget(), [page] {
        page->Hide();
        page->Show();
    });
    QTRY_VERIFY_WITH_TIMEOUT(!page->Timer.Enabled(), 25000);
    QVERIFY2(made.elapsed() < 19000, qPrintable(QString::number(made.elapsed())));
    QVERIFY(!page->AuthorFRM.Visible() && page->TImage(0).Visible());
    // The picture covers the window.
    const QImage shot = page->widget()->grab().toImage();
    QVERIFY(shot.pixelColor(page->widget()->width() / 2, 20) != page->widget()->palette().color(QPalette::Window));
    QCOMPARE(p.untrappedErrors, QList<int>{});
}

GLIDEPATH_TEST_MAIN(TestAccessories)
#include "tst_accessories.moc"
