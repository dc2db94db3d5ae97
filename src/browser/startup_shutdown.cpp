// The main window's making (which control raises which handler), its load sequence, each stage
// announced in the status pop-up, and the three ways it ends the program.

#include "main_window.h"

#include "shared/procedures.h"
#include "shared/statf.h"
#include "shared/window_look.h"
#include "startup/theme_selector.h"
#include "platform/picture.h"
#include "platform/runtime.h"
#include "platform/wiring.h"

using namespace platform;

namespace {

constexpr int kClientWidth = 9975;
constexpr int kClientHeight = 7095;

// The buttons' released pictures, loaded in this order, each stage announced.
struct ButtonPicture {
    const char* status;
    Image MainFRM::*control;
    const char* file;
};
const ButtonPicture kButtonPictures[] = {
    {"Loading 'Go' Image...", &MainFRM::Go, "/GoUP.BMP"},
    {"Loading 'Back' Image...", &MainFRM::Back, "/BackUP.BMP"},
    {"Loading 'Forward' Image...", &MainFRM::ForwardF, "/ForwardUP.BMP"},
    {"Loading 'Refresh' Image...", &MainFRM::RefreshR, "/RefreshUP.BMP"},
    {"Loading 'Stop' Image...", &MainFRM::StopS, "/StopUP.BMP"},
    {"Loading 'Home' Image...", &MainFRM::Home, "/HomeUP.BMP"},
};

// The six themed buttons and the name of their pressed and released bitmaps.
struct ThemedButton {
    Image MainFRM::*control;
    const char* name;
};
const ThemedButton kThemedButtons[] = {
    {&MainFRM::Back, "Back"}, {&MainFRM::ForwardF, "Forward"}, {&MainFRM::Go, "Go"},
    {&MainFRM::Home, "Home"}, {&MainFRM::RefreshR, "Refresh"}, {&MainFRM::StopS, "Stop"},
};

// The pop-up blocker's tick keeps nothing, so its pace cannot be seen; at the floor it would
// wake an idle browser 62 times a second for nothing.
constexpr int kAdBlockerPaceMs = 1000;

// Every handler of the window, by the control that raises it: the toolbar and address box,
// the browser's events, the pop-up blocker, then the menu bar in menu-bar order.
const Wiring<MainFRM> kWiring[] = {
    {OnClick, &MainFRM::Home, &MainFRM::Home_Click},
    {OnClick, &MainFRM::Back, &MainFRM::Back_Click},
    {OnClick, &MainFRM::ForwardF, &MainFRM::ForwardF_Click},
    {OnClick, &MainFRM::RefreshR, &MainFRM::RefreshR_Click},
    {OnClick, &MainFRM::StopS, &MainFRM::StopS_Click},
    {OnClick, &MainFRM::Go, &MainFRM::Go_Click},
    {OnKeyPress, &MainFRM::URLC, &MainFRM::URLC_KeyPress},
    {OnStatusTextChange, &MainFRM::BrowserWindow, &MainFRM::BrowserWindow_StatusTextChange},
    {OnProgressChange, &MainFRM::BrowserWindow, &MainFRM::BrowserWindow_ProgressChange},
    {OnDownloadBegin, &MainFRM::BrowserWindow, &MainFRM::BrowserWindow_DownloadBegin},
    {OnDownloadComplete, &MainFRM::BrowserWindow, &MainFRM::BrowserWindow_DownloadComplete},
    {OnNavigateComplete2, &MainFRM::BrowserWindow, &MainFRM::BrowserWindow_NavigateComplete2},
    {OnDocumentComplete, &MainFRM::BrowserWindow, &MainFRM::BrowserWindow_DocumentComplete},
    {OnNewWindow2, &MainFRM::BrowserWindow, &MainFRM::BrowserWindow_NewWindow2},
    {OnTimer, &MainFRM::AdBlocker, &MainFRM::AdBlocker_Timer},
    {OnClick, &MainFRM::FavoritePlacesMNU, &MainFRM::FavoritePlacesMNU_Click},
    {OnClick, &MainFRM::EditHomePageMNU, &MainFRM::EditHomePageMNU_Click},
    {OnClick, &MainFRM::OpenPageMNU, &MainFRM::OpenPageMNU_Click},
    {OnClick, &MainFRM::SavePageMNU, &MainFRM::SavePageMNU_Click},
    {OnClick, &MainFRM::PagerPropertiesMNU, &MainFRM::PagerPropertiesMNU_Click},
    {OnClick, &MainFRM::PrintMNU, &MainFRM::PrintMNU_Click},
    {OnClick, &MainFRM::PrintSetupMNU, &MainFRM::PrintSetupMNU_Click},
    {OnClick, &MainFRM::Readme, &MainFRM::Readme_Click},
    {OnClick, &MainFRM::AboutMNU, &MainFRM::AboutMNU_Click},
    {OnClick, &MainFRM::ExitMNU, &MainFRM::ExitMNU_Click},
    {OnClick, &MainFRM::SelectAllMNU, &MainFRM::SelectAllMNU_Click},
    {OnClick, &MainFRM::CopyMNU, &MainFRM::CopyMNU_Click},
    {OnClick, &MainFRM::CopyURL, &MainFRM::CopyURL_Click},
    {OnClick, &MainFRM::FindMNU, &MainFRM::FindMNU_Click},
    {OnClick, &MainFRM::ThemeMNU, &MainFRM::ThemeMNU_Click},
    {OnClick, &MainFRM::SmallestMNU, &MainFRM::TextSize_Click, 0},
    {OnClick, &MainFRM::SmallMNU, &MainFRM::TextSize_Click, 1},
    {OnClick, &MainFRM::MediumMNU, &MainFRM::TextSize_Click, 2},
    {OnClick, &MainFRM::LargeMNU, &MainFRM::TextSize_Click, 3},
    {OnClick, &MainFRM::LargestMNU, &MainFRM::TextSize_Click, 4},
    {OnClick, &MainFRM::BrowserStatusMNU, &MainFRM::BrowserStatusMNU_Click},
    {OnClick, &MainFRM::DriveExplorerMNU, &MainFRM::DriveExplorerMNU_Click},
    {OnClick, &MainFRM::CalculatorMNU, &MainFRM::CalculatorMNU_Click},
    {OnClick, &MainFRM::NotePadMNU, &MainFRM::NotePadMNU_Click},
    {OnClick, &MainFRM::HTMLEditorMNU, &MainFRM::HTMLEditorMNU_Click},
    {OnClick, &MainFRM::HTMLViewerMNU, &MainFRM::HTMLViewerMNU_Click},
    {OnClick, &MainFRM::MP3PlayerMNU, &MainFRM::MP3PlayerMNU_Click},
    {OnClick, &MainFRM::DoodlePadMNU, &MainFRM::DoodlePadMNU_Click},
    {OnClick, &MainFRM::GoIdleMNU, &MainFRM::GoIdleMNU_Click},
};

void say(const QString& text)
{
    form<StatF>().Info.setCaption(text);
}

} // namespace

