// The about box, the readme viewer and the hidden page: the credits at their places in the
// chosen font colour, the readme in full or the not-found message, the hidden page's panel
// giving way to its picture after fifteen seconds while the intro music plays again.

#include "accessories/about.h"
#include "accessories/read_me.h"
#include "accessories/secret_place.h"
#include "startup/intro.h"
#include "startup/theme_selector.h"
#include "platform/cp1252.h"
#include "platform/errors.h"
#include "platform/sounds.h"
#include "support/test_runtime.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTest>

using namespace platform;

namespace {

const QString kSource = QStringLiteral(GLIDEPATH_SOURCE_DIR);
const QString kThemes = kSource + "/themes";
constexpr int kTwips = 15;

template <class F>
F* open(TestRuntime& t, const QString& theme = kThemes + "/Default")
{
    t.write("ThemeDir.INI", "[Theme Directory]\r\nDIR=" + theme.toLocal8Bit() + "\r\n");
    form<ThemeSelector>().TPath.setText(theme);
    F* window = nullptr;
    runHandler([&] { window = &form<F>(); });
    if (window) {
        window->Show();
        if (!QTest::qWaitForWindowExposed(window->widget()))
            qWarning("the window was not exposed");
    }
    return window;
}

QRect twips(const Control& c)
{
    return QRect(c.Left(), c.Top(), c.Width(), c.Height());
}

// A copy of the Default theme in dir, without the named file.
QString themeWithout(const QTemporaryDir& dir, const QString& missing)
{
    for (const QString& f : QDir(kThemes + "/Default").entryList(QDir::Files))
        if (f != missing)
            QFile::copy(kThemes + "/Default/" + f, dir.filePath(f));
    return dir.path();
}

} // namespace

class TestAboutWindows : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void aboutLabels_data();
    void aboutLabels();
    void aboutColours_data();
    void aboutColours();
    void aboutPicturesAndSounds();
    void aboutMissingBackgroundEndsTheProgram();
    void readme_data();
    void readme();
    void readmeResizeRule_data();
    void readmeResizeRule();
    void hiddenPagePlaysTheIntroMusicAgain();
    void hiddenPageResizeRule();
    void hiddenPagePanelGivesWayAfterFifteenSeconds();
};

void TestAboutWindows::aboutLabels_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text"); // empty: our own text, checked for fitting
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<double>("points");
    QTest::addColumn<bool>("centred");
    auto row = [](int i, const char* text, QRect r, double points = 8.25, bool centred = false) {
        QTest::addRow("Data(%d)", i) << i << QString::fromLatin1(text) << r << points << centred;
    };
    row(0, "Glide Path", {0, 0, 6495, 435}, 20.25, true);
    row(1, "Programmer:", {120, 1560, 1320, 195}, 9.75);
    row(13, "", {1800, 2640, 2775, 255});
    row(2, "Thanks To:", {120, 2880, 1050, 180});
    row(3, "", {240, 3120, 5055, 900});
    row(4, "Form Count:", {120, 4200, 1155, 180});
    row(5, "18 Plus 1 Unveiwable and 1 Hidden. (Secret Place)", {240, 4440, 5145, 180});
    row(6, "Version:", {120, 4920, 840, 180});
    row(7, "2.0", {240, 5160, 315, 180});
    row(9, "Files Included with Executive File:", {120, 5640, 3675, 180});
    row(10, "All Skins and Sounds", {240, 5880, 2100, 180});
    row(11, "Other:", {120, 6360, 630, 180});
    row(12, "932 Lines of Code, Total", {240, 6600, 2520, 180});
    row(8, "", {360, 6840, 2235, 180});
    row(14, "Please Enjoy This Marlo Production", {1440, 7200, 3585, 180}, 8.25, true);
}

void TestAboutWindows::aboutLabels()
{
    QFETCH(int, index);
    QFETCH(QString, text);
    QFETCH(QRect, rect);
    QFETCH(double, points);
    QFETCH(bool, centred);
    TestRuntime t;
    AboutFRM* about = open<AboutFRM>(t);
    QVERIFY(about);
    QCOMPARE(about->Data.Count(), 15);
    Label& label = about->Data(index);
    QCOMPARE(label.Index(), index);
    QCOMPARE(twips(label), rect);
    QCOMPARE(label.widget()->font().pointSizeF(), points);
    auto* shown = static_cast<QLabel*>(label.widget());
    QCOMPARE(bool(shown->alignment() & Qt::AlignHCenter), centred);
    if (!text.isEmpty()) {
        QCOMPARE(label.Caption(), text);
        return;
    }
    // Our own texts fit their boxes: one line, or the wrapped thanks list.
    QVERIFY(!label.Caption().isEmpty());
    const QFontMetrics metrics(shown->font());
    if (shown->wordWrap())
        QVERIFY2(shown->heightForWidth(shown->width()) <= shown->height(), qPrintable(label.Caption()));
    else
        QVERIFY2(metrics.horizontalAdvance(label.Caption()) <= shown->width(), qPrintable(label.Caption()));
}

