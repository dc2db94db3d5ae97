#include "idle_screen.h"

#include "browser/main_window.h"
#include "shared/procedures.h"
#include "shared/window_look.h"
#include "platform/colors.h"
#include "platform/convert.h"
#include "platform/runtime.h"
#include "platform/wiring.h"

#include <algorithm>

using namespace platform;

namespace {
constexpr int kClientWidth = 2235;
constexpr int kClientHeight = 1095;
constexpr double kTimeFontPoints = 14.25;

// A colour component: Rnd scaled to 0..255, rounded half to even.
int component() { return int(RoundHalfEven(Rnd() * 255)); }

const Wiring<IdleFRM> kWiring[] = {
    {OnTimer, &IdleFRM::TimeL, &IdleFRM::TimeL_Timer},
    {OnTimer, &IdleFRM::SS, &IdleFRM::SS_Timer},
};
} // namespace

IdleFRM::IdleFRM() : Form("IdleFRM", kClientWidth, kClientHeight)
{
    setCaption(QStringLiteral("IdleFRM"));
    Frame.setBackColor(vbButtonText);
    TimeLBL.setBackColor(vbButtonText);
    TimeLBL.setForeColor(vbWhite);
    UseWindowFont({&TimeLBL}, kTimeFontPoints);
    // Both at the platform's floor while shown; hidden, once a second (nobody sees a frame).
    SS.setHiddenPace(kHiddenPaceMs);
    TimeL.setHiddenPace(kHiddenPaceMs);
    wire(*this, kWiring);
}

void IdleFRM::Form_Load()
{
    // Errors: none trapped.
    setWindowState(vbMaximized);
}

void IdleFRM::TimeL_Timer()
{
    // Errors: none trapped.
    TimeLBL.setCaption(TimeOfDayText());
}

void IdleFRM::fan()
{
    Randomize(SecondsSinceMidnight());
    ScalePixels();
    const int x = ToInteger(TextToDouble(FormatTwoDigits(Rnd() * ScaleWidth())));
    const int y = ToInteger(TextToDouble(FormatTwoDigits(Rnd() * ScaleHeight())));
    const int r = std::min(x, y); // equal: x, the same
    for (int i = 0; i <= r; ++i) {
        const int red = component();
        const int green = component();
        const int blue = component();
        Circle(x, y, i, RGB(red, green, blue));
    }
}

void IdleFRM::SS_Timer()
{
    // Errors: none trapped. A fan, the lines effect (which clears the screen first), a fan.
    fan();
    RandomLinesEffect(*this);
    fan();
}

void IdleFRM::Form_Click()
{
    // Errors: none trapped. Only the window's own surface: the time and its panel take their
    // clicks themselves.
    PlayClickSound();
    Hide();
    form<MainFRM>().Show();
}

void IdleFRM::Form_Unload(int& cancel)
{
    // Errors: none trapped.
    (void)cancel;
    PlayCloseSound();
}
