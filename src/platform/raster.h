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
// Circles around one centre, in growing (or equal) radii of at least 1, each over the ones
// before it, as if drawn one by one (a fan of circles, or one circle): each as the painter's
// ellipse in the square (centre - radius, 2 radius wide) draws it.
struct Ring {
    int radius;
    QRgb colour;
};
void rings(QImage& picture, QPoint centre, const Ring* rings, std::size_t count);
void dot(QImage& picture, QPoint at, QRgb colour);

} // namespace platform::raster
