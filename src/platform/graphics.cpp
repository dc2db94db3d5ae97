#include "graphics.h"

#include "errors.h"
#include "twips.h"

#include <QEvent>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace platform {

// GraphicsLayer ---------------------------------------------------------------------------

GraphicsLayer::GraphicsLayer(Form& form) : QWidget(form.widget()), m_form(form)
{
    setObjectName(QStringLiteral("WindowlessControls"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    form.widget()->installEventFilter(this);
    followForm();
    show();
}

void GraphicsLayer::followForm()
{
    const QPoint origin = m_form.clientOrigin();
    setGeometry(QRect(origin, m_form.widget()->size() - QSize(0, origin.y())));
}

bool GraphicsLayer::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_form.widget() && event->type() == QEvent::Resize)
        followForm();
    return false;
}

void GraphicsLayer::add(Graphic* graphic)
{
    m_items.push_back(graphic);
    m_extent |= graphic->bounds();
    if (graphic->Visible())
        changed(*graphic, true);
}

void GraphicsLayer::remove(Graphic* graphic)
{
    // Elements mostly go last first (an array unloading, a window closing): search from the back.
    const auto it = std::find(m_items.rbegin(), m_items.rend(), graphic);
    if (it == m_items.rend())
        return;
    m_items.erase(std::next(it).base());
    if (graphic->Visible()) {
        m_stale = true;
        m_updates.add(graphic->bounds());
    }
}

// The picture covers the layer and every element, so that a window growing over elements
// already drawn shows them without drawing them all again.
QSize GraphicsLayer::pictureSize() const
{
    return size().expandedTo(QSize(m_extent.right() + 1, m_extent.bottom() + 1)).expandedTo(QSize(1, 1));
}

void GraphicsLayer::changed(const Graphic& graphic, bool shownOnTop)
{
    m_extent |= graphic.bounds();
    if (shownOnTop && !m_stale && covers(m_picture.size())) {
        QPainter painter(&m_picture);
        graphic.paint(painter);
    } else {
        m_stale = true;
    }
    m_updates.add(graphic.bounds());
}

bool GraphicsLayer::covers(QSize picture) const
{
    const QSize needed = pictureSize();
    return picture.width() >= needed.width() && picture.height() >= needed.height();
}

const QImage& GraphicsLayer::picture()
{
    if (!covers(m_picture.size()))
        m_stale = true;
    if (m_stale)
        redraw();
    return m_picture;
}

void GraphicsLayer::redraw()
{
    if (!covers(m_picture.size()))
        m_picture = QImage(pictureSize(), QImage::Format_ARGB32_Premultiplied);
    m_picture.fill(Qt::transparent);
    QPainter painter(&m_picture);
    QVector<QLine> run; // visible lines in a row that share one pen
    const Graphic* runPen = nullptr;
    auto flush = [&] {
        if (!run.isEmpty()) {
            runPen->paint(painter); // sets the pen (and draws the first again: harmless)
            painter.drawLines(run);
            run.clear();
        }
    };
    for (const Graphic* g : m_items) {
        if (!g->Visible())
            continue;
        if (runPen && g->sharesPenWith(*runPen)) {
            run.append(g->pixelLine());
            continue;
        }
        flush();
        if (g->sharesPenWith(*g)) {
            runPen = g;
            run.append(g->pixelLine());
        } else {
            runPen = nullptr;
            g->paint(painter);
        }
    }
    flush();
    m_stale = false;
}

void GraphicsLayer::paintEvent(QPaintEvent* event)
{
    const QImage& drawn = picture();
    QPainter painter(this);
    painter.drawImage(event->rect(), drawn, event->rect());
}

// Graphic ---------------------------------------------------------------------------------

Graphic::Graphic(Form& parent, Kind kind, int a, int b, int c, int d, bool visible)
    : m_layer(&parent.graphicsLayer()), m_a(a), m_b(b), m_c(c), m_d(d), m_kind(kind), m_visible(visible)
{
    m_layer->add(this);
}

