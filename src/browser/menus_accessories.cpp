// The menu entries that open the accessory windows, each in the order of steps and sounds
// its command has.

#include "main_window.h"

#include "accessories/about.h"
#include "accessories/calculator.h"
#include "accessories/doodle.h"
#include "accessories/mp3_player.h"
#include "accessories/note_pad.h"
#include "accessories/read_me.h"
#include "shared/window_look.h"
#include "platform/runtime.h"

using namespace platform;

void MainFRM::CalculatorMNU_Click()
{
    // Errors: none trapped. The click first, then the window.
    PlayClickSound();
    form<CalculatorFRM>().Show();
}

void MainFRM::NotePadMNU_Click()
{
    // Errors: none trapped. The window, then a click.
    form<NotePadFRM>().Show();
    PlayClickSound();
}

void MainFRM::DoodlePadMNU_Click()
{
    // Errors: none trapped. The window, then the open sound.
    form<DoodleFRM>().Show();
    PlayOpenSound();
}

void MainFRM::AboutMNU_Click()
{
    // Errors: none trapped. The window, then the open sound.
    form<AboutFRM>().Show();
    PlayOpenSound();
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
    next([&] { PlayOpenSound(); });
}
