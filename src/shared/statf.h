#pragma once
// The status pop-up: one line of progress text in a strip that floats above every window.
// Callers set Info's text, show it and unload it; unloading keeps the last text on screen for
// about a second before the strip goes.

#include "platform/controls.h"
#include "platform/form.h"

class StatF : public platform::Form {
public:
    StatF();

    platform::Label Info{*this, "Info", {0, 120, 5055, 255}, QStringLiteral("Information")};

protected:
    void Form_Load() override;
    void Form_Unload(int& cancel) override;
};
