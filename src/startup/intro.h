#pragma once
// The intro screen, the program's first window: the theme's intro picture on its background,
// the intro music, and a click anywhere that squeezes the window away and opens the browser.
// Asks for a theme directory when none is stored.

#include "platform/controls.h"
#include "platform/graphics.h"
#include "platform/form.h"
#include "platform/media_player.h"

class IntroFRM : public platform::Form {
public:
    IntroFRM();

    // Back to front: the background, the picture, the frame, and the label that takes the click.
    platform::Image ImageOne{*this, "ImageOne", {0, 0, 7335, 2535}, platform::Image::Fit::Stretch};
    platform::Image IntroImage{*this, "IntroImage", {240, 240, 0, 0}};
    platform::Shape IntroFormBorder{*this, "IntroFormBorder", {0, 0, 7335, 2535}};
    platform::Label ClickAnywhereToEnter{*this, "ClickAnywhereToEnter", {0, 0, 7335, 2535},
                                         QStringLiteral("Click Anywhere To Enter.")};
    platform::MediaPlayer Player{*this, "Player", {0, 0, 0, 0}};

    void ClickAnywhereToEnter_Click();

protected:
    void Form_Load() override;
};
