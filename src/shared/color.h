#pragma once
// The hidden holder of the font colour code: the text of ForeC, read from ForeC.INI once,
// when the window is first touched. Never shown and never written back.

#include "settings.h"

#include "platform/controls.h"
#include "platform/form.h"

class Color : public platform::Form {
public:
    Color();

    platform::TextBox ForeC{*this, "ForeC", {120, 120, 1215, 285}};

protected:
    void Form_Load() override;
};