void TestAboutWindows::aboutColours_data()
{
    QTest::addColumn<QByteArray>("code"); // ForeC.INI; "-" for none
    QTest::addColumn<OleColor>("all");    // 0xFFFFFFFF: the designed colours
    const OleColor designed = 0xFFFFFFFF;
    QTest::newRow("no code") << QByteArray("-") << designed;
    QTest::newRow("1 white") << QByteArray("1") << vbWhite;
    QTest::newRow("2 black") << QByteArray("2") << vbBlack;
    QTest::newRow("3 button face") << QByteArray("3") << vbButtonFace;
    QTest::newRow("another code") << QByteArray("4") << designed;
    QTest::newRow("a code with its line end") << QByteArray("2\r\n") << designed;
}

void TestAboutWindows::aboutColours()
{
    QFETCH(QByteArray, code);
    QFETCH(OleColor, all);
    TestRuntime t;
    if (code != "-")
        t.write("ForeC.INI", code);
    AboutFRM* about = open<AboutFRM>(t);
    QVERIFY(about);
    for (int i = 0; i < 15; ++i) {
        const OleColor expected = all != 0xFFFFFFFF ? all : i == 1 ? RGB(224, 224, 224) : vbWhite;
        QCOMPARE(about->Data(i).ForeColor(), expected);
        // As shown: the button face follows the desktop's scheme.
        QCOMPARE(about->Data(i).widget()->palette().color(QPalette::WindowText), toQColor(expected));
    }
    if (all == vbButtonFace)
        QCOMPARE(about->Data(1).widget()->palette().color(QPalette::WindowText), QApplication::palette().color(QPalette::Button));
}

void TestAboutWindows::aboutPicturesAndSounds()
{
    TestRuntime t;
    QStringList sounds;
    QObject::connect(&t.runtime().sounds(), &WavePlayer::requested, [&](const QString& p) { sounds << p.section('/', -1); });
    AboutFRM* about = open<AboutFRM>(t);
    QVERIFY(about);
    QCOMPARE(about->Caption(), QStringLiteral("About This Application"));
    QCOMPARE(sounds, QStringList{"OpenWIN.WAV"});
    QCOMPARE(about->Image.Picture().size(), QSize(122, 131));
    QCOMPARE(twips(about->Image), QRect(2160, 480, 2175, 2085)); // stretched, not resized to the picture
    QCOMPARE(twips(about->BGI), QRect(0, 0, 6495, 7455));
    QVERIFY(!about->BGI.Picture().isNull());
    QCOMPARE(about->widget()->size(), QSize(6495 / kTwips, 7455 / kTwips));
    sounds.clear();
    Unload(*about);
    QCOMPARE(sounds, QStringList{"CloseWIN.WAV"});
}

void TestAboutWindows::aboutMissingBackgroundEndsTheProgram()
{
    QTemporaryDir theme;
    TestRuntime t;
    open<AboutFRM>(t, themeWithout(theme, QStringLiteral("Main.BMP")));
    QCOMPARE(t.untrappedErrors, QList<int>{ErrFileNotFound});
}

void TestAboutWindows::readme_data()
{
    QTest::addColumn<QByteArray>("file"); // "-": none
    QTest::addColumn<bool>("message");
    QTest::newRow("the shipped readme") << QByteArray("shipped") << false;
    QTest::newRow("8-bit text") << QByteArray("Gr\xfc\xdf" "e \x80 5\r\n") << false;
    QTest::newRow("missing") << QByteArray("-") << true;
    QTest::newRow("empty") << QByteArray("") << true;
}

void TestAboutWindows::readme()
{
    QFETCH(QByteArray, file);
    QFETCH(bool, message);
    TestRuntime t;
    if (file == "shipped") {
        QFile shipped(kSource + "/program/readme.TXT");
        QVERIFY(shipped.open(QIODevice::ReadOnly));
        file = shipped.readAll();
    }
    if (file != "-")
        t.write("readme.TXT", file);
    ReadMeFRM* readme = open<ReadMeFRM>(t);
    QVERIFY(readme);
    QCOMPARE(readme->Caption(), QStringLiteral("Read Me "));
    QVERIFY(readme->widget()->windowFlags() & Qt::WindowStaysOnTopHint);
    if (!message) {
        QVERIFY(t.dialogs->messageBoxes.isEmpty());
        QCOMPARE(readme->Data.Text(), decodeAnsi(file)); // in full, every byte
        return;
    }
    QCOMPARE(t.dialogs->messageBoxes,
             QStringList{"Sorry, The Readme File (In The Same Directory As Glidepath.exe, Named ''readme.txt'') Cannot be Found."});
    QCOMPARE(t.dialogs->messageBoxStyles, QList<int>{vbOKOnly});
    QCOMPARE(t.dialogs->messageBoxTitles, QStringList{QString()}); // the program's own title
    QCOMPARE(readme->Data.Text(), QStringLiteral("Glide Path - By: Marlo. Enjoy."));
    QVERIFY(t.untrappedErrors.isEmpty());
}

