#include "note_pad.h"

#include "shared/procedures.h"
#include "shared/window_look.h"
#include "shared/settings.h"
#include "platform/runtime.h"
#include "platform/wiring.h"

using namespace platform;

namespace {
constexpr int kClientWidth = 6270;
constexpr int kClientHeight = 3975;
constexpr int kWidthAllowance = 120;  // the box is this much narrower than the window
constexpr int kHeightAllowance = 400; // and this much lower
constexpr OleColor kLightGrey = RGB(192, 192, 192);
constexpr OleColor kDarkGrey = RGB(64, 64, 64);

QString notesFile()
{
    return AppPath() + "/Notes.TXT";
}

const Wiring<NotePadFRM> kWiring[] = {
    {OnChange, &NotePadFRM::Data, &NotePadFRM::Data_Change},
};
} // namespace

NotePadFRM::NotePadFRM() : Form("NotePadFRM", kClientWidth, kClientHeight)
{
    setCaption(QStringLiteral("Notepad (Automaticly Saves, Each Keystroke)"));
    UseWindowFont({&Data});
    Data.setForeColor(kLightGrey);
    Data.setBackColor(kDarkGrey);
    Data.setScrollBars(vbVertical);
    wire(*this, kWiring);
}

void NotePadFRM::Form_Load()
{
    // Errors: none trapped (the file procedures ignore their own).
    StayOnTop(*this);
    PlayOpenSound();
    // Kept: filling the box is a change that saves the note with one more CR LF: it grows a line each opening.
    LoadTextFile(Data, notesFile());
}

void NotePadFRM::Data_Change()
{
    // Errors: none trapped (SaveTextFile ignores its own). The whole note, every change.
    SaveTextFile(Data, notesFile());
}

void NotePadFRM::Form_Resize()
{
    // Errors: none trapped: a window smaller than the allowances gives the box a negative size.
    Data.setWidth(Width() - kWidthAllowance);
    Data.setHeight(Height() - kHeightAllowance);
}

void NotePadFRM::Form_Unload(int& cancel)
{
    // Errors: none trapped. Nothing to save: the last change is on disk already.
    (void)cancel;
    PlayCloseSound();
}
