#pragma once
// The two values the hidden holder windows keep for every window, read afresh at each call:
// the theme directory (the theme selector's TPath, startup/theme_selector.h) and the font
// colour code (Color's ForeC, shared/color.h). Touching either holder loads it, hidden.

#include <QString>

// The current theme directory; a theme file is this followed by "/" and its name.
QString ThemeDir();
// "1", "2" or "3", or any other text, which the windows read as no choice.
QString FontColour();
