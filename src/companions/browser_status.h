#pragma once
// The browser status window: live facts about the main window's browser, pulled by a timer
// (address, title, window state, pane size in twips under captions that say pixels) and the
// load progress pushed in by the main window. Floats above other windows.

#include "platform/control_array.h"
#include "platform/controls.h"
#include "platform/form.h"
#include "platform/timer.h"

#include <vector>

class BrowserStatusFRM : public platform::Form {
public:
    BrowserStatusFRM();

    // The theme background, behind the labels.
    platform::Image ImageOne{*this, "ImageOne", {0, 0, 7215, 3615}, platform::Image::Fit::Stretch};
    // Caption labels (Info 0 to 5) above their values, top to bottom.
    platform::ControlArray<platform::Label> Info;
    platform::Label PercentageLoaded{*this, "PercentageLoaded", {240, 360, 6975, 255}, QStringLiteral("Percentage Loaded")};
    platform::Label LocationName{*this, "LocationName", {240, 960, 6975, 255}, QStringLiteral("Location Name")};
    platform::Label LocationURLL{*this, "LocationURLL", {240, 1560, 6975, 255}, QStringLiteral("Location URL")};
    platform::Label WindowStateLBL{*this, "WindowStateLBL", {240, 2160, 6975, 255}, QStringLiteral("Window State")};
    platform::Label HeightQ{*this, "HeightQ", {240, 2760, 6975, 255}, QStringLiteral("Height")};
    platform::Label WidthQ{*this, "WidthQ", {240, 3360, 6975, 255}, QStringLiteral("Width")};
    platform::Timer Timer{*this, "Timer", 1};

    void Timer_Timer();

protected:
    void Form_Load() override;
    void Form_Unload(int& cancel) override;

private:
    // Every label: the captions, then the values.
    std::vector<platform::Label*> labels();
};
