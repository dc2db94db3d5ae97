#pragma once
// The calculator: a display, a memory mark and four arrays of keys over the theme's background.
// The keys work by mouse and by keyboard: the keyboard handler sits on "=", which gets the focus
// back after most keys, so that it receives every key typed; Enter or Space presses the key
// that has the focus. The state machine itself is CalculatorEngine.

#include "calculator_engine.h"

#include "platform/control_array.h"
#include "platform/controls.h"
#include "platform/form.h"

#include <cstdint>

class CalculatorFRM : public platform::Form {
public:
    CalculatorFRM();

    // The background first, so that it stands behind every key.
    platform::Image ImageOne{*this, "ImageOne", {0, 0, 3735, 3615}, platform::Image::Fit::Stretch};
    platform::TextBox txtDisplay{*this, "txtDisplay", {120, 120, 3495, 375}, QStringLiteral("0")};
    platform::Label lblMem{*this, "lblMem", {120, 600, 495, 495}};
    platform::ControlArray<platform::CommandButton> cmdCancel;   // 0 Back, 1 C, 2 CE
    platform::ControlArray<platform::CommandButton> cmdMemory;   // 0 MC, 1 M+, 2 MS, 3 MR
    platform::ControlArray<platform::CommandButton> numero;      // index = digit
    platform::CommandButton cmdDot{*this, "cmdDot", {1320, 3000, 495, 495}, QStringLiteral(".")};
    platform::ControlArray<platform::CommandButton> cmdFunction; // 0 +/-, 1 1/X, 2 %, 3 Sqrt
    // "operator" is a C++ keyword; the underscore keeps the design name readable.
    platform::ControlArray<platform::CommandButton> operator_;   // 0 /, 1 +, 2 -, 3 *
    platform::CommandButton cmdEqual{*this, "cmdEqual", {3120, 3000, 495, 495}, QStringLiteral("=")};

    CalculatorEngine state;

    void numero_Click(int Index);
    void cmdDot_Click();
    void operator_Click(int Index);
    void cmdEqual_Click();
    void cmdCancel_Click(int Index);
    void cmdFunction_Click(int Index);
    void cmdMemory_Click(int Index);
    void cmdEqual_KeyPress(std::int16_t& keyAscii);

protected:
    void Form_Load() override;

private:
    // The display and the memory mark as the engine left them.
    void refreshDisplay();
};
