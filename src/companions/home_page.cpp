#include "home_page.h"

#include "shared/window_look.h"
#include "browser/main_window.h"
#include "shared/procedures.h"
#include "shared/settings.h"
#include "platform/runtime.h"
#include "platform/wiring.h"

using namespace platform;

namespace {
constexpr int kClientWidth = 3990;
constexpr int kClientHeight = 855;

const Wiring<HomePageFRM> kWiring[] = {
    {OnKeyPress, &HomePageFRM::Data, &HomePageFRM::Data_KeyPress},
    {OnClick, &HomePageFRM::Cncl, &HomePageFRM::Cncl_Click},
    {OnClick, &HomePageFRM::OkCMD, &HomePageFRM::OkCMD_Click},
};
} // namespace

HomePageFRM::HomePageFRM() : Form("HomePageFRM", kClientWidth, kClientHeight)
{
    setCaption(QStringLiteral("Edit Home Page"));
    UseWindowFont({&Data});
    UseWindowFont({&Cncl}, kButtonFontPoints);
    UseWindowFont({&OkCMD}, kButtonFontPoints);
    wire(*this, kWiring);
}

void HomePageFRM::Form_Load()
{
    // Errors: none trapped. The page being viewed is offered as the new home page.
    Data.setText(form<MainFRM>().URLC.Text());
}

void HomePageFRM::OkCMD_Click()
{
    // Errors: none trapped.
    SaveTextFile(Data, AppPath() + "/HomePage.TXT");
    PlayClickSound();
    Hide(); // Kept: only hidden; a user reopening it finds what it held, not the current address
}

void HomePageFRM::Data_KeyPress(std::int16_t& keyAscii)
{
    // Errors: none trapped.
    if (keyAscii == vbKeyReturn)
        OkCMD_Click();
}

void HomePageFRM::Cncl_Click()
{
    // Errors: none trapped.
    Hide();
    PlayClickSound();
}
