#include "mp3_player.h"

#include "shared/procedures.h"
#include "shared/window_look.h"
#include "platform/paths.h"
#include "platform/runtime.h"
#include "platform/wiring.h"

using namespace platform;

namespace {
constexpr int kClientWidth = 4455;
constexpr int kClientHeight = 2190;
constexpr int kHideReadOnly = 4; // the dialog's flag that hides its read-only check box
const QString kLoadFilter = QStringLiteral("MP3 Files (*.MP3)|*.MP3");
// Kept: shorter than at load; changed, the dialog's file type box would read as it does at load.
const QString kMoreFilter = QStringLiteral("MP3 Files|*.MP3");

const Wiring<MP3PlayerFRM> kWiring[] = {
    {OnClick, &MP3PlayerFRM::ExitMe, &MP3PlayerFRM::ExitMe_Click},
    {OnClick, &MP3PlayerFRM::MiniMe, &MP3PlayerFRM::MiniMe_Click},
    {OnClick, &MP3PlayerFRM::OpenMore, &MP3PlayerFRM::OpenMore_Click},
};
} // namespace

MP3PlayerFRM::MP3PlayerFRM() : Form("MP3PlayerFRM", kClientWidth, kClientHeight)
{
    setCaption(QStringLiteral("MP3 Player"));
    UseWindowFont({&ExitMe}, 11.25);
    UseWindowFont({&MiniMe}, 12);
    OpenMore.setFont(QStringLiteral("Wingdings"), 11.25); // "1" in Wingdings: an open folder
    ExitMe.setToolTipText(QStringLiteral("Exit the MP3 Player"));
    MiniMe.setToolTipText(QStringLiteral("Minimize The MP3 Player."));
    OpenMore.setToolTipText(QStringLiteral("Open Another MP3 File."));
    OpenMore.setAccessibleName(QStringLiteral("Open Another MP3 File."));
    // No layout handler: the player keeps its designed size.
    setBorderStyle(vbFixedSingle);
    wire(*this, kWiring);
}

void MP3PlayerFRM::Form_Load()
{
    // Errors: none trapped at first; ignored statement by statement after automatic start.
    PlayOpenSound();
    StayOnTop(*this);
    Player.setAutoStart(true);
    OnErrorResumeNext next;
    next([&] { PlayClickSound(); });
    next([&] { cdlGetFile.Filter = kLoadFilter; });
    next([&] { cdlGetFile.Flags = kHideReadOnly; });
    next([&] { cdlGetFile.InitDir = DesktopFolder(); });
    next([&] { cdlGetFile.ShowOpen(); });
    next([&] { Player.Open(cdlGetFile.FileName); });
    next([&] { if (cdlGetFile.FileName.isEmpty()) Unload(*this); });
}

void MP3PlayerFRM::OpenMore_Click()
{
    // Errors: none trapped at first; ignored statement by statement after automatic start.
    PlayClickSound();
    Player.Stop();
    Player.setAutoStart(true);
    OnErrorResumeNext next;
    next([&] { PlayClickSound(); });
    next([&] { cdlGetFile.Filter = kMoreFilter; });
    next([&] { cdlGetFile.Flags = kHideReadOnly; });
    next([&] { cdlGetFile.InitDir = DesktopFolder(); });
    // The dialog keeps a cancelled question's name from the last choice; this player's asks
    // afresh each time, so that a cancel leaves the stopped tune stopped and the dialog opens
    // in its fixed folder, not in the last one used.
    next([&] { cdlGetFile.FileName.clear(); });
    next([&] { cdlGetFile.ShowOpen(); });
    // The dialog's default property is its Action, which ShowOpen leaves at 0: the window is
    // never hidden here, as a player that vanished when a file was chosen would look broken.
    next([&] { if (cdlGetFile.Action) Hide(); });
    next([&] { Player.Open(cdlGetFile.FileName); });
}

void MP3PlayerFRM::MiniMe_Click()
{
    // Errors: none trapped.
    PlayClickSound();
    setWindowState(vbMinimized);
}

void MP3PlayerFRM::ExitMe_Click()
{
    // Errors: none trapped. No sound of its own: the unload plays the closing sound.
    Unload(*this);
}

void MP3PlayerFRM::Form_Unload(int& cancel)
{
    // Errors: ignored statement by statement.
    // Kept: a second unload asked for from within the first; it has no effect a user can see.
    (void)cancel;
    OnErrorResumeNext next;
    next([&] { PlayCloseSound(); });
    next([&] { Unload(*this); });
}
