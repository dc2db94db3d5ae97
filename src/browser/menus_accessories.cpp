// The menu entries that open the accessory windows, each in the order of steps and sounds
// its command has.

#include "main_window.h"

#include "accessories/about.h"
#include "accessories/calculator.h"
#include "accessories/doodle.h"
#include "accessories/mp3_player.h"
#include "accessories/note_pad.h"
#include "accessories/read_me.h"
#include "shared/procedures.h"
#include "startup/theme_selector.h"
#include "platform/runtime.h"

using namespace platform;

void MainFRM::CalculatorMNU_Click()
{
    // Errors: none trapped. The click first, then the window.
    PlayWave(ThemeDir() + "/Click.WAV");
    form<CalculatorFRM>().Show();
}

void MainFRM::NotePadMNU_Click()
{
    // Errors: none trapped. The window, then a click.
    form<NotePadFRM>().Show();
    PlayWave(ThemeDir() + "/Click.WAV");
}

void MainFRM::DoodlePadMNU_Click()
{
    // Errors: none trapped. The window, then the open sound.
    form<DoodleFRM>().Show();
    PlayWave(ThemeDir() + "/OpenWIN.WAV");
}

void MainFRM::AboutMNU_Click()
{
    // Errors: none trapped. The window, then the open sound.
    form<AboutFRM>().Show();
    PlayWave(ThemeDir() + "/OpenWIN.WAV");
}

void MainFRM::Readme_Click()
{
    // Errors: none trapped. No sound.
    form<ReadMeFRM>().Show();
}

void MainFRM::MP3PlayerMNU_Click()
{
    // Errors: ignored statement by statement (a player whose first question was cancelled is
    // gone before it can be shown).
    OnErrorResumeNext next;
    next([&] { form<MP3PlayerFRM>().Show(); });
    next([&] { PlayWave(ThemeDir() + "/OpenWIN.WAV"); });
}
