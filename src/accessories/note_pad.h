#pragma once
// The note pad: one text box over the whole window, written whole to Notes.TXT on every change
// (each keystroke) and read whole when the window opens. Floats above other windows.
//
// Opening it adds one CR LF to the note: the file ends in CR LF, reading keeps it, and filling
// the box is itself a change that saves the text with another CR LF after it.

#include "platform/controls.h"
#include "platform/form.h"

class NotePadFRM : public platform::Form {
public:
    NotePadFRM();

    platform::TextBox Data{*this, "Data", {0, 0, 6255, 3975}, {}, platform::TextBox::Lines::Multi};

    void Data_Change();

protected:
    void Form_Load() override;
    void Form_Resize() override;
    void Form_Unload(int& cancel) override;
};
