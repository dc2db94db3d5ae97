#include "raster.h"

#include <QPainter>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <utility>

namespace platform::raster {
namespace {

// Beyond this radius the ring's arithmetic could overflow: the painter draws it.
constexpr int kLargestRing = 1 << 20;

struct Pixels {
    explicit Pixels(QImage& picture)
        : bits(reinterpret_cast<QRgb*>(picture.bits())), stride(picture.bytesPerLine() / 4),
          width(picture.width()), height(picture.height())
    {
    }
    bool inside(int x, int y) const { return x >= 0 && x < width && y >= 0 && y < height; }
    QRgb* row(int y) const { return bits + y * stride; }
    // Pixels x0 to x1 of row y, whatever of them lies inside.
    void run(int y, int x0, int x1, QRgb colour) const
    {
        if (y < 0 || y >= height)
            return;
        x0 = std::max(x0, 0);
        x1 = std::min(x1, width - 1);
        QRgb* p = row(y);
        for (int x = x0; x <= x1; ++x)
            p[x] = colour;
    }

    QRgb* bits;
    qsizetype stride; // in pixels
    int width, height;
};

// 26.6 fixed point, truncated as the painter's line set-up truncates.
int fixed(double v) { return int(v * 64.); }

// a / b in 16.16 fixed point, a and b in 26.6.
int fixedRatio(int a, int b)
{
    if (std::abs(a) > 0x7fff)
        return int((std::int64_t(a) << 16) / b);
    return (a << 16) / b;
}

// Cuts the line down to a pixel beyond each side of the picture, in floating point, as the
// painter does before stepping (so a line far outside costs nothing). False: nothing is left.
bool clip(double& x1, double& y1, double& x2, double& y2, int width, int height)
{
    const double xmin = -1, xmax = width + 1, ymin = -1, ymax = height + 1;
    if (x1 < xmin) {
        if (x2 <= xmin)
            return false;
        y1 += (y2 - y1) / (x2 - x1) * (xmin - x1);
        x1 = xmin;
    } else if (x1 > xmax) {
        if (x2 >= xmax)
            return false;
        y1 += (y2 - y1) / (x2 - x1) * (xmax - x1);
        x1 = xmax;
    }
    if (x2 < xmin) {
        y2 += (y2 - y1) / (x2 - x1) * (xmin - x2);
        x2 = xmin;
    } else if (x2 > xmax) {
        y2 += (y2 - y1) / (x2 - x1) * (xmax - x2);
        x2 = xmax;
    }
    if (y1 < ymin) {
        if (y2 <= ymin)
            return false;
        x1 += (x2 - x1) / (y2 - y1) * (ymin - y1);
        y1 = ymin;
    } else if (y1 > ymax) {
        if (y2 >= ymax)
            return false;
        x1 += (x2 - x1) / (y2 - y1) * (ymax - y1);
        y1 = ymax;
    }
    if (y2 < ymin) {
        x2 += (x2 - x1) / (y2 - y1) * (ymin - y2);
        y2 = ymin;
    } else if (y2 > ymax) {
        x2 += (x2 - x1) / (y2 - y1) * (ymax - y2);
        y2 = ymax;
    }
    return true;
}

// One pixel per step along the major axis from `from` up to (not including) `to`; the minor
// coordinate in 16.16 starts at `minor` and grows by `inc`. step(major, minor) sets a pixel.
template <class Step>
void walk(int from, int to, int minor, int inc, Step step)
{
    for (int i = from; i < to; ++i, minor += inc)
        step(i, minor >> 16);
}

} // namespace

void dot(QImage& picture, QPoint at, QRgb colour)
{
    const Pixels px(picture);
    if (px.inside(at.x(), at.y()))
        px.row(at.y())[at.x()] = colour;
}

void segment(QImage& picture, QPointF a, QPointF b, QRgb colour)
{
    const Pixels px(picture);
    if (a == b) {
        dot(picture, QPoint(qRound(a.x()), qRound(a.y())), colour);
        return;
    }
    double x1 = a.x(), y1 = a.y(), x2 = b.x(), y2 = b.y();
    if (!clip(x1, y1, x2, y2, px.width, px.height))
        return;
    int fx1 = fixed(x1), fy1 = fixed(y1), fx2 = fixed(x2), fy2 = fixed(y2);
    // Steps along the longer axis, from the lower end; the square caps reach half a pixel
    // beyond each end; a pixel is set where the line crosses the middle of a row or column.
    const bool steep = std::abs(fx2 - fx1) < std::abs(fy2 - fy1);
    if (!steep) {
        std::swap(fx1, fy1);
        std::swap(fx2, fy2);
    }
    // Now (major, minor): fy along the major axis, fx across it.
    if (fy1 > fy2) {
        std::swap(fx1, fx2);
        std::swap(fy1, fy2);
    }
    if (fy1 == fy2)
        return;
    const int inc = fixedRatio(fx2 - fx1, fy2 - fy1);
    int minor = fx1 * 1024 - (inc >> 1);
    const int start = fy1 - 32;
    const int first = (start + 32) >> 6;
    const int last = (fy2 + 32 + 32) >> 6; // one past
    if (first == last)
        return;
    minor += ((first * 64 + (inc > 0 ? 32 : 0) - start) * inc) >> 6;

    const int minorFirst = minor >> 16;
    const int minorLast = (minor + (last - first - 1) * inc) >> 16;
    const int majorLimit = steep ? px.height : px.width;
    const int minorLimit = steep ? px.width : px.height;
    const bool whole = first >= 0 && last <= majorLimit && std::min(minorFirst, minorLast) >= 0 &&
                       std::max(minorFirst, minorLast) < minorLimit;
    if (steep) {
        if (whole)
            walk(first, last, minor, inc, [&](int y, int x) { px.row(y)[x] = colour; });
        else
            walk(first, last, minor, inc, [&](int y, int x) {
                if (px.inside(x, y))
                    px.row(y)[x] = colour;
            });
    } else {
        if (whole)
            walk(first, last, minor, inc, [&](int x, int y) { px.row(y)[x] = colour; });
        else
            walk(first, last, minor, inc, [&](int x, int y) {
                if (px.inside(x, y))
                    px.row(y)[x] = colour;
            });
    }
}

void ring(QImage& picture, QPoint centre, int radius, QRgb colour)
{
    if (radius > kLargestRing) {
        QPainter painter(&picture);
        painter.setPen(QColor(colour));
        painter.drawEllipse(QRect(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius));
        return;
    }
    const Pixels px(picture);
    const int cx = centre.x(), cy = centre.y();
    // The midpoint circle, one octant stepped and the rest mirrored: `length` pixels from x
    // outwards at height y above and below the centre, and their mirror left of it (which
    // starts one pixel further in at the top and bottom, x = 0, where the two halves meet).
    auto put = [&](int x, int y, int length) {
        const int leftLength = x > 0 ? length : length - 1;
        const int leftStart = cx - x - length + 1;
        for (const int row : {cy - y, cy + y}) {
            px.run(row, cx + x, cx + x + length - 1, colour);
            if (leftLength > 0)
                px.run(row, leftStart, leftStart + leftLength - 1, colour);
            if (y == 0)
                break; // the middle row once
        }
    };
    // The decision value is four times the midpoint's distance from the circle, over r².
    std::int64_t d = 5 - 4 * std::int64_t(radius);
    int x = 0, y = radius, runStart = 0;
    while (2 * y - 1 > 2 * x + 2) { // the flat octant: runs along the rows
        if (d < 0) {
            d += 4 * (2 * x + 3);
            ++x;
        } else {
            d += 4 * (2 * x + 3) + 4 * (2 - 2 * y);
            put(runStart, y, x - runStart + 1);
            runStart = ++x;
            --y;
        }
    }
    put(runStart, y, x - runStart + 1);
    d = std::int64_t(2 * x + 1) * (2 * x + 1) + 4 * std::int64_t(y - 1) * (y - 1) - 4 * std::int64_t(radius) * radius;
    while (y > 0) { // the steep octant: a pixel a row
        if (d < 0) {
            d += 4 * (2 * x + 2) + 4 * (3 - 2 * y);
            ++x;
        } else {
            d += 4 * (3 - 2 * y);
        }
        --y;
        put(x, y, 1);
    }
}

} // namespace platform::raster
