#pragma once
// The window drawing's rasteriser: aliased one-pixel lines, circles and dots written straight
// into a 32-bit picture, the very pixels Qt's raster painter sets for the same shapes with a
// one-pixel solid pen (its midpoint ellipse and its cosmetic line with square caps), without
// its per-shape set-up or its per-span calls. Anything outside the picture is left out.

#include <QImage>
#include <QPoint>
#include <QPointF>

#include <cstddef>

namespace platform::raster {

// A line from a to b, in pixels (fractions count, as they do for the painter).
void segment(QImage& picture, QPointF a, QPointF b, QRgb colour);
// The circle of the given radius (at least 1) around centre, as the painter's ellipse in the
// square (centre - radius, 2 radius wide) draws it.
void ring(QImage& picture, QPoint centre, int radius, QRgb colour);
// Rings around one centre in growing (or equal) radii, each over the ones before it: a fan of
// circles, as if drawn one by one.
struct Ring {
    int radius;
    QRgb colour;
};
void rings(QImage& picture, QPoint centre, const Ring* rings, std::size_t count);
void dot(QImage& picture, QPoint at, QRgb colour);

} // namespace platform::raster
