// The main window's entries for the accessories, each with its order of window and sounds, and
// the access phrase typed into the real address box opening the hidden page.

#include "accessories/about.h"
#include "accessories/calculator.h"
#include "accessories/doodle.h"
#include "accessories/mp3_player.h"
#include "accessories/note_pad.h"
#include "accessories/read_me.h"
#include "accessories/secret_place.h"
#include "browser/main_window.h"
#include "platform/menu.h"
#include "platform/sounds.h"
#include "support/input.h"
#include "support/test_main.h"
#include "support/test_runtime.h"

#include <QAction>

using namespace platform;

Q_DECLARE_METATYPE(std::function<bool()>)

namespace {

const QString kThemes = QStringLiteral(GLIDEPATH_SOURCE_DIR "/themes");

class Program {
public:
    Program()
    {
        t.write("ThemeDir.INI", "[Theme Directory]\r\nDIR=" + (kThemes + "/Default").toLocal8Bit() + "\r\n");
        t.write("HomePage.TXT", "about:blank\r\n");
        t.write("readme.TXT", "Read me.\r\n");
        QObject::connect(&t.runtime().sounds(), &WavePlayer::requested, [this](const QString& p) { sounds << p.section('/', -1); });
        runHandler([&] { main = &form<MainFRM>(); });
        main->Show();
        if (!QTest::qWaitForWindowExposed(main->widget()))
            qWarning("the main window was not exposed");
        QTest::qWait(300); // the load sequence's pop-up and sounds
        sounds.clear();
    }

    TestRuntime t;
    MainFRM* main = nullptr;
    QStringList sounds;
};

} // namespace

class TestAccessoryMenus : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void entries_data();
    void entries();
    void accessPhrase_data();
    void accessPhrase();
};

void TestAccessoryMenus::entries_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<bool>("chooseAFile");
    QTest::addColumn<QStringList>("sounds");
    QTest::addColumn<std::function<bool()>>("shown");
    auto shown = [](auto probe) { return std::function<bool()>(probe); };
    QTest::newRow("Calculator: click, then the window") << "CalculatorMNU" << false << QStringList{"Click.WAV", "OpenWIN.WAV"}
        << shown([] { return form<CalculatorFRM>().Visible(); });
    QTest::newRow("Note Pad: the window, then click") << "NotePadMNU" << false << QStringList{"OpenWIN.WAV", "Click.WAV"}
        << shown([] { return form<NotePadFRM>().Visible(); });
    QTest::newRow("Doodle Pad: the window, then open") << "DoodlePadMNU" << false << QStringList{"OpenWIN.WAV", "OpenWIN.WAV"}
        << shown([] { return form<DoodleFRM>().Visible(); });
    QTest::newRow("About: the window, then open") << "AboutMNU" << false << QStringList{"OpenWIN.WAV", "OpenWIN.WAV"}
        << shown([] { return form<AboutFRM>().Visible(); });
    QTest::newRow("View Readme: the window alone") << "Readme" << false << QStringList{}
        << shown([] { return form<ReadMeFRM>().Visible(); });
    QTest::newRow("MP3 Player with a file") << "MP3PlayerMNU" << true << QStringList{"OpenWIN.WAV", "Click.WAV", "OpenWIN.WAV"}
        << shown([] { return form<MP3PlayerFRM>().Visible(); });
    QTest::newRow("MP3 Player cancelled") << "MP3PlayerMNU" << false
        << QStringList{"OpenWIN.WAV", "Click.WAV", "CloseWIN.WAV", "OpenWIN.WAV"}
        << shown([] { return Runtime::current().forms().isLoaded<MP3PlayerFRM>(); });
}

void TestAccessoryMenus::entries()
{
    QFETCH(QString, entry);
    QFETCH(bool, chooseAFile);
    QFETCH(QStringList, sounds);
    QFETCH(std::function<bool()>, shown);
    Program program;
    if (chooseAFile)
        program.t.dialogs->fileAnswer = [](const FileDialogRequest&) { return kThemes + "/Default/Intro.MP3"; };
    const QHash<QString, MenuItem MainFRM::*> items{
        {"CalculatorMNU", &MainFRM::CalculatorMNU}, {"NotePadMNU", &MainFRM::NotePadMNU},
        {"DoodlePadMNU", &MainFRM::DoodlePadMNU},   {"AboutMNU", &MainFRM::AboutMNU},
        {"Readme", &MainFRM::Readme},               {"MP3PlayerMNU", &MainFRM::MP3PlayerMNU}};
    MenuItem* item = &(program.main->*items.value(entry));
    item->action()->trigger();
    QCOMPARE(program.sounds, sounds);
    QCOMPARE(shown(), entry != QLatin1String("MP3PlayerMNU") || chooseAFile);
    QVERIFY(program.t.untrappedErrors.isEmpty());
    if (!shown())
        return;
    // Again while open: the same window comes forward, with the entry's own sound alone.
    program.sounds.clear();
    item->action()->trigger();
    QVERIFY(shown());
    const QStringList again = entry == QLatin1String("CalculatorMNU") || entry == QLatin1String("NotePadMNU")
                                  ? QStringList{"Click.WAV"}
                                  : entry == QLatin1String("Readme") ? QStringList{} : QStringList{"OpenWIN.WAV"};
    QCOMPARE(program.sounds, again);
}

void TestAccessoryMenus::accessPhrase_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("key"); // the key after the typing
    QTest::addColumn<bool>("opens");
    QTest::newRow("the phrase, then Enter") << "Crane at Dusk" << int(Qt::Key_Return) << true;
    QTest::newRow("the phrase, then Escape") << "Crane at Dusk" << int(Qt::Key_Escape) << true;
    QTest::newRow("the phrase, then Backspace") << "Crane at Dusk" << int(Qt::Key_Backspace) << true;
    QTest::newRow("the phrase, then a letter") << "Crane at Dusk" << int(Qt::Key_S) << true;
    QTest::newRow("other capitals") << "crane at dusk" << int(Qt::Key_Return) << false;
    QTest::newRow("a blank before it") << " Crane at Dusk" << int(Qt::Key_Return) << false;
    QTest::newRow("part of it") << "Crane at Dus" << int(Qt::Key_K) << false;
}

void TestAccessoryMenus::accessPhrase()
{
    QFETCH(QString, typed);
    QFETCH(int, key);
    QFETCH(bool, opens);
    Program program;
    MainFRM& main = *program.main;
    main.URLC.setText(QString());
    input::type(main.URLC, typed);
    // The handler sees the text before the key it is given: the phrase's last letter alone
    // opens nothing.
    QVERIFY(!program.t.runtime().forms().isLoaded<SecretPlace>());
    input::key(main.URLC, Qt::Key(key));
    QCOMPARE(program.t.runtime().forms().isLoaded<SecretPlace>(), opens);
    if (!opens)
        return;
    SecretPlace& page = form<SecretPlace>();
    QVERIFY(page.Visible());
    // Each further key while the box holds the phrase shows it again (Escape leaves the text).
    if (key == int(Qt::Key_Escape)) {
        QCOMPARE(main.URLC.Text(), typed);
        page.Hide();
        input::key(main.URLC, Qt::Key_Escape);
        QVERIFY(page.Visible());
        QCOMPARE(&form<SecretPlace>(), &page);
    }
    QVERIFY(program.t.untrappedErrors.isEmpty());
}

GLIDEPATH_WEB_TEST_MAIN(TestAccessoryMenus)
#include "tst_accessory_menus.moc"
