#include "statf.h"

#include "shared/window_look.h"
#include "procedures.h"
#include "platform/convert.h"

using namespace platform;

namespace {
constexpr int kClientWidth = 5055;
constexpr int kClientHeight = 495;
constexpr double kLingerSeconds = 0.6; // Kept: Pause's whole seconds make it 1, so a user sees the text a second
} // namespace

StatF::StatF() : Form("StatF", kClientWidth, kClientHeight)
{
    setBorderStyle(vbBSNone);
    setBackColor(vbBlack);
    UseWindowFont({&Info});
    Info.setForeColor(vbWhite);
    Info.setBackColor(vbBlack);
    Info.setAlignment(vbCenter);
    // Centred on the screen, where the eye is while the program starts.
    CentreOnScreen();
}

void StatF::Form_Load()
{
    // Errors: none trapped.
    StayOnTop(*this);
}

void StatF::Form_Unload(int& cancel)
{
    // Errors: none trapped.
    (void)cancel;
    Pause(ToLong(kLingerSeconds));
    Hide();
}
