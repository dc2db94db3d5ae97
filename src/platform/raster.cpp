#include "raster.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <utility>
#include <vector>

namespace platform::raster {
namespace {

// Beyond this radius the ring's arithmetic could overflow.
constexpr int kLargestRing = 1 << 20;

struct Pixels {
    explicit Pixels(QImage& picture)
        : bits(reinterpret_cast<QRgb*>(picture.bits())), stride(picture.bytesPerLine() / 4),
          width(picture.width()), height(picture.height())
    {
    }
    bool inside(int x, int y) const { return x >= 0 && x < width && y >= 0 && y < height; }
    bool column(int x) const { return unsigned(x) < unsigned(width); }
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

// The midpoint circle's rows, one at a time from the top (y = radius, above the centre) down to
// the centre's row (y = 0): the octant next to the top is stepped, the rest mirrored. Each row
// holds `length` pixels from x outwards, right of the centre, and their mirror left of it.
class RingRows {
public:
    explicit RingRows(int radius) : m_x(0), m_y(radius), m_runStart(0), m_d(5 - 4 * std::int64_t(radius)), m_radius(radius) {}

    struct Row {
        int y, x, length;
    };
    Row next()
    {
        if (!m_steep) {
            // The flat octant: a run along each row. The decision value is four times the
            // midpoint's distance from the circle, over r².
            while (2 * m_y - 1 > 2 * m_x + 2) {
                if (m_d < 0) {
                    m_d += 4 * (2 * m_x + 3);
                    ++m_x;
                } else {
                    m_d += 4 * (2 * m_x + 3) + 4 * (2 - 2 * m_y);
                    const Row row{m_y, m_runStart, m_x - m_runStart + 1};
                    m_runStart = ++m_x;
                    --m_y;
                    return row;
                }
            }
            m_steep = true;
            m_d = std::int64_t(2 * m_x + 1) * (2 * m_x + 1) + 4 * std::int64_t(m_y - 1) * (m_y - 1) -
                  4 * std::int64_t(m_radius) * m_radius;
            return {m_y, m_runStart, m_x - m_runStart + 1};
        }
        // The steep octant: a pixel a row.
        if (m_d < 0) {
            m_d += 4 * (2 * m_x + 2) + 4 * (3 - 2 * m_y);
            ++m_x;
        } else {
            m_d += 4 * (3 - 2 * m_y);
        }
        --m_y;
        return {m_y, m_x, 1};
    }

private:
    int m_x, m_y, m_runStart;
    std::int64_t m_d;
    int m_radius;
    bool m_steep = false;
};

// A row of a ring, right of the centre and its mirror left of it, on picture row y: a run of
// pixels each side, whatever of them lies inside.
void putRun(const Pixels& px, int y, int cx, RingRows::Row r, QRgb colour)
{
    // The left half starts one pixel further in at the top and bottom (x = 0), where the two
    // halves meet.
    const int leftLength = r.x > 0 ? r.length : r.length - 1;
    const int leftStart = cx - r.x - r.length + 1;
    const int rightStart = cx + r.x;
    px.run(y, rightStart, rightStart + r.length - 1, colour);
    if (leftLength > 0)
        px.run(y, leftStart, leftStart + leftLength - 1, colour);
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
        if (whole) {
            QRgb* row = px.row(first);
            for (int y = first; y < last; ++y, minor += inc, row += px.stride)
                row[minor >> 16] = colour;
        } else {
            walk(first, last, minor, inc, [&](int y, int x) {
                if (px.inside(x, y))
                    px.row(y)[x] = colour;
            });
        }
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

void rings(QImage& picture, QPoint centre, const Ring* rings, std::size_t count)
{
    const Pixels px(picture);
    const int cx = centre.x(), cy = centre.y();
    // Too large to step (the arithmetic could overflow): the last ones, which the painter draws.
    std::size_t steppable = count;
    while (steppable > 0 && rings[steppable - 1].radius > kLargestRing)
        --steppable;
    // Row by row, every ring that reaches the row in the order drawn, so that a later ring still
    // covers an earlier one where they meet, and neighbouring rings' pixels are written together
    // (stepping each ring down its own rows would touch a new row of memory at every pixel).
    if (steppable > 0) {
        std::vector<RingRows> rows;
        rows.reserve(steppable);
        for (std::size_t i = 0; i < steppable; ++i)
            rows.emplace_back(rings[i].radius);
        std::size_t firstReaching = steppable; // radii grow: the rings from here reach row y
        for (int y = rings[steppable - 1].radius; y >= 0; --y) {
            while (firstReaching > 0 && rings[firstReaching - 1].radius >= y)
                --firstReaching;
            const int top = cy - y, bottom = y > 0 ? cy + y : -1; // the middle row once
            QRgb* above = top >= 0 && top < px.height ? px.row(top) : nullptr;
            QRgb* below = bottom >= 0 && bottom < px.height ? px.row(bottom) : nullptr;
            for (std::size_t i = firstReaching; i < steppable; ++i) {
                const RingRows::Row r = rows[i].next();
                const QRgb colour = rings[i].colour;
                if (r.length > 1) {
                    putRun(px, top, cx, r, colour);
                    putRun(px, bottom, cx, r, colour);
                    continue;
                }
                // Most rows: a pixel each side, written here (at x = 0, one pixel twice).
                const int right = cx + r.x, left = cx - r.x;
                if (px.column(right)) {
                    if (above)
                        above[right] = colour;
                    if (below)
                        below[right] = colour;
                }
                if (px.column(left)) {
                    if (above)
                        above[left] = colour;
                    if (below)
                        below[left] = colour;
                }
            }
        }
    }
    for (std::size_t i = steppable; i < count; ++i) {
        QPainter painter(&picture);
        painter.setPen(QColor(rings[i].colour));
        const int r = rings[i].radius;
        painter.drawEllipse(QRect(cx - r, cy - r, 2 * r, 2 * r));
    }
}

} // namespace platform::raster
