#include "about.h"

#include "shared/window_look.h"
#include "shared/settings.h"
#include "platform/picture.h"

using namespace platform;

namespace {

constexpr int kClientWidth = 6495;
constexpr int kClientHeight = 7455;
constexpr double kTitlePoints = 20.25;
constexpr double kProgrammerPoints = 9.75;
constexpr OleColor kLightGrey = RGB(224, 224, 224);

struct Credit {
    int index;
    const char* text;
    TwipsRect rect;
};

// Top to bottom as they stand; the index order is not the visual order.
constexpr Credit kCredits[] = {
    {0, "Glide Path", {0, 0, 6495, 435}},
    {1, "Programmer:", {120, 1560, 1320, 195}},
    {13, "Marlo", {1800, 2640, 2775, 255}},
    {2, "Thanks To:", {120, 2880, 1050, 180}},
    {3, "Everyone who tried the early versions and wrote back with ideas, the friends who drew and "
        "recorded the first skins and sounds, and you, for making a theme of your own.",
     {240, 3120, 5055, 900}},
    {4, "Form Count:", {120, 4200, 1155, 180}},
    {5, "18 Plus 1 Unveiwable and 1 Hidden. (Secret Place)", {240, 4440, 5145, 180}},
    {6, "Version:", {120, 4920, 840, 180}},
    {7, "2.0", {240, 5160, 315, 180}},
    {9, "Files Included with Executive File:", {120, 5640, 3675, 180}},
    {10, "All Skins and Sounds", {240, 5880, 2100, 180}},
    {11, "Other:", {120, 6360, 630, 180}},
    {12, "932 Lines of Code, Total", {240, 6600, 2520, 180}},
    {8, "Built with care.", {360, 6840, 2235, 180}},
    {14, "Please Enjoy This Marlo Production", {1440, 7200, 3585, 180}},
};

// The font colour code's colours for the labels.
constexpr FontColours kColours{vbWhite, vbBlack, vbButtonFace};

} // namespace

AboutFRM::AboutFRM() : Form("AboutFRM", kClientWidth, kClientHeight)
{
    setCaption(QStringLiteral("About This Application"));
    Image.setPicture(QPixmap(QStringLiteral(":/accessories/About.BMP")));
    Image.setAccessibleName(QStringLiteral("Glide Path"));
    for (const Credit& c : kCredits) {
        Label& label = Data.add(*this, "Data", c.index, c.rect, QString::fromLatin1(c.text));
        UseWindowFont({&label});
        label.setForeColor(vbWhite);
    }
    UseWindowFont({&Data(0)}, kTitlePoints);
    Data(0).setAlignment(vbCenter);
    UseWindowFont({&Data(1)}, kProgrammerPoints);
    Data(1).setForeColor(kLightGrey);
    Data(3).setWordWrap(true);
    Data(14).setAlignment(vbCenter);
    // No layout handler: the window keeps its designed size.
    setBorderStyle(vbFixedSingle);
}

void AboutFRM::Form_Load()
{
    // Errors: none trapped (a missing theme bitmap ends the program).
    PlayOpenSound();
    // The code is read afresh for every label and every test.
    for (Label& label : Data)
        ApplyFontColour({&label}, kColours);
    BGI.setPicture(LoadPicture(ThemeDir() + "/Main.BMP"));
}

void AboutFRM::Form_Unload(int& cancel)
{
    // Errors: none trapped.
    (void)cancel;
    PlayCloseSound();
}
