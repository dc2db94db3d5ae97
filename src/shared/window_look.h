#pragma once
// What every window repeats, written once: the window font at a designed size, the tests of
// the font colour code against the window's own table of colours, and the theme's open,
// close and click sounds.

#include "fonts.h"
#include "platform/colors.h"

#include <functional>

namespace platform {
class Control;
class Image;
}

// The sizes the windows' designs give their font, in points.
constexpr double kFontPoints = 8.25;
constexpr double kButtonFontPoints = 9;

// The window font on one or more controls.
void UseWindowFont(std::initializer_list<platform::Control*> controls, double points = kFontPoints, bool bold = false);

// A window's own colour for each font colour code. Most windows test the codes "1", "2" and
// "3"; a window may test another text in place of "3".
struct FontColours {
    platform::OleColor one;
    platform::OleColor two;
    platform::OleColor three;
    const char* thirdCode = "3";
};

// Tests the code three times, reading it afresh for each test as the windows do, and hands the
// matching colour to apply; any other code applies nothing.
void WithFontColour(const FontColours& colours, const std::function<void(platform::OleColor)>& apply);
// The matching colour as the controls' text colour.
void ApplyFontColour(std::initializer_list<platform::Control*> controls, const FontColours& colours);

// The theme's sounds, played without waiting.
void PlayOpenSound();  // "/OpenWIN.WAV", as a window loads
void PlayCloseSound(); // "/CloseWIN.WAV", as it unloads
void PlayClickSound(); // "/Click.WAV"

// The pressed and released look of a themed image button: the theme's name + "DOWN.BMP" on a
// mouse press, name + "UP.BMP" on release, read from disk each time. A missing bitmap raises
// the run-time error in the press or release handler.
void UseThemedButtonLook(platform::Image& button, const QString& name);
