#include "doodle.h"

#include "shared/window_look.h"
#include "platform/convert.h"
#include "platform/runtime.h"
#include "platform/wiring.h"

#include <algorithm>
#include <cmath>

using namespace platform;

namespace {
constexpr int kClientWidth = 8445;
constexpr int kClientHeight = 6180;
constexpr int kPanelShown = 240;
constexpr int kPanelHidden = 99999; // far below the window: the panel is out of sight
constexpr int kComponentMax = 255;  // the colour function's range of each component
constexpr int kPenMin = 1;
constexpr int kPenMax = 50;
constexpr std::int16_t kTrue = -1;

// The colour function takes a component above 255 as 255.
int component(std::int16_t value)
{
    return std::clamp<int>(value, 0, kComponentMax);
}

const Wiring<DoodleFRM> kWiring[] = {
    {OnClick, &DoodleFRM::HideMe, &DoodleFRM::HideMe_Click},
    {OnClick, &DoodleFRM::TClear, &DoodleFRM::TClear_Click},
    {OnTimer, &DoodleFRM::Timer, &DoodleFRM::Timer_Timer},
};
} // namespace

DoodleFRM::DoodleFRM() : Form("DoodleFRM", kClientWidth, kClientHeight)
{
    setCaption(QStringLiteral("Doodle [Double Click To Get Options Window]"));
    // The template: hidden, black, one pixel wide until the timer gives it the options.
    Line1Template.setVisible(false);
    Line1Template.setBorderColor(vbBlack);
    TFrame.setBackColor(vbButtonFace); // opaque, as a classic frame is: no drawing shows through
    Data.add(TFrame, "Data", 3, TwipsRect{2520, 200, 1095, 255}, QStringLiteral("Pen Size"));
    Data.add(TFrame, "Data", 4, TwipsRect{2520, 1080, 2895, 375}, QStringLiteral("..."));
    for (ScrollBar* bar : {&RedSLD, &GreenSLD, &BlueSLD}) {
        bar->setRange(0, kComponentMax);
        bar->setValue(0);
    }
    RedSLD.setAccessibleName(QStringLiteral("Red"));
    GreenSLD.setAccessibleName(QStringLiteral("Green"));
    BlueSLD.setAccessibleName(QStringLiteral("Blue"));
    PenSize.setRange(kPenMin, kPenMax);
    PenSize.setValue(kPenMin);
    UseWindowFont({&TFrame, &Data(3), &Data(4)});
    UseWindowFont({&TClear, &HideMe}, kButtonFontPoints);

    wire(*this, kWiring);
}

OleColor DoodleFRM::MixColour(ScrollBar& red, ScrollBar& green, ScrollBar& blue)
{
    return RGB(component(ToInteger(red.Value())), component(ToInteger(green.Value())),
               component(ToInteger(blue.Value())));
}

void DoodleFRM::Form_Load()
{
    // Errors: none trapped.
    PlayOpenSound();
    TFrame.setTop(kPanelHidden);
}

void DoodleFRM::Form_Unload(int& cancel)
{
    // Errors: none trapped.
    (void)cancel;
    PlayCloseSound();
}

void DoodleFRM::Form_DblClick()
{
    // Errors: none trapped.
    TFrame.setTop(kPanelShown);
}

void DoodleFRM::HideMe_Click()
{
    // Errors: none trapped.
    TFrame.setTop(kPanelHidden);
    PlayClickSound();
}

void DoodleFRM::TClear_Click()
{
    // Errors: none trapped. A fresh window: no lines, the panel hidden, the sliders as designed.
    PlayClickSound();
    Unload(*this);
    form<DoodleFRM>().Show();
}

void DoodleFRM::Form_MouseDown(int button, int shift, double x, double y)
{
    // Errors: none trapped (a y beyond the 16-bit range is an Overflow).
    (void)button, (void)shift;
    Drawing = kTrue;
    PrevX = float(x);
    PrevY = ToInteger(y);
}

void DoodleFRM::Form_MouseMove(int button, int shift, double x, double y)
{
    // Errors: none trapped.
    (void)button, (void)shift;
    if (!Drawing)
        return;
    platform::Line& segment = Line1.Load(Line1.UBound() + 1);
    segment.setEnds(int(std::lround(PrevX)), PrevY, int(std::lround(x)), int(std::lround(y)));
    segment.setVisible(true);
    PrevX = float(x);
    PrevY = ToInteger(y);
}

void DoodleFRM::Form_MouseUp(int button, int shift, double x, double y)
{
    // Errors: none trapped.
    (void)button, (void)shift, (void)x, (void)y;
    Drawing = 0;
}

void DoodleFRM::Timer_Timer()
{
    // Errors: none trapped. Only segments drawn from now on take the options.
    const OleColor colour = MixColour(RedSLD, GreenSLD, BlueSLD);
    Preview.setBackColor(colour);
    Line1(0).setBorderColor(Preview.BackColor());
    Line1(0).setBorderWidth(PenSize.Value());
    Data(4).setCaption(QString::number(PenSize.Value()));
}
