#include "favorite_places.h"

#include "browser/main_window.h"
#include "shared/procedures.h"
#include "shared/window_look.h"
#include "shared/settings.h"
#include "platform/picture.h"
#include "platform/runtime.h"
#include "platform/wiring.h"

using namespace platform;

namespace {
constexpr int kClientWidth = 5775;
constexpr int kClientHeight = 4230;

QString listFile() { return AppPath() + "/FavPlaces.INI"; }

const Wiring<FavoritePlacesFRM> kWiring[] = {
    {OnClick, &FavoritePlacesFRM::Add, &FavoritePlacesFRM::Add_Click},
    {OnClick, &FavoritePlacesFRM::Del, &FavoritePlacesFRM::Del_Click},
    {OnKeyPress, &FavoritePlacesFRM::URL, &FavoritePlacesFRM::URL_KeyPress},
    {OnDblClick, &FavoritePlacesFRM::ListBox, &FavoritePlacesFRM::ListBox_DblClick},
};
} // namespace

FavoritePlacesFRM::FavoritePlacesFRM() : Form("FavoritePlacesFRM", kClientWidth, kClientHeight)
{
    setCaption(QStringLiteral("Favorite Places"));
    UseWindowFont({&URL, &ListBox});
    BGPic.ZOrder(1);
    UseThemedButtonLook(Add, QStringLiteral("Add"));
    UseThemedButtonLook(Del, QStringLiteral("Delete"));
    wire(*this, kWiring);
}

void FavoritePlacesFRM::Form_Load()
{
    // Errors: none trapped (a missing theme bitmap ends the program).
    PlayOpenSound();
    BGPic.setPicture(LoadPicture(ThemeDir() + "/Main.BMP"));
    Del.setPicture(LoadPicture(ThemeDir() + "/DeleteUP.BMP"));
    Add.setPicture(LoadPicture(ThemeDir() + "/AddUP.BMP"));
    LoadListFile(listFile(), ListBox);
    URL.setText(form<MainFRM>().URLC.Text());
}

void FavoritePlacesFRM::Add_Click()
{
    // Errors: none trapped. No checks: whatever is typed is added.
    PlayClickSound();
    ListBox.AddItem(URL.Text());
    SaveListFile(listFile(), ListBox);
    URL.setText(QStringLiteral("http://"));
}

void FavoritePlacesFRM::URL_KeyPress(std::int16_t& keyAscii)
{
    // Errors: none trapped. The key is passed on.
    if (keyAscii == vbKeyReturn)
        Add_Click();
}

void FavoritePlacesFRM::Del_Click()
{
    // Errors: none trapped until the list is known to hold entries; ignored statement by
    // statement after that (no entry selected: nothing removed, the list written again).
    PlayClickSound();
    if (ListBox.ListCount() == 0)
        return;
    OnErrorResumeNext next;
    next([&] { ListBox.RemoveItem(ListBox.ListIndex()); });
    next([&] { SaveListFile(listFile(), ListBox); });
}

void FavoritePlacesFRM::ListBox_DblClick()
{
    // Errors: none trapped. With nothing selected the list's text, "", goes as it is.
    form<MainFRM>().BrowserWindow.Navigate(ListBox.Text());
}

void FavoritePlacesFRM::Form_Unload(int& cancel)
{
    // Errors: none trapped.
    (void)cancel;
    PlayCloseSound();
}
