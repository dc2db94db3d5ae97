#include "twips.h"

#include <QGuiApplication>
#include <QScreen>

#include <cmath>

namespace platform {
namespace {

constexpr double kTwipsPerInch = 1440.0;

QScreen* screen()
{
    return QGuiApplication::primaryScreen();
}

} // namespace

double TwipsPerPixelX()
{
    const QScreen* s = screen();
    return s ? kTwipsPerInch / s->logicalDotsPerInchX() : 15.0;
}

double TwipsPerPixelY()
{
    const QScreen* s = screen();
    return s ? kTwipsPerInch / s->logicalDotsPerInchY() : 15.0;
}

int toPixelsX(double twips) { return int(std::lround(twips / TwipsPerPixelX())); }
int toPixelsY(double twips) { return int(std::lround(twips / TwipsPerPixelY())); }
int toTwipsX(int pixels) { return int(std::lround(pixels * TwipsPerPixelX())); }
int toTwipsY(int pixels) { return int(std::lround(pixels * TwipsPerPixelY())); }

int ScreenWidth()
{
    const QScreen* s = screen();
    return toTwipsX(s ? s->geometry().width() : 1024);
}

int ScreenHeight()
{
    const QScreen* s = screen();
    return toTwipsY(s ? s->geometry().height() : 768);
}

} // namespace platform
