#pragma once
// Twips: 1/1440 inch, the unit of every position and size in the windows. A pixel is
// 1440 / dpi twips (15 at 96 dpi), following the screen's logical dpi.

#include <QRect>

namespace platform {

double TwipsPerPixelX();
double TwipsPerPixelY();
int toPixelsX(double twips);
int toPixelsY(double twips);
int toTwipsX(int pixels);
int toTwipsY(int pixels);

// The screen's size in twips (the runtime's Screen.Width / Screen.Height).
int ScreenWidth();
int ScreenHeight();

// A designed rectangle: left, top, width, height in twips.
struct TwipsRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

// Remembers the twips written to one side of a widget so that reading it back gives the same
// value while the widget still has the pixel size that value produced; after any other change
// (a user's resize, the window manager) it reads the pixels.
class TwipsMemo {
public:
    int read(int pixels, double twipsPerPixel) const
    {
        return pixels == m_pixels ? m_twips : int(pixels * twipsPerPixel + 0.5);
    }
    void written(int twips, int pixels) { m_twips = twips; m_pixels = pixels; }

private:
    int m_twips = 0;
    int m_pixels = -1;
};

} // namespace platform
