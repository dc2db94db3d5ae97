#pragma once
// The about box: fifteen labels of credits over the theme's background and the program's own
// emblem, recoloured to the chosen font colour as it opens. No buttons; closed like any window.

#include "platform/control_array.h"
#include "platform/controls.h"
#include "platform/form.h"

class AboutFRM : public platform::Form {
public:
    AboutFRM();

    // Back to front: the background, the emblem, the labels.
    platform::Image BGI{*this, "BGI", {0, 0, 6495, 7455}, platform::Image::Fit::Stretch};
    platform::Image Image{*this, "Image", {2160, 480, 2175, 2085}, platform::Image::Fit::Stretch};
    platform::ControlArray<platform::Label> Data;

protected:
    void Form_Load() override;
    void Form_Unload(int& cancel) override;
};
