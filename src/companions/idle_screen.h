#pragma once
// The idle screen: a maximised window that draws fans of coloured circles and the random-lines
// effect on its own surface, with the time in a small panel, until a click on the surface
// brings the browser back. Both timers go on while it is hidden.

#include "platform/controls.h"
#include "platform/form.h"
#include "platform/timer.h"

class IdleFRM : public platform::Form {
public:
    IdleFRM();

    platform::Frame Frame{*this, "Frame", {0, -90, 2235, 615}};
    platform::Label TimeLBL{Frame, "TimeLBL", {120, 210, 1995, 300}, QStringLiteral("Time")};
    platform::Timer TimeL{*this, "TimeL", 1};
    platform::Timer SS{*this, "SS", 1};

    void TimeL_Timer();
    void SS_Timer();

    // How often a new frame of the animation is drawn: each costs about a display frame of
    // processor time (a thousand circles and 1,204 lines over the whole screen), so at the
    // platform's 16 ms floor the screen would take a whole core. Six or seven frames a second
    // keep the fans blooming, for about a fifth of a core at 1280x1024 (bench/idle).
    static constexpr int kFramePaceMs = 150;
    // Hidden, the animation goes on drawing, but nobody sees it: one frame a second keeps it
    // going while costing the browser the person came back to little.
    static constexpr int kHiddenPaceMs = 1000;

protected:
    void Form_Load() override;
    void Form_Click() override;
    void Form_Unload(int& cancel) override;

private:
    void fan();
};
