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

    // Shown, both timers tick at the platform's floor, as designed: a frame at every tick.
    // Hidden, both go on once a second, where nobody sees them: the animation (its draws,
    // clears and effect, and so the random sequence) and the clock, which keeps its second.
    // Nothing the hidden animation draws is put on the picture until the window is shown or
    // read, and then the picture is what the last tick left.
    static constexpr int kHiddenPaceMs = 1000;

protected:
    void Form_Load() override;
    void Form_Click() override;
    void Form_Unload(int& cancel) override;

private:
    void fan();
};
