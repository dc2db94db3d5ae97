#include "drive_explorer.h"

#include "shared/window_look.h"
#include "platform/runtime.h"
#include "platform/wiring.h"

using namespace platform;

namespace {
constexpr int kClientWidth = 8175;
constexpr int kClientHeight = 5610;
constexpr int kWidthMargin = 130;
constexpr int kHeightMargin = 520;

const Wiring<DriveExplorerFRM> kWiring[] = {
    {OnChange, &DriveExplorerFRM::DriveOne, &DriveExplorerFRM::DriveOne_Change},
};
} // namespace

DriveExplorerFRM::DriveExplorerFRM() : Form("DriveExplorerFRM", kClientWidth, kClientHeight)
{
    setCaption(QStringLiteral("Drive Explorer"));
    UseWindowFont({&DriveOne});
    wire(*this, kWiring);
}

void DriveExplorerFRM::Form_Load()
{
    // Errors: none trapped.
    PlayOpenSound();
    DriveExplorerWindow.Navigate(DriveOne.Drive());
}

void DriveExplorerFRM::DriveOne_Change()
{
    // Errors: none trapped.
    PlayClickSound();
    DriveExplorerWindow.Navigate(DriveOne.Drive());
}

void DriveExplorerFRM::Form_Resize()
{
    // Errors: ignored statement by statement (a window too small leaves the pane as it was).
    OnErrorResumeNext next;
    next([&] { DriveExplorerWindow.setWidth(Width() - kWidthMargin); });
    next([&] { DriveExplorerWindow.setHeight(Height() - DriveOne.Height() - kHeightMargin); });
    next([&] { DriveExplorerWindow.setTop(DriveOne.Height()); });
    next([&] { DriveOne.setWidth(Width() - kWidthMargin); });
}

void DriveExplorerFRM::Form_Unload(int& cancel)
{
    // Errors: none trapped.
    (void)cancel;
    PlayCloseSound();
}
