// The main window's load sequence, each stage announced in the status pop-up, and the three
// ways it ends the program.

#include "shared/window_look.h"
#include "main_window.h"

#include "shared/procedures.h"
#include "shared/statf.h"
#include "startup/theme_selector.h"
#include "platform/picture.h"
#include "platform/runtime.h"

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
    wireNavigation();
    wireTitleStatus();
    wirePopUpBlocker();
    wireMenus();
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