Graphic::Graphic(const Graphic& first, bool visible)
    : m_layer(first.m_layer), m_a(first.m_a), m_b(first.m_b), m_c(first.m_c), m_d(first.m_d),
      m_color(first.m_color), m_width(first.m_width), m_kind(first.m_kind), m_visible(visible)
{
    m_layer->add(this);
}

Graphic::~Graphic()
{
    m_layer->remove(this);
}

void Graphic::setVisible(bool visible)
{
    if (visible == m_visible)
        return;
    m_visible = visible;
    m_layer->changed(*this, visible && m_layer->isTop(*this));
}

void Graphic::setBorderColor(OleColor color)
{
    if (color == m_color)
        return; // the windows rewrite colours on every timer tick: only a real change redraws
    m_color = color;
    if (m_visible)
        m_layer->changed(*this, false);
}

void Graphic::setBorderWidth(int pixels)
{
    if (pixels < 1 || pixels > 0xFFFF)
        raiseError(ErrInvalidPropertyValue);
    if (pixels == m_width)
        return;
    const QRect before = bounds();
    m_width = std::uint16_t(pixels);
    if (m_visible) {
        m_layer->vacated(before);
        m_layer->changed(*this, false);
    }
}

void Graphic::setPlace(int a, int b, int c, int d)
{
    if (a == m_a && b == m_b && c == m_c && d == m_d)
        return;
    const QRect before = bounds();
    m_a = a, m_b = b, m_c = c, m_d = d;
    if (m_visible) {
        m_layer->vacated(before);
        m_layer->changed(*this, false);
    }
}

QRect Graphic::bounds() const
{
    const int margin = m_width / 2 + 2;
    if (m_kind == Kind::Line)
        return QRect(QPoint(toPixelsX(m_a), toPixelsY(m_b)), QPoint(toPixelsX(m_c), toPixelsY(m_d)))
            .normalized()
            .adjusted(-margin, -margin, margin, margin);
    return QRect(toPixelsX(m_a), toPixelsY(m_b), toPixelsX(m_c), toPixelsY(m_d)).adjusted(-margin, -margin, margin, margin);
}

QLine Graphic::pixelLine() const
{
    return QLine(toPixelsX(m_a), toPixelsY(m_b), toPixelsX(m_c), toPixelsY(m_d));
}

void Graphic::paint(QPainter& painter) const
{
    QPen pen(toQColor(m_color), m_width);
    if (m_kind == Kind::Line) {
        // Wide pens end round, as the classic wide lines do, so a doodle's segments join up.
        pen.setCapStyle(Qt::RoundCap);
        painter.setPen(pen);
        painter.drawLine(pixelLine());
        return;
    }
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    // The outline stands inside the rectangle.
    const int inset = m_width / 2;
    painter.drawRect(QRect(toPixelsX(m_a), toPixelsY(m_b), toPixelsX(m_c), toPixelsY(m_d))
                         .adjusted(inset, inset, -inset - 1, -inset - 1));
}

// Line and Shape --------------------------------------------------------------------------

Line::Line(Form& parent, const char*, int x1, int y1, int x2, int y2)
    : Graphic(parent, Kind::Line, x1, y1, x2, y2, true)
{
}

Line::Line(LoadedCopy, const Line& first) : Graphic(first, false)
{
}

void Line::loadFrom(std::optional<Line>& slot, const Line& first)
{
    slot.emplace(LoadedCopy{}, first);
}

Shape::Shape(Form& parent, const char*, TwipsRect rect)
    : Graphic(parent, Kind::Rectangle, rect.left, rect.top, rect.width, rect.height, true)
{
}

void Shape::setWidth(int twips)
{
    if (twips < 0)
        raiseError(ErrInvalidPropertyValue);
    setPlace(m_a, m_b, twips, m_d);
}

void Shape::setHeight(int twips)
{
    if (twips < 0)
        raiseError(ErrInvalidPropertyValue);
    setPlace(m_a, m_b, m_c, twips);
}

} // namespace platform
