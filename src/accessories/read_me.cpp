#include "read_me.h"

#include "shared/procedures.h"
#include "shared/window_look.h"
#include "platform/runtime.h"

using namespace platform;

namespace {
constexpr int kClientWidth = 9375;
constexpr int kClientHeight = 5175;
constexpr int kWidthAllowance = 120;  // the box is this much narrower than the window
constexpr int kHeightAllowance = 400; // and this much lower
constexpr OleColor kLightGrey = RGB(192, 192, 192);
} // namespace

ReadMeFRM::ReadMeFRM() : Form("ReadMeFRM", kClientWidth, kClientHeight)
{
    setCaption(QStringLiteral("Read Me "));
    UseWindowFont({&Data});
    Data.setBackColor(kLightGrey);
    Data.setScrollBars(vbVertical);
}

void ReadMeFRM::Form_Load()
{
    // Errors: none trapped at first; ignored statement by statement after StayOnTop.
    StayOnTop(*this);
    OnErrorResumeNext next;
    next([&] { LoadTextFile(Data, AppPath() + "/readme.TXT"); });
    next([&] {
        if (Data.Text().isEmpty())
            MsgBox(QStringLiteral("Sorry, The Readme File (In The Same Directory As Glidepath.exe, Named "
                                  "''readme.txt'') Cannot be Found."),
                   vbOKOnly);
    });
    next([&] {
        if (Data.Text().isEmpty())
            Data.setText(QStringLiteral("Glide Path - By: Marlo. Enjoy."));
    });
}

void ReadMeFRM::Form_Resize()
{
    // Errors: none trapped: a window smaller than the allowances gives the box a negative size.
    Data.setWidth(Width() - kWidthAllowance);
    Data.setHeight(Height() - kHeightAllowance);
}
