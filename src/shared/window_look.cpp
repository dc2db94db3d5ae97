#include "window_look.h"

#include "procedures.h"
#include "platform/control.h"
#include "platform/controls.h"
#include "platform/picture.h"
#include "shared/settings.h"

void UseWindowFont(std::initializer_list<platform::Control*> controls, double points, bool bold)
{
    for (platform::Control* control : controls)
        control->setFont(kWindowFont, points, bold);
}

void WithFontColour(const FontColours& colours, const std::function<void(platform::OleColor)>& apply)
{
    if (FontColour() == QLatin1String("1"))
        apply(colours.one);
    if (FontColour() == QLatin1String("2"))
        apply(colours.two);
    if (FontColour() == QLatin1String(colours.thirdCode))
        apply(colours.three);
}

void ApplyFontColour(std::initializer_list<platform::Control*> controls, const FontColours& colours)
{
    WithFontColour(colours, [&](platform::OleColor colour) {
        for (platform::Control* control : controls)
            control->setForeColor(colour);
    });
}

void PlayOpenSound() { PlayWave(ThemeDir() + "/OpenWIN.WAV"); }
void PlayCloseSound() { PlayWave(ThemeDir() + "/CloseWIN.WAV"); }
void PlayClickSound() { PlayWave(ThemeDir() + "/Click.WAV"); }

void UseThemedButtonLook(platform::Image& button, const QString& name)
{
    button.setAccessibleName(name);
    button.onMouseDown([&button, name](int, int, double, double) {
        // Errors: none trapped.
        button.setPicture(platform::LoadPicture(ThemeDir() + "/" + name + "DOWN.BMP"));
    });
    button.onMouseUp([&button, name](int, int, double, double) {
        // Errors: none trapped.
        button.setPicture(platform::LoadPicture(ThemeDir() + "/" + name + "UP.BMP"));
    });
}
