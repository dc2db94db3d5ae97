#pragma once
// The doodle pad: the mouse draws on the window while a button is held, one windowless line
// per mouse move, each a copy of the template line Line1(0) with the colour and width it had
// then. A double-click brings up the options panel (colour sliders with a preview, pen size,
// Clear, Hide), which is hidden by moving it far below the window.

#include "platform/control_array.h"
#include "platform/controls.h"
#include "platform/form.h"
#include "platform/graphics.h"
#include "platform/timer.h"

#include <cstdint>

class DoodleFRM : public platform::Form {
public:
    DoodleFRM();

    // The drawing comes first: windowless lines are drawn on one layer, which stands above the
    // controls made before its first line and below those made after, so making the template
    // here, before the options panel, keeps the panel above the drawing.
    platform::ControlArray<platform::Line> Line1;
    platform::Line& Line1Template = Line1.add(*this, "Line1", 0, 0, 0, 0, 0);

    platform::Frame TFrame{*this, "TFrame", {120, 240, 5535, 2160}, QStringLiteral("Options")};
    platform::PictureBox Preview{TFrame, "Preview", {120, 240, 2175, 735}};
    platform::ScrollBar RedSLD{TFrame, "RedSLD", {360, 1080, 1935, 255}, platform::ScrollBar::Orientation::Horizontal};
    platform::ScrollBar BlueSLD{TFrame, "BlueSLD", {360, 1440, 1935, 255}, platform::ScrollBar::Orientation::Horizontal};
    platform::ScrollBar GreenSLD{TFrame, "GreenSLD", {360, 1800, 1935, 255}, platform::ScrollBar::Orientation::Horizontal};
    platform::Slider PenSize{TFrame, "PenSize", {2520, 480, 2895, 510}};
    platform::ControlArray<platform::Label> Data; // 3 "Pen Size", 4 the pen size as a number
    platform::CommandButton TClear{TFrame, "TClear", {2520, 1680, 855, 375}, QStringLiteral("Clear")};
    platform::CommandButton HideMe{TFrame, "HideMe", {3480, 1680, 1935, 375}, QStringLiteral("Hide This Window")};
    platform::Timer Timer{*this, "Timer", 1};

    // The drawing state: a 16-bit Boolean (0 false, -1 true), and the previous point, its x as
    // the single-precision number the mouse gave and its y rounded into a 16-bit integer.
    // Kept: x single, y 16-bit: a press below 32,767 twips ends the program with "Overflow", one as far right does not.
    std::int16_t Drawing = 0;
    float PrevX = 0;
    std::int16_t PrevY = 0;

    // The three sliders' mixed colour.
    static platform::OleColor MixColour(platform::ScrollBar& red, platform::ScrollBar& green, platform::ScrollBar& blue);

    void HideMe_Click();
    void TClear_Click();
    void Timer_Timer();

protected:
    void Form_Load() override;
    void Form_Unload(int& cancel) override;
    void Form_DblClick() override;
    void Form_MouseDown(int button, int shift, double x, double y) override;
    void Form_MouseMove(int button, int shift, double x, double y) override;
    void Form_MouseUp(int button, int shift, double x, double y) override;
};
