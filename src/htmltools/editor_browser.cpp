#include "editor_browser.h"

#include "shared/window_look.h"

using namespace platform;

namespace {
constexpr int kClientWidth = 8160;
constexpr int kClientHeight = 5535;
} // namespace

EditorBrowserFRM::EditorBrowserFRM() : Form("EditorBrowserFRM", kClientWidth, kClientHeight)
{
    setCaption(QStringLiteral("Preview"));
}

void EditorBrowserFRM::Form_Load()
{
    // Errors: none trapped.
    Show();
    PlayOpenSound();
}

void EditorBrowserFRM::Form_Resize()
{
    // Errors: none trapped: a window smaller than the margins ends the program.
    BrowserWindow.setWidth(Width() - BrowserWindow.Left() - BrowserWindow.Left() - BrowserWindow.Left());
    BrowserWindow.setHeight(Height() - BrowserWindow.Top() - BrowserWindow.Top() - BrowserWindow.Top());
}
