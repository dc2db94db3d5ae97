// The main window's resize rule: the address box, the browser pane and the background follow
// the window's outer size; the buttons keep their places.

#include "main_window.h"

#include "shared/procedures.h"
#include "platform/runtime.h"

using namespace platform;

namespace {
constexpr int kAddressWidthMargin = 375; // the address box and pane end 255 short of the outer width
constexpr int kBrowserHeightMargin = 1900;
} // namespace

void MainFRM::Form_Resize()
{
    // Errors: ignored statement by statement (a window smaller than the margins leaves the
    // controls as they were).
    // Kept: each rule once for the normal and once again for the maximised state; one test would look the same.
    OnErrorResumeNext next;
    next([&] { if (WindowState() == vbNormal) URLC.setWidth(Width() - kAddressWidthMargin); });
    next([&] { if (WindowState() == vbMaximized) URLC.setWidth(Width() - kAddressWidthMargin); });
    next([&] { if (WindowState() == vbNormal) BrowserWindow.setWidth(Width() - kAddressWidthMargin); });
    next([&] { if (WindowState() == vbMaximized) BrowserWindow.setWidth(Width() - kAddressWidthMargin); });
    next([&] { if (WindowState() == vbNormal) BrowserWindow.setHeight(Height() - kBrowserHeightMargin); });
    next([&] { if (WindowState() == vbMaximized) BrowserWindow.setHeight(Height() - kBrowserHeightMargin); });
    // Kept: the program's own sounds, not the theme's; changed, a user would hear the theme's open and close.
    next([&] { if (WindowState() == vbMinimized) PlayWave(AppPath() + "/Art/CloseWin.WAV"); });
    next([&] { if (WindowState() == vbMaximized) PlayWave(AppPath() + "/Art/OpenWin.WAV"); });
    next([&] { MainFBackGroundImage.setWidth(Width()); });
    next([&] { MainFBackGroundImage.setHeight(Height()); });
}
