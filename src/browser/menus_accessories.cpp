// The menu entries that open the accessory windows, each in the order of steps and sounds
// its command has.

#include "main_window.h"

#include "accessories/calculator.h"
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
