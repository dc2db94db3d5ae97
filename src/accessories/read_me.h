#pragma once
// The readme viewer: readme.TXT from the program directory in a box that fills the window,
// above other windows; a message and a one-line text where the file is missing or empty.

#include "platform/controls.h"
#include "platform/form.h"

class ReadMeFRM : public platform::Form {
public:
    ReadMeFRM();

    platform::TextBox Data{*this, "Data", {0, 0, 9375, 5175}, {}, platform::TextBox::Lines::Multi};

protected:
    void Form_Load() override;
    void Form_Resize() override;
};