void TestAboutWindows::readmeResizeRule_data()
{
    QTest::addColumn<QSize>("window");
    QTest::addColumn<QSize>("box");
    QTest::addColumn<int>("error");
    QTest::newRow("designed") << QSize(9375, 5175) << QSize(9255, 4775) << 0;
    QTest::newRow("larger") << QSize(12000, 8000) << QSize(11880, 7600) << 0;
    QTest::newRow("too low") << QSize(3000, 300) << QSize() << int(ErrInvalidPropertyValue);
}

void TestAboutWindows::readmeResizeRule()
{
    QFETCH(QSize, window);
    QFETCH(QSize, box);
    QFETCH(int, error);
    TestRuntime t;
    t.write("readme.TXT", "text\r\n");
    ReadMeFRM* readme = open<ReadMeFRM>(t);
    QVERIFY(readme);
    runHandler([&] {
        readme->setWidth(window.width());
        readme->setHeight(window.height());
    });
    if (error) {
        QCOMPARE(t.untrappedErrors, QList<int>{error});
        return;
    }
    QCOMPARE(QSize(readme->Data.Width(), readme->Data.Height()), box);
}

void TestAboutWindows::hiddenPagePlaysTheIntroMusicAgain()
{
    TestRuntime t;
    QVERIFY(!t.runtime().forms().isLoaded<IntroFRM>());
    SecretPlace* page = open<SecretPlace>(t);
    QVERIFY(page);
    QCOMPARE(page->Caption(), QStringLiteral("Secret Place!"));
    QVERIFY(page->Visible());
    QVERIFY(page->widget()->windowFlags() & Qt::WindowStaysOnTopHint);
    // The intro window is made for it, hidden, and its player plays the theme's music.
    QVERIFY(t.runtime().forms().isLoaded<IntroFRM>());
    IntroFRM& intro = form<IntroFRM>();
    QVERIFY(!intro.Visible());
    QCOMPARE(intro.Player.FileName(), kThemes + "/Default/Intro.MP3");
    QVERIFY(intro.Player.AutoStart());
    QTRY_VERIFY_WITH_TIMEOUT(intro.Player.isPlaying(), 10000);
    // The music goes on after the page closes.
    Unload(*page);
    QTest::qWait(200);
    QVERIFY(intro.Player.isPlaying());
    QVERIFY(t.untrappedErrors.isEmpty());
}

void TestAboutWindows::hiddenPageResizeRule()
{
    TestRuntime t;
    SecretPlace* page = open<SecretPlace>(t);
    QVERIFY(page);
    for (const QSize outer : {QSize(9000, 6000), QSize(4500, 2400)}) {
        runHandler([&] {
            page->setWidth(outer.width());
            page->setHeight(outer.height());
        });
        QCOMPARE(QSize(page->TImage(0).Width(), page->TImage(0).Height()), outer);
    }
    QCOMPARE(page->TImage(0).Picture().size(), QSize(704, 338));
    QVERIFY(t.untrappedErrors.isEmpty());
}

void TestAboutWindows::hiddenPagePanelGivesWayAfterFifteenSeconds()
{
    TestRuntime t;
    SecretPlace* page = open<SecretPlace>(t);
    QVERIFY(page);
    QCOMPARE(page->Timer.Interval(), 15000);
    QVERIFY(page->AuthorFRM.Visible());
    QVERIFY(!page->TImage(0).Visible());
    QCOMPARE(page->Data(0).Caption(), QStringLiteral("You've Found the Secret Place."));
    QCOMPARE(page->Data(2).Caption(), QStringLiteral("This Little Window Will Disappear in 15 Seconds"));
    QVERIFY(!page->Image.Picture().isNull());
    // Shown again half-way: the timer is not started afresh.
    QTest::qWait(7000);
    page->Hide();
    page->Show();
    QTest::qWait(7000);
    QVERIFY(page->AuthorFRM.Visible());
    QTRY_VERIFY_WITH_TIMEOUT(page->TImage(0).Visible(), 3000);
    QVERIFY(!page->AuthorFRM.Visible());
    QVERIFY(!page->Timer.Enabled());
    // The picture covers the window.
    const QImage shot = page->widget()->grab().toImage();
    QVERIFY(shot.pixelColor(page->widget()->width() / 2, 20) != page->widget()->palette().color(QPalette::Window));
}

QTEST_MAIN(TestAboutWindows)
#include "tst_about_windows.moc"
