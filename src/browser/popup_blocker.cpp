// The pop-up blocker's controls, timer and new-window handler. The value they compute from BP
// reaches nothing: pop-ups open as the browser opens them. That is the window's behaviour and
// is kept as it is.

#include "main_window.h"

using namespace platform;

namespace {
constexpr std::int16_t kTrue = -1;
constexpr std::int16_t kFalse = 0;
} // namespace

void MainFRM::AdBlocker_Timer()
{
    // Errors: none trapped. A check box never reports -1, so the first test never holds.
    // Kept: the tests as written and the value unread; made to work, the blocker would refuse a user's pop-ups.
    std::int16_t block = kFalse;
    if (BP.Value() == -1)
        block = kFalse;
    if (BP.Value() == 0)
        block = kTrue;
    (void)block;
}

void MainFRM::BrowserWindow_NewWindow2(bool& cancel)
{
    // Errors: none trapped.
    // Kept: the cancel flag left as it came; a user's pop-ups open whatever the check box says.
    (void)cancel;
    if (BP.Value() == -1)
        NewWindowFlag = kFalse;
    if (BP.Value() == 0)
        NewWindowFlag = kTrue;
}
