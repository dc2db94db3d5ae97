#pragma once
// A window's drawing surface: a background colour, a scale (twips, pixels or a user scale such
// as 100 by 100 units over the client area) and lines and circles drawn in that scale, kept in
// one picture until the window is cleared or its background set.
//
// Drawing waits as strokes until the picture is read or shown, so a clear that comes first (the
// lines effect clears over a fan of circles) drops them undrawn, and a hidden window draws
// nothing at all until it is shown or read. Strokes are put down by the platform's own
// rasteriser, pixel for pixel what Qt's painter draws with an aliased one-pixel pen, writing
// straight into the picture. What changed reaches the screen at most once a display frame
// (FrameUpdates), and only the part that changed: what was drawn, and what a clear wiped.

#include "colors.h"
#include "frame_updates.h"

#include <QImage>
#include <QPointF>
#include <QRect>

#include <cstdint>
#include <vector>

class QPainter;
class QWidget;

namespace platform {

class Canvas {
public:
    // Draws on widget: its size is the picture's, its paint shows the picture.
    explicit Canvas(QWidget& widget);

    OleColor BackColor() const { return m_backColor; }
    void setBackColor(OleColor color); // also clears what was drawn
    void Cls();
    void ScaleTwips();
    void ScalePixels();
    void Scale(double left, double top, double right, double bottom);
    double ScaleWidth() const;
    double ScaleHeight() const;
    void Line(double x1, double y1, double x2, double y2, OleColor color);
    void Circle(double x, double y, double radius, OleColor color);
    // What was drawn (null until something is), with every line and circle so far on it.
    const QImage& surface();
    // A point of the scale in pixels of the widget, and back.
    QPointF toSurface(double x, double y) const;
    QPointF fromSurface(QPointF pixels) const;

    // The widget's paint of area: the picture, or the background colour where nothing was drawn.
    void paint(QPainter& painter, const QRect& area);
    // The widget's new size: the picture grows to cover it, keeping what was drawn.
    void resized();

private:
    enum class ScaleMode { Twips, Pixels, User };
    struct Stroke {
        enum Kind : std::uint8_t { Segment, Ring, Dot } kind;
        QRgb colour;
        QPointF a, b; // a segment's ends; a ring's or dot's centre, and the ring's radius in b.x
    };
    void addStroke(const Stroke& stroke, const QRect& area);
    // The frame: what has been drawn so far is what the screen gets next (put down when it is
    // painted; a clear that comes first drops it, a frame nobody saw).
    void frame();
    void putDown();       // the pending clear and all the waiting strokes, onto the picture
    void putDownFramed(); // those of the frame only

    QWidget& m_widget;
    OleColor m_backColor = vbButtonFace;
    QImage m_picture;
    QRgb m_pictureBack = 0;        // the colour the picture was last cleared to
    std::vector<Stroke> m_strokes; // drawn, not yet on the picture
    std::size_t m_framed = 0;      // the first so many of them make the frame the screen gets next
    bool m_clearFramed = false;    // and the pending clear comes before them
    QRect m_inked;                 // where the picture may differ from its background colour
    QRect m_toClear;               // wiped by a clear not yet put down
    FrameUpdates m_updates;
    ScaleMode m_scaleMode = ScaleMode::Twips;
    QRectF m_userScale;
};

} // namespace platform
