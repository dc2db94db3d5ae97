#pragma once
// The home page editor: one line holding the address the browser opens at start, written to
// HomePage.TXT. Okay and Cancel only hide it, so it keeps what it held until it is closed.

#include "platform/controls.h"
#include "platform/form.h"

#include <cstdint>

class HomePageFRM : public platform::Form {
public:
    HomePageFRM();

    platform::TextBox Data{*this, "Data", {120, 120, 3735, 285}};
    platform::CommandButton Cncl{*this, "Cncl", {120, 480, 1695, 255}, QStringLiteral("Cancel")};
    platform::CommandButton OkCMD{*this, "OkCMD", {1920, 480, 1935, 255}, QStringLiteral("Okay")};

    void Data_KeyPress(std::int16_t& keyAscii);
    void Cncl_Click();
    void OkCMD_Click();

protected:
    void Form_Load() override;
};
