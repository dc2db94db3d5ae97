#include "intro.h"

#include "shared/window_look.h"
#include "browser/main_window.h"
#include "shared/procedures.h"
#include "startup/theme_selector.h"
#include "platform/picture.h"
#include "platform/runtime.h"
#include "platform/wiring.h"

using namespace platform;

namespace {
constexpr int kClientWidth = 7335;
constexpr int kClientHeight = 2535;
constexpr int kPictureMargins = 480; // 240 twips on each side of the picture
constexpr int kNoButtonStyle = 8;    // names no standard button set: a single OK

const Wiring<IntroFRM> kWiring[] = {
    {OnClick, &IntroFRM::ClickAnywhereToEnter, &IntroFRM::ClickAnywhereToEnter_Click},
};
} // namespace

IntroFRM::IntroFRM() : Form("IntroFRM", kClientWidth, kClientHeight)
{
    setBorderStyle(vbBSNone);
    UseWindowFont({&ClickAnywhereToEnter}, kButtonFontPoints);
    ClickAnywhereToEnter.setForeColor(vbWhite); // readable on the dark margins of the themes
    // The text stands in the bottom margin, clear of the picture.
    ClickAnywhereToEnter.setAlignment(vbCenter, Label::Vertical::Bottom);
    ClickAnywhereToEnter.setAccessibleName(QStringLiteral("Click Anywhere To Enter."));
    Player.setVisible(false);
    CentreOnScreen();
    wire(*this, kWiring);
}

void IntroFRM::Form_Load()
{
    // Errors: none trapped at first; ignored statement by statement from step 4 on when no
    // theme directory is stored, and from step 10 on in every case.
    QString key = QStringLiteral("Dir");
    form<ThemeSelector>().TPath.setText(ReadIniValue(QStringLiteral("Theme Directory"), key, AppPath() + "/ThemeDir.INI"));
    if (ThemeDir().isEmpty())
        form<ThemeSelector>().CancelCMD.setEnabled(false);
    if (ThemeDir().isEmpty())
        form<ThemeSelector>().Show();

    OnErrorResumeNext next;
    bool ignoring = ThemeDir().isEmpty();
    auto step = [&](auto&& statement) {
        if (ignoring)
            next(statement);
        else
            statement();
    };
    step([&] { if (ThemeDir().isEmpty()) Hide(); });
    step([&] { if (ThemeDir().isEmpty()) MsgBox(QStringLiteral("Please Select a Theme Directory."), kNoButtonStyle, QStringLiteral("")); });
    step([&] { Player.setAutoStart(true); });
    step([&] { Player.Open(ThemeDir() + "/Intro.MP3"); });
    step([&] { ImageOne.setPicture(LoadPicture(ThemeDir() + "/Main.BMP")); });
    step([&] { IntroImage.setPicture(LoadPicture(ThemeDir() + "/Intro.BMP")); });

    ignoring = true;
    step([&] { setWidth(IntroImage.Width() + kPictureMargins); });
    step([&] { setHeight(IntroImage.Height() + kPictureMargins); });
    step([&] { ClickAnywhereToEnter.setHeight(Height()); });
    step([&] { ClickAnywhereToEnter.setWidth(Width()); });
    step([&] { ImageOne.setWidth(Width()); });
    step([&] { ImageOne.setHeight(Height()); });
    step([&] { IntroFormBorder.setWidth(Width()); });
    step([&] { IntroFormBorder.setHeight(Height()); });
    step([&] { StayOnTop(*this); });

    step([&] { ApplyFontColour({&ClickAnywhereToEnter}, {vbWhite, vbBlack, vbButtonFace}); });
    step([&] { WithFontColour({vbBlack, vbWhite, vbApplicationWorkspace}, [&](OleColor c) { setBackColor(c); }); });
    step([&] { WithFontColour({vbBlack, vbWhite, vbApplicationWorkspace}, [&](OleColor c) { IntroFormBorder.setBorderColor(c); }); });
}

void IntroFRM::ClickAnywhereToEnter_Click()
{
    // Errors: none trapped.
    PlayClickSound();
    SqueezeStretchEffect(*this);
    Hide();
    form<MainFRM>().Show();
}
