#include "browser_status.h"

#include "browser/main_window.h"
#include "shared/procedures.h"
#include "shared/settings.h"
#include "shared/window_look.h"
#include "platform/convert.h"
#include "platform/picture.h"
#include "platform/runtime.h"
#include "platform/wiring.h"

using namespace platform;

namespace {

constexpr int kClientWidth = 7215;
constexpr int kClientHeight = 3615;
constexpr OleColor kLightGrey = RGB(224, 224, 224);
// Hidden (as it is from the first page load on), nobody sees the labels: the timer goes on, at
// a pace that costs nothing while the main window sits idle. Shown, it ticks at once and then at
// the platform's floor.
constexpr int kHiddenPaceMs = 500;

struct Caption {
    const char* text;
    platform::TwipsRect rect;
};
// Info 0 to 5, with their place; the values sit 240 twips below each.
constexpr Caption kCaptions[] = {
    {"Percentage Loaded:", {120, 120, 1935, 255}}, {"Location Name:", {120, 720, 1575, 255}},
    {"Location URL:", {120, 1320, 1935, 255}},     {"Height (Pixles):", {120, 2520, 1935, 255}},
    {"Width (Pixles):", {120, 3120, 1575, 255}},   {"Window State:", {120, 1920, 1575, 255}},
};

const Wiring<BrowserStatusFRM> kWiring[] = {
    {OnTimer, &BrowserStatusFRM::Timer, &BrowserStatusFRM::Timer_Timer},
};

} // namespace

BrowserStatusFRM::BrowserStatusFRM() : Form("BrowserStatusFRM", kClientWidth, kClientHeight)
{
    setCaption(QStringLiteral("Browser Status"));
    for (int i = 0; i < int(std::size(kCaptions)); ++i)
        Info.add(*this, "Info", i, kCaptions[i].rect, QString::fromLatin1(kCaptions[i].text));
    for (Label* label : labels()) {
        UseWindowFont({label});
        label->setForeColor(vbWhite);
    }
    Info(1).setForeColor(kLightGrey);
    Timer.setHiddenPace(kHiddenPaceMs, platform::Timer::CatchUp::AtShow);
    wire(*this, kWiring);
}

std::vector<Label*> BrowserStatusFRM::labels()
{
    std::vector<Label*> all;
    for (Label& caption : Info)
        all.push_back(&caption);
    for (Label* value : {&PercentageLoaded, &LocationName, &LocationURLL, &WindowStateLBL, &HeightQ, &WidthQ})
        all.push_back(value);
    return all;
}

void BrowserStatusFRM::Form_Load()
{
    // Errors: none trapped.
    PlayOpenSound();
    StayOnTop(*this);
    ImageOne.setPicture(LoadPicture(ThemeDir() + "/Main.BMP"));
    // The code is read afresh for every label and every test; "?" is this window's third code.
    for (Label* label : labels())
        ApplyFontColour({label}, {vbWhite, vbBlack, vbButtonFace, "?"});
}

void BrowserStatusFRM::Timer_Timer()
{
    // Errors: none trapped.
    MainFRM& main = form<MainFRM>();
    LocationURLL.setCaption(main.BrowserWindow.LocationURL());
    LocationName.setCaption(main.BrowserWindow.LocationName());
    if (main.WindowState() == vbNormal)
        WindowStateLBL.setCaption(QStringLiteral("Normal"));
    if (main.WindowState() == vbMinimized)
        WindowStateLBL.setCaption(QStringLiteral("Minimized"));
    if (main.WindowState() == vbMaximized)
        WindowStateLBL.setCaption(QStringLiteral("Maximized"));
    // Kept: twips under captions that say pixels; in pixels an 800-pixel pane would read 800, not 12000.
    HeightQ.setCaption(SingleToText(float(main.BrowserWindow.Height())));
    WidthQ.setCaption(SingleToText(float(main.BrowserWindow.Width())));
}

void BrowserStatusFRM::Form_Unload(int& cancel)
{
    // Errors: none trapped.
    (void)cancel;
    PlayCloseSound();
}