MainFRM::MainFRM() : Form("MainFRM", kClientWidth, kClientHeight, Menu::Bar)
{
    setCaption(QStringLiteral("Glidepath - [Loading...]"));
    setFont(kWindowFont, kFontPoints);
    URLCMirror.setVisible(false);
    MainFBackGroundImage.ZOrder(1);
    for (const ThemedButton& button : kThemedButtons)
        UseThemedButtonLook(this->*button.control, QString::fromLatin1(button.name));
    AdBlocker.setPace(kAdBlockerPaceMs);
    // The name chosen last is offered again, but a cancelled dialog names no file: otherwise a
    // Save Page cancelled after an Open Page would empty the page that was opened.
    CD.Cancel = CommonDialog::OnCancel::EmptyName;
    wire(*this, kWiring);
}

void MainFRM::Form_Load()
{
    // Errors: none trapped in stages 1 to 11 (a theme picture that cannot be loaded ends the
    // program); from stage 12 on, ignored statement by statement.
    say(QStringLiteral("Loading Theme Directory (ThemeDir.INI)"));
    QString key = QStringLiteral("Dir");
    form<ThemeSelector>().TPath.setText(ReadIniValue(QStringLiteral("Theme Directory"), key, AppPath() + "/ThemeDir.INI"));
    Show();
    say(QStringLiteral("Loading HomePage (HomePage.TXT)"));
    LoadTextFile(URLCMirror, AppPath() + "/HomePage.TXT");
    URLC.setText(URLCMirror.Text());
    setCaption("Glidepath - [Going to: " + URLC.Text() + "]");
    form<StatF>().Show();
    say(QStringLiteral("Playing Sound..."));
    PlayOpenSound();
    say(QStringLiteral("Loading BackGround (Main) Image..."));
    MainFBackGroundImage.setTop(0);
    MainFBackGroundImage.setLeft(0);
    MainFBackGroundImage.setPicture(LoadPicture(ThemeDir() + "/Main.BMP"));
    for (const ButtonPicture& button : kButtonPictures) {
        say(QString::fromLatin1(button.status));
        (this->*button.control).setPicture(LoadPicture(ThemeDir() + button.file));
    }

    OnErrorResumeNext next;
    next([&] { say(QStringLiteral("Changing Color Of Font(s)...")); });
    next([&] { ApplyFontColour({&CheckData}, {vbWhite, vbBlack, vbButtonFace}); });
    next([&] { say(QStringLiteral("Glide Path Succesfully Loaded. Enjoy.")); });
    next([&] { BrowserWindow.Navigate(URLC.Text()); });
    next([&] { Unload(form<StatF>()); });
    next([&] { setCaption("Glidepath - [Going to: " + URLC.Text() + "]"); });
}

void MainFRM::shutDown(bool restoreMinimised)
{
    PlayCloseSound();
    if (WindowState() == vbMaximized)
        setWindowState(vbNormal);
    if (restoreMinimised && WindowState() == vbMinimized)
        setWindowState(vbNormal);
    End();
}

void MainFRM::ExitMNU_Click()
{
    // Errors: none trapped.
    shutDown(true);
}

void MainFRM::Form_Unload(int& cancel)
{
    // Errors: none trapped.
    (void)cancel;
    shutDown(true);
}

void MainFRM::Form_Terminate()
{
    // Errors: none trapped.
    // Kept: unlike the other two, a minimised window is not restored; a user sees no difference as it ends.
    shutDown(false);
}
