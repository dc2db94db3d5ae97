#pragma once
// Favourite places: a list of addresses kept in FavPlaces.INI, written whole after every add
// and delete and read back as delimited fields (so an address with a comma returns as two).
// A double-click sends the main window's browser to an entry.

#include "platform/controls.h"
#include "platform/form.h"

#include <cstdint>

class FavoritePlacesFRM : public platform::Form {
public:
    FavoritePlacesFRM();

    // The theme's background, behind everything.
    platform::Image BGPic{*this, "BGPic", {0, 0, 5775, 4215}, platform::Image::Fit::Stretch};
    platform::Image Add{*this, "Add", {1440, 120, 1335, 375}};
    platform::Image Del{*this, "Del", {3000, 120, 1335, 375}};
    platform::TextBox URL{*this, "URL", {120, 600, 5535, 285}, QStringLiteral("http://")};
    platform::ListBox ListBox{*this, "ListBox", {120, 960, 5535, 3120}};

    void Add_Click();
    void URL_KeyPress(std::int16_t& keyAscii);
    void Del_Click();
    void ListBox_DblClick();

protected:
    void Form_Load() override;
    void Form_Unload(int& cancel) override;
};
