#include "canvas.h"

#include "raster.h"
#include "twips.h"

#include <QPainter>
#include <QWidget>

#include <cmath>

namespace platform {
namespace {
// Strokes kept waiting at most, about 160 KB: a fan of circles and an effect's lines fit, and a
// loop that draws without end, shown or hidden, still puts them down in bounded runs.
constexpr std::size_t kMostWaitingStrokes = 4096;
} // namespace

Canvas::Canvas(QWidget& widget) : m_widget(widget), m_updates(widget, [this] { frame(); })
{
    // The paint covers every pixel it is asked for: Qt need not fill the background first.
    widget.setAttribute(Qt::WA_OpaquePaintEvent);
}

void Canvas::setBackColor(OleColor color)
{
    m_backColor = color;
    Cls();
}

void Canvas::Cls()
{
    m_strokes.clear(); // covered before they were ever put down
    m_framed = 0;      // a frame the screen never got is skipped
    m_clearFramed = false;
    const QRgb back = toQColor(m_backColor).rgb();
    if (m_picture.isNull()) {
        // Nothing drawn yet: the paint shows the colour, wherever it is asked.
        m_updates.add(m_widget.rect());
    } else {
        // Only what was drawn needs wiping, unless the colour itself changed.
        const QRect wiped = back == m_pictureBack ? m_inked : m_picture.rect();
        m_toClear |= wiped;
        m_updates.add(wiped);
    }
    m_inked = QRect();
}

void Canvas::addStroke(const Stroke& stroke, const QRect& area)
{
    // Made now, at the size the window has while drawing, as if the stroke were drawn at once.
    if (m_picture.isNull()) {
        m_picture = QImage(m_widget.size().expandedTo(QSize(1, 1)), QImage::Format_RGB32);
        m_pictureBack = toQColor(m_backColor).rgb();
        m_picture.fill(m_pictureBack);
    }
    m_strokes.push_back(stroke);
    if (m_strokes.size() >= kMostWaitingStrokes)
        putDown();
    m_inked |= area;
    m_updates.add(area);
}

void Canvas::frame()
{
    m_framed = m_strokes.size();
    m_clearFramed = !m_toClear.isEmpty();
}

void Canvas::putDown()
{
    m_framed = m_strokes.size();
    m_clearFramed = true;
    putDownFramed();
}

void Canvas::putDownFramed()
{
    if (m_clearFramed && !m_toClear.isEmpty()) {
        m_pictureBack = toQColor(m_backColor).rgb();
        const QRect area = m_toClear & m_picture.rect();
        if (area == m_picture.rect()) {
            m_picture.fill(m_pictureBack);
        } else if (!area.isEmpty()) {
            for (int y = area.top(); y <= area.bottom(); ++y)
                std::fill_n(reinterpret_cast<QRgb*>(m_picture.scanLine(y)) + area.left(), area.width(), m_pictureBack);
        }
        m_toClear = QRect();
    }
    m_clearFramed = false;
    for (std::size_t i = 0; i < m_framed; ++i) {
        const Stroke& stroke = m_strokes[i];
        switch (stroke.kind) {
        case Stroke::Segment: raster::segment(m_picture, stroke.a, stroke.b, stroke.colour); break;
        case Stroke::Dot: raster::dot(m_picture, stroke.a.toPoint(), stroke.colour); break;
        case Stroke::Ring: {
            // Rings one after another around one centre, each as large as the last or larger (a
            // fan), are put down together.
            std::vector<raster::Ring> fan;
            for (std::size_t j = i; j < m_framed; ++j) {
                const Stroke& ring = m_strokes[j];
                const int radius = int(ring.b.x());
                if (ring.kind != Stroke::Ring || ring.a.x() != stroke.a.x() || ring.a.y() != stroke.a.y() ||
                    (!fan.empty() && radius < fan.back().radius))
                    break;
                fan.push_back({radius, ring.colour});
            }
            raster::rings(m_picture, stroke.a.toPoint(), fan.data(), fan.size());
            i += fan.size() - 1;
            break;
        }
        }
    }
    m_strokes.erase(m_strokes.begin(), m_strokes.begin() + std::ptrdiff_t(m_framed));
    m_framed = 0;
}

const QImage& Canvas::surface()
{
    putDown();
    return m_picture;
}

void Canvas::paint(QPainter& painter, const QRect& area)
{
    if (m_picture.isNull()) {
        painter.fillRect(area, toQColor(m_backColor));
        return;
    }
    // The frame handed to the screen last, never what is being drawn since: a paint that comes
    // in the middle of a tick shows no half-drawn picture.
    putDownFramed();
    painter.drawImage(area, m_picture, area);
}

void Canvas::resized()
{
    // Only a window that has been drawn on keeps a picture; the others paint their colour.
    const QSize size = m_widget.size();
    if (m_picture.isNull() || size.isEmpty() || (size.width() <= m_picture.width() && size.height() <= m_picture.height()))
        return;
    putDown();
    QImage grown(size.expandedTo(m_picture.size()), QImage::Format_RGB32);
    grown.fill(m_pictureBack);
    {
        QPainter painter(&grown);
        painter.drawImage(0, 0, m_picture);
    }
    m_picture = std::move(grown);
}

void Canvas::ScaleTwips() { m_scaleMode = ScaleMode::Twips; }
void Canvas::ScalePixels() { m_scaleMode = ScaleMode::Pixels; }

void Canvas::Scale(double left, double top, double right, double bottom)
{
    m_scaleMode = ScaleMode::User;
    m_userScale = QRectF(QPointF(left, top), QPointF(right, bottom));
}

double Canvas::ScaleWidth() const
{
    switch (m_scaleMode) {
    case ScaleMode::Pixels: return m_widget.width();
    case ScaleMode::User: return m_userScale.width();
    default: return toTwipsX(m_widget.width());
    }
}

double Canvas::ScaleHeight() const
{
    switch (m_scaleMode) {
    case ScaleMode::Pixels: return m_widget.height();
    case ScaleMode::User: return m_userScale.height();
    default: return toTwipsY(m_widget.height());
    }
}

QPointF Canvas::toSurface(double x, double y) const
{
    switch (m_scaleMode) {
    case ScaleMode::Pixels: return {x, y};
    case ScaleMode::User:
        return {(x - m_userScale.left()) * m_widget.width() / m_userScale.width(),
                (y - m_userScale.top()) * m_widget.height() / m_userScale.height()};
    default: return {x / TwipsPerPixelX(), y / TwipsPerPixelY()};
    }
}

QPointF Canvas::fromSurface(QPointF p) const
{
    switch (m_scaleMode) {
    case ScaleMode::Pixels: return p;
    case ScaleMode::User:
        return {m_userScale.left() + p.x() * m_userScale.width() / std::max(m_widget.width(), 1),
                m_userScale.top() + p.y() * m_userScale.height() / std::max(m_widget.height(), 1)};
    default: return {p.x() * TwipsPerPixelX(), p.y() * TwipsPerPixelY()};
    }
}

void Canvas::Line(double x1, double y1, double x2, double y2, OleColor color)
{
    const QPointF a = toSurface(x1, y1);
    const QPointF b = toSurface(x2, y2);
    const QRgb colour = toQColor(color).rgb();
    // The same line again at once, either way round, sets the same pixels: it is drawn once
    // (the lines effect draws each of its passes' second lines twice).
    if (!m_strokes.empty()) {
        const Stroke& last = m_strokes.back();
        auto same = [](QPointF p, QPointF q) { return p.x() == q.x() && p.y() == q.y(); };
        const QRectF unclipped = QRectF(m_widget.rect()).adjusted(-1, -1, 1, 1);
        if (last.kind == Stroke::Segment && last.colour == colour &&
            ((same(last.a, a) && same(last.b, b)) ||
             (same(last.a, b) && same(last.b, a) && unclipped.contains(a) && unclipped.contains(b))))
            return;
    }
    addStroke({Stroke::Segment, colour, a, b}, QRectF(a, b).normalized().toAlignedRect().adjusted(-1, -1, 1, 1));
}

void Canvas::Circle(double x, double y, double radius, OleColor color)
{
    // On whole pixels, as the classic circle is drawn.
    const QPointF exact = toSurface(x, y);
    const QPoint centre = exact.toPoint();
    const int r = int(std::lround(toSurface(x + radius, y).x() - exact.x()));
    addStroke({r < 1 ? Stroke::Dot : Stroke::Ring, toQColor(color).rgb(), QPointF(centre), QPointF(r, 0)},
              QRect(centre.x() - r - 1, centre.y() - r - 1, 2 * r + 3, 2 * r + 3));
}

} // namespace platform
