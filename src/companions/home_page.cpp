#include "home_page.h"

#include "shared/window_look.h"
#include "browser/main_window.h"
#include "shared/procedures.h"
#include "shared/settings.h"
#include "platform/runtime.h"

using namespace platform;

namespace {
constexpr int kClientWidth = 3990;
constexpr int kClientHeight = 855;
} // namespace

HomePageFRM::HomePageFRM() : Form("HomePageFRM", kClientWidth, kClientHeight)
{
    setCaption(QStringLiteral("Edit Home Page"));
    UseWindowFont({&Data});
    UseWindowFont({&Cncl}, kButtonFontPoints);
    UseWindowFont({&OkCMD}, kButtonFontPoints);
    Data.onKeyPress([this](std::int16_t& key) { Data_KeyPress(key); });
    Cncl.onClick([this] { Cncl_Click(); });
    OkCMD.onClick([this] { OkCMD_Click(); });
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
    Hide(); // kept: only hidden; a user reopening it finds what it held, not the current address
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
