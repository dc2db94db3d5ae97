// The menu entries wired so far; the others arrive with the windows they open.

#include "main_window.h"

#include "companions/browser_status.h"
#include "companions/home_page.h"
#include "shared/procedures.h"
#include "startup/theme_selector.h"
#include "platform/runtime.h"

using namespace platform;

void MainFRM::wireMenus()
{
    ExitMNU.onClick([this] { ExitMNU_Click(); });
    EditHomePageMNU.onClick([this] { EditHomePageMNU_Click(); });
    BrowserStatusMNU.onClick([this] { BrowserStatusMNU_Click(); });
    CalculatorMNU.onClick([this] { CalculatorMNU_Click(); });
    NotePadMNU.onClick([this] { NotePadMNU_Click(); });
    DoodlePadMNU.onClick([this] { DoodlePadMNU_Click(); });
    AboutMNU.onClick([this] { AboutMNU_Click(); });
    Readme.onClick([this] { Readme_Click(); });
}

void MainFRM::EditHomePageMNU_Click()
{
    // Errors: none trapped.
    form<HomePageFRM>().Show();
    PlayWave(ThemeDir() + "/OpenWIN.WAV");
}

void MainFRM::BrowserStatusMNU_Click()
{
    // Errors: none trapped.
    form<BrowserStatusFRM>().Show();
    PlayWave(ThemeDir() + "/OpenWIN.WAV");
}
