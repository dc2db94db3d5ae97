#pragma once
// The windowless controls, Line and Shape: no widget of their own; their window draws them
// from one list, in the order they were made, on a layer that stands above the controls made
// before the first of them and below the controls made after it.
//
// The layer keeps what it drew in a picture: a newly shown element on top is drawn into it
// alone, so adding the ten-thousandth doodle segment costs what adding the first did; any
// other change redraws the picture once, at the next paint. What changed reaches the screen at
// most once a display frame, however many segments a frame's mouse moves add.

#include "colors.h"
#include "form.h"
#include "frame_updates.h"

#include <QImage>
#include <QWidget>

#include <cstdint>
#include <deque>
#include <optional>

namespace platform {

class Graphic;

class GraphicsLayer : public QWidget {
public:
    explicit GraphicsLayer(Form& form);

    void add(Graphic* graphic);
    void remove(Graphic* graphic);
    // An element's look changed; shownOnTop: it became visible and nothing stands above it.
    void changed(const Graphic& graphic, bool shownOnTop);
    bool isTop(const Graphic& graphic) const { return !m_items.empty() && m_items.back() == &graphic; }
    // An element stood there: that part reaches the screen again with the next frame.
    void vacated(const QRect& area) { m_updates.add(area); }
    int count() const { return int(m_items.size()); }

    // The layer's picture brought up to date (for tests and for measuring).
    const QImage& picture();

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void followForm();
    void redraw();
    QSize pictureSize() const;
    bool covers(QSize picture) const;

    Form& m_form;
    std::deque<Graphic*> m_items; // back to front; grows without copying or spare room
    QImage m_picture;
    QRect m_extent; // where elements have stood, in pixels: the picture covers it
    bool m_stale = true;
    FrameUpdates m_updates{*this}; // what changed reaches the screen once a frame
};

// What a line and a shape have in common: a place in twips, a colour, a width, visibility.
class Graphic {
public:
    Graphic(const Graphic&) = delete;
    Graphic& operator=(const Graphic&) = delete;

    bool Visible() const { return m_visible; }
    void setVisible(bool visible);
    OleColor BorderColor() const { return m_color; }
    void setBorderColor(OleColor color);
    int BorderWidth() const { return m_width; }
    void setBorderWidth(int pixels); // below 1 raises "Invalid property value" (380)

    // Where it paints, in pixels of its window's client area.
    QRect bounds() const;
    void paint(class QPainter& painter) const;
    // Lines drawn one after another with the same pen are drawn in one call.
    bool sharesPenWith(const Graphic& other) const
    {
        return m_kind == Kind::Line && other.m_kind == Kind::Line && m_color == other.m_color && m_width == other.m_width;
    }
    QLine pixelLine() const;

protected:
    enum class Kind : std::uint8_t { Line, Rectangle };
    Graphic(Form& parent, Kind kind, int a, int b, int c, int d, bool visible);
    Graphic(const Graphic& first, bool visible); // a copy in the same window
    ~Graphic();
    void setPlace(int a, int b, int c, int d);

    GraphicsLayer* m_layer;
    // A line's ends (X1, Y1, X2, Y2) or a rectangle's Left, Top, Width, Height, in twips.
    std::int32_t m_a, m_b, m_c, m_d;
    OleColor m_color = vbWindowText;
    std::uint16_t m_width = 1;
    Kind m_kind;
    bool m_visible;
};

// A straight line from (X1, Y1) to (X2, Y2) in twips of its window; it takes no clicks.
class Line : public Graphic {
public:
    Line(Form& parent, const char* name, int x1, int y1, int x2, int y2);

    int X1() const { return m_a; }
    int Y1() const { return m_b; }
    int X2() const { return m_c; }
    int Y2() const { return m_d; }
    void setX1(int twips) { setPlace(twips, m_b, m_c, m_d); }
    void setY1(int twips) { setPlace(m_a, twips, m_c, m_d); }
    void setX2(int twips) { setPlace(m_a, m_b, twips, m_d); }
    void setY2(int twips) { setPlace(m_a, m_b, m_c, twips); }
    void setEnds(int x1, int y1, int x2, int y2) { setPlace(x1, y1, x2, y2); }

    // A line loaded into an array at run time: the first element's ends, colour and width,
    // and hidden until shown, as the classic Load makes it.
    static void loadFrom(std::optional<Line>& slot, const Line& first);
    struct LoadedCopy {};
    Line(LoadedCopy, const Line& first);
};

// A rectangle outline; it takes no clicks.
class Shape : public Graphic {
public:
    Shape(Form& parent, const char* name, TwipsRect rect);

    int Left() const { return m_a; }
    int Top() const { return m_b; }
    int Width() const { return m_c; }
    int Height() const { return m_d; }
    void setLeft(int twips) { setPlace(twips, m_b, m_c, m_d); }
    void setTop(int twips) { setPlace(m_a, twips, m_c, m_d); }
    void setWidth(int twips);  // a negative size raises "Invalid property value" (380)
    void setHeight(int twips);
};

} // namespace platform
