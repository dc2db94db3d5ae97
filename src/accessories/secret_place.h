#pragma once
// The hidden page, opened by the access phrase typed in the main window's address box: a panel
// about the program's author for fifteen seconds, then a picture; the intro music plays again.

#include "platform/control_array.h"
#include "platform/controls.h"
#include "platform/form.h"
#include "platform/timer.h"

class SecretPlace : public platform::Form {
public:
    SecretPlace();

    // The picture behind the panel, hidden until the panel goes.
    platform::ControlArray<platform::Image> TImage;
    platform::Frame AuthorFRM{*this, "AuthorFRM", {120, 120, 6780, 3135}, QStringLiteral("Author")};
    platform::Image Image{AuthorFRM, "Image", {240, 360, 1440, 1680}, platform::Image::Fit::Stretch};
    platform::ControlArray<platform::Label> Data;
    platform::Timer Timer{*this, "Timer", 15000};

    void Timer_Timer();

protected:
    void Form_Load() override;
    void Form_Resize() override;
};
