#include "theme_selector.h"

#include "shared/window_look.h"
#include "browser/main_window.h"
#include "shared/procedures.h"
#include "startup/intro.h"
#include "platform/picture.h"
#include "platform/runtime.h"
#include "platform/wiring.h"

using namespace platform;

namespace {
constexpr int kClientWidth = 6495;
constexpr int kClientHeight = 5295;

const Wiring<ThemeSelector> kWiring[] = {
    {OnChange, &ThemeSelector::Dir, &ThemeSelector::Dir_Change},
    {OnClick, &ThemeSelector::CancelCMD, &ThemeSelector::CancelCMD_Click},
    {OnClick, &ThemeSelector::OkayCMD, &ThemeSelector::OkayCMD_Click},
};
} // namespace

QString ThemeDir()
{
    return form<ThemeSelector>().TPath.Text();
}

ThemeSelector::ThemeSelector() : Form("ThemeSelector", kClientWidth, kClientHeight)
{
    setCaption(QStringLiteral("Theme Selector"));
    UseWindowFont({&Info});
    UseWindowFont({&Dir});
    UseWindowFont({&TPath});
    UseWindowFont({&CancelCMD}, kButtonFontPoints);
    UseWindowFont({&OkayCMD}, kButtonFontPoints);
    wire(*this, kWiring);
}

void ThemeSelector::Form_Load()
{
    // Errors: none trapped.
    Dir.setPath(AppPath());
    TPath.setText(Dir.Path());
}

void ThemeSelector::Form_Unload(int& cancel)
{
    // Errors: none trapped. The selector holds the theme directory and must outlive every
    // window, so closing it is its Cancel; while Cancel is not offered, it stays open.
    cancel = 1;
    if (CancelCMD.Enabled())
        CancelCMD_Click();
}

void ThemeSelector::Dir_Change()
{
    // Errors: none trapped.
    TPath.setText(Dir.Path());
}

void ThemeSelector::OkayCMD_Click()
{
    // Errors: the first failing step ends the handler, silently; the selector stays open.
    OnErrorExit([&] {
        // Kept: the empty write first; a user sees no difference unless the program dies between the two.
        WriteIniValue(QStringLiteral("Theme Directory"), QStringLiteral("Dir"), QString(), AppPath() + "/ThemeDir.INI");
        WriteIniValue(QStringLiteral("Theme Directory"), QStringLiteral("Dir"), TPath.Text(), AppPath() + "/ThemeDir.INI");
        form<MainFRM>().Go.setPicture(LoadPicture(ThemeDir() + "/GoUP.BMP"));
        form<MainFRM>().Home.setPicture(LoadPicture(ThemeDir() + "/HomeUP.BMP"));
        form<MainFRM>().Back.setPicture(LoadPicture(ThemeDir() + "/BackUP.BMP"));
        form<MainFRM>().ForwardF.setPicture(LoadPicture(ThemeDir() + "/ForwardUP.BMP"));
        form<MainFRM>().RefreshR.setPicture(LoadPicture(ThemeDir() + "/RefreshUP.BMP"));
        form<MainFRM>().StopS.setPicture(LoadPicture(ThemeDir() + "/StopUP.BMP"));
        form<MainFRM>().MainFBackGroundImage.setPicture(LoadPicture(ThemeDir() + "/Main.BMP"));
        form<IntroFRM>().Player.setAutoStart(true);
        form<IntroFRM>().Player.Open(ThemeDir() + "/Intro.MP3");
        form<MainFRM>().Show();
        Hide();
    });
}

void ThemeSelector::CancelCMD_Click()
{
    // Errors: none trapped.
    form<MainFRM>().Show();
    Hide();
}
