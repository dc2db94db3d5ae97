// The menu commands: the page commands on the browser pane, and the windows they open, each in
// its order of steps and sounds.

#include "main_window.h"

#include "companions/browser_status.h"
#include "companions/drive_explorer.h"
#include "companions/favorite_places.h"
#include "companions/home_page.h"
#include "companions/idle_screen.h"
#include "shared/procedures.h"
#include "shared/window_look.h"
#include "startup/theme_selector.h"
#include "platform/files.h"
#include "platform/runtime.h"
#include "platform/send_keys.h"

using namespace platform;

namespace {
// The open dialog's filter as the window gives it, "hmt" and the blanks around the bar included.
const QString kOpenFilter = QStringLiteral(
    "All Internet Files (*.hmt,*.html,*.asp,*.shtml,*.js,*.dhtml) | *.htm;*.html;*.asp;*.shtml;*.js;*.dhtml");
const QString kSaveFilter = QStringLiteral("htm (*.htm) | *.htm");
constexpr int kZoomResult = 1; // what the text-size commands hand the component for its answer

// What Save Page writes from: a page object with its document's text.
struct PageObject {
    QString Document;
};
} // namespace

// Page commands ---------------------------------------------------------------------------

void MainFRM::OpenPageMNU_Click()
{
    // Errors: none trapped for the first click; ignored statement by statement after it.
    PlayClickSound();
    OnErrorResumeNext next;
    next([&] { CD.Filter = kOpenFilter; });
    next([&] { CD.ShowOpen(); });
    next([&] { PlayClickSound(); });
    next([&] { if (!CD.FileName.isEmpty()) BrowserWindow.Navigate(CD.FileName); });
}

void MainFRM::SavePageMNU_Click()
{
    // Errors: none trapped for the first click; ignored statement by statement after it.
    PlayClickSound();
    OnErrorResumeNext next;
    // Kept: the page object is never set, so the write fails; a user finds the chosen file empty.
    ObjectVariable<PageObject> page;
    next([&] { CD.Filter = kSaveFilter; });
    next([&] { CD.ShowSave(); });
    next([&] { PlayClickSound(); });
    if (CD.FileName.isEmpty())
        return;
    next([&] { Open(CD.FileName, OpenMode::Output, 1); });
    next([&] { PrintLine(1, page->Document); });
    next([&] { Close(1); });
}

void MainFRM::PrintMNU_Click()
{
    // Errors: ignored statement by statement.
    OnErrorResumeNext next;
    next([&] { BrowserWindow.ExecWB(OLECMDID_PRINT, OLECMDEXECOPT_DODEFAULT); });
    next([&] { PlayClickSound(); });
}

void MainFRM::PrintSetupMNU_Click()
{
    // Errors: ignored statement by statement.
    OnErrorResumeNext next;
    next([&] { BrowserWindow.ExecWB(OLECMDID_PAGESETUP, OLECMDEXECOPT_DONTPROMPTUSER); });
    next([&] { PlayClickSound(); });
}

void MainFRM::PagerPropertiesMNU_Click()
{
    // Errors: ignored statement by statement.
    OnErrorResumeNext next;
    next([&] { BrowserWindow.ExecWB(OLECMDID_PROPERTIES, OLECMDEXECOPT_DODEFAULT); });
    next([&] { PlayClickSound(); });
}

void MainFRM::CopyMNU_Click()
{
    // Errors: none trapped (copying with nothing selected ends the program).
    BrowserWindow.ExecWB(OLECMDID_COPY, OLECMDEXECOPT_PROMPTUSER);
    PlayClickSound();
}

void MainFRM::SelectAllMNU_Click()
{
    // Errors: none trapped.
    BrowserWindow.ExecWB(OLECMDID_SELECTALL, OLECMDEXECOPT_PROMPTUSER);
    PlayClickSound();
}

void MainFRM::FindMNU_Click()
{
    // Errors: none trapped. The pane's own find opens on the keystroke. No sound.
    BrowserWindow.SetFocus();
    SendKeys(QStringLiteral("^f"));
}

void MainFRM::TextSize_Click(int level)
{
    // Errors: none trapped. No check mark: the window does not remember the level.
    QVariant result = kZoomResult;
    BrowserWindow.ExecWB(OLECMDID_ZOOM, OLECMDEXECOPT_DONTPROMPTUSER, level, &result);
    PlayClickSound();
}

// The windows ------------------------------------------------------------------------------

void MainFRM::FavoritePlacesMNU_Click()
{
    // Errors: none trapped.
    form<FavoritePlacesFRM>().Show();
    PlayOpenSound();
}

void MainFRM::EditHomePageMNU_Click()
{
    // Errors: none trapped.
    form<HomePageFRM>().Show();
    PlayOpenSound();
}

void MainFRM::BrowserStatusMNU_Click()
{
    // Errors: none trapped.
    form<BrowserStatusFRM>().Show();
    PlayOpenSound();
}

void MainFRM::DriveExplorerMNU_Click()
{
    // Errors: none trapped.
    form<DriveExplorerFRM>().Show();
    PlayOpenSound();
}

void MainFRM::ThemeMNU_Click()
{
    // Errors: none trapped. The selector shows the main window again when it is done.
    form<ThemeSelector>().CancelCMD.setEnabled(true);
    form<ThemeSelector>().Show();
    PlayClickSound();
    Hide();
}

void MainFRM::GoIdleMNU_Click()
{
    // Errors: none trapped. The idle screen shows the main window again on a click.
    Hide();
    form<IdleFRM>().Show();
    PlayClickSound();
}
