// The main window's entries for the HTML tools.

#include "main_window.h"

#include "htmltools/editor.h"
#include "htmltools/html_viewer.h"
#include "shared/window_look.h"
#include "platform/runtime.h"

using namespace platform;

void MainFRM::HTMLEditorMNU_Click()
{
    // Errors: none trapped.
    form<EditorFRM>().Show();
    PlayOpenSound();
}

void MainFRM::HTMLViewerMNU_Click()
{
    // Errors: none trapped. The viewer shows itself and fetches as it loads.
    form<HTMLViewerFRM>().Show();
    PlayOpenSound();
}
