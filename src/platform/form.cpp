#include "form.h"

#include "classic_input.h"
#include "errors.h"
#include "graphics.h"
#include "timing.h"
#include "runtime.h"
#include "screen_place.h"

#include <cmath>

#include <QCloseEvent>
#include <QLoggingCategory>
#include <QMenuBar>
#include <QPainter>
#include <QScreen>
#include <QTimer>
#include <QWindow>

namespace platform {
namespace {
// Drawing reaches the screen at most once per display frame.
constexpr int kFrameMs = 16;
// How long after a frame change the frame is read once more.
constexpr int kFrameSettleMs = 150;
// Strokes kept waiting at most, about 80 KB: a fan of circles or an effect's lines fit.
constexpr std::size_t kMostWaitingStrokes = 2048;
} // namespace

Form::Form(const char* name, int clientWidth, int clientHeight, Menu menu)
{
    setObjectName(QString::fromLatin1(name));
    logTiming(QStringLiteral("creating ") + objectName());
    setAttribute(Qt::WA_QuitOnClose, false);
    setMouseTracking(true); // MouseMove comes with no button held too
    watchFrameChanges();
    if (menu == Menu::Bar) {
        m_menuBar = new QMenuBar(this);
        m_menuBar->setObjectName(QStringLiteral("MenuBar"));
        // One row of entries, measured now with the style and font it is drawn with: the
        // controls made next stand below it, before its entries exist.
        m_menuBar->ensurePolished();
        QAction* probe = m_menuBar->addAction(QStringLiteral("File"));
        m_menuHeight = m_menuBar->sizeHint().height();
        m_menuBar->removeAction(probe);
        delete probe;
        m_menuBar->setGeometry(0, 0, width(), m_menuHeight);
    }
    m_clientHeight = toPixelsY(clientHeight);
    resize(toPixelsX(clientWidth), m_clientHeight); // the menu bar is added when its items are known
}

void Form::setVisible(bool visible)
{
    if (visible && !m_placed) {
        m_placed = true;
        // The designed client area lies below the menu bar, as on the classic desktop.
        if (m_menuBar && !m_heightWritten)
            resize(width(), m_clientHeight + menuBarHeight());
        placeWholeOnScreen(*this, !m_positionWritten);
    }
    QWidget::setVisible(visible);
}

int Form::menuBarHeight() const
{
    return m_menuHeight;
}

QPoint Form::clientOrigin() const
{
    return QPoint(0, m_menuHeight);
}

Form::~Form() = default;

GraphicsLayer& Form::graphicsLayer()
{
    if (!m_graphics)
        m_graphics = new GraphicsLayer(*this);
    return *m_graphics;
}

// Every caption a window shows, for following the main window's title status from outside
// (QT_LOGGING_RULES="glidepath.caption=true").
Q_LOGGING_CATEGORY(lcCaption, "glidepath.caption", QtWarningMsg)

void Form::setCaption(const QString& caption)
{
    m_caption = caption;
    setWindowTitle(caption);
    qCInfo(lcCaption).noquote() << objectName() + QLatin1String(": ") + caption;
    logTiming(QStringLiteral("caption ") + objectName() + QLatin1Char(' ') + caption);
    Q_EMIT captionWritten(caption);
}

void Form::Show()
{
    if (!isVisible())
        show();
    raise();
    activateWindow();
}

void Form::Hide()
{
    hide();
    logTiming(QStringLiteral("hidden ") + objectName());
}

void Form::setBorderless()
{
    const bool visible = isVisible();
    setWindowFlag(Qt::FramelessWindowHint, true);
    if (visible)
        show();
}

void Form::CentreOnScreen()
{
    setLeft((ScreenWidth() - Width()) / 2);
    setTop((ScreenHeight() - Height()) / 2);
}

void Form::setTopMost()
{
    if (windowFlags() & Qt::WindowStaysOnTopHint)
        return;
    const Qt::WindowFlags flags = windowFlags() | Qt::WindowStaysOnTopHint;
    if (QWindow* handle = windowHandle()) {
        // A window that exists keeps its native window: the flag goes to the window manager
        // as a state change, instead of Qt's hiding and re-creating the window.
        overrideWindowFlags(flags);
        handle->setFlags(flags);
    } else {
        setWindowFlags(flags);
    }
}

bool Form::noteFrame()
{
    if (!isVisible() || isMinimized())
        return false;
    const QSize frame = frameGeometry().size() - size();
    if (frame == m_frame)
        return false;
    m_frame = frame;
    if (const QWindow* handle = windowHandle(); handle && !frame.isEmpty())
        noteFrameMargins(handle->frameMargins());
    // A frame seen for the first time may push the window past the screen's edge.
    if (!isMaximized() && !isFullScreen()) {
        const QRect screen = this->screen() ? this->screen()->availableGeometry() : QRect();
        if (screen.isValid() && !screen.contains(frameGeometry()))
            move(wholeOnScreen(frameGeometry(), screen).topLeft());
    }
    return true;
}

int Form::Left() const { return m_left.read(pos().x(), TwipsPerPixelX()); }
int Form::Top() const { return m_top.read(pos().y(), TwipsPerPixelY()); }
int Form::Width() const { return m_width.read(width() + m_frame.width(), TwipsPerPixelX()); }
int Form::Height() const { return m_height.read(height() + m_frame.height(), TwipsPerPixelY()); }

void Form::setLeft(int twips)
{
    const int px = toPixelsX(twips);
    m_left.written(twips, px); // before the move: its handlers already read the new value
    m_positionWritten = true;
    move(px, pos().y());
}

void Form::setTop(int twips)
{
    const int px = toPixelsY(twips);
    m_top.written(twips, px);
    m_positionWritten = true;
    move(pos().x(), px);
}

void Form::setWidth(int twips)
{
    if (twips < 0)
        raiseError(ErrInvalidPropertyValue);
    const int outer = toPixelsX(twips);
    m_width.written(twips, outer); // before the resize: Form_Resize already reads the new value
    resize(std::max(outer - m_frame.width(), 0), height());
    Q_EMIT sizeWritten(twips, Height());
}

void Form::setHeight(int twips)
{
    if (twips < 0)
        raiseError(ErrInvalidPropertyValue);
    const int outer = toPixelsY(twips);
    m_height.written(twips, outer);
    m_heightWritten = true;
    resize(width(), std::max(outer - m_frame.height(), 0));
    Q_EMIT sizeWritten(Width(), twips);
}

int Form::WindowState() const
{
    if (isMinimized())
        return vbMinimized;
    if (isMaximized())
        return vbMaximized;
    return vbNormal;
}

void Form::setWindowState(int state)
{
    // With no window manager nobody else fills the screen with a maximised window, or gives it
    // back its size afterwards: the window does both itself.
    const bool unmanaged = !windowManagerRunning() && screen();
    switch (state) {
    case vbNormal:
        if (unmanaged && isMaximized()) {
            QWidget::setWindowState(Qt::WindowNoState);
            setGeometry(m_normalGeometry);
        }
        QWidget::setWindowState(Qt::WindowNoState);
        break;
    case vbMinimized: QWidget::setWindowState(Qt::WindowMinimized); break;
    case vbMaximized:
        if (unmanaged && !isMaximized()) {
            m_normalGeometry = geometry();
            setGeometry(screen()->availableGeometry());
        }
        QWidget::setWindowState(Qt::WindowMaximized);
        break;
    default: raiseError(ErrInvalidPropertyValue);
    }
}

// Drawing surface ------------------------------------------------------------------------

void Form::ensureSurface()
{
    // Only a window that has been drawn on keeps a surface; the others paint their colour.
    if (m_surface.isNull() || m_surface.size() == size() || size().isEmpty())
        return;
    endBatch();
    QImage grown(size().expandedTo(m_surface.size()), QImage::Format_RGB32);
    grown.fill(toQColor(m_backColor));
    {
        QPainter painter(&grown);
        painter.drawImage(0, 0, m_surface);
    }
    m_surface = std::move(grown);
}

void Form::setBackColor(OleColor color)
{
    m_backColor = color;
    Cls();
}

void Form::Cls()
{
    m_strokes.clear(); // covered before they were ever shown
    if (!m_surface.isNull())
        m_surface.fill(toQColor(m_backColor));
    m_drawn = QRect();
    update();
}

void Form::addStroke(const Stroke& stroke, const QRect& area)
{
    // Made now, at the size the window has while drawing, as if the stroke were drawn at once.
    if (m_surface.isNull()) {
        m_surface = QImage(size().expandedTo(QSize(1, 1)), QImage::Format_RGB32);
        m_surface.fill(toQColor(m_backColor));
    }
    m_strokes.push_back(stroke);
    // A loop that draws without yielding still puts its strokes down in bounded runs.
    if (m_strokes.size() >= kMostWaitingStrokes)
        endBatch();
    m_drawn |= area;
    if (!m_flushTimer)
        m_flushTimer = startTimer(kFrameMs, Qt::PreciseTimer);
}

void Form::endBatch()
{
    if (m_strokes.empty())
        return;
    QPainter painter(&m_surface);
    for (const Stroke& stroke : m_strokes) {
        painter.setPen(QColor(stroke.colour));
        switch (stroke.kind) {
        case Stroke::Segment: painter.drawLine(stroke.a, stroke.b); break;
        case Stroke::Dot: painter.drawPoint(stroke.a.toPoint()); break;
        case Stroke::Ring: {
            const QPoint centre = stroke.a.toPoint();
            const int r = int(stroke.b.x());
            painter.drawEllipse(QRect(centre.x() - r, centre.y() - r, 2 * r, 2 * r));
            break;
        }
        }
    }
    m_strokes.clear();
}

void Form::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_flushTimer) {
        QWidget::timerEvent(event);
        return;
    }
    killTimer(m_flushTimer);
    m_flushTimer = 0;
    endBatch();
    update(m_drawn);
    m_drawn = QRect();
}

const QImage& Form::surface()
{
    endBatch();
    return m_surface;
}

void Form::ScaleTwips() { m_scaleMode = ScaleMode::Twips; }
void Form::ScalePixels() { m_scaleMode = ScaleMode::Pixels; }

void Form::Scale(double left, double top, double right, double bottom)
{
    m_scaleMode = ScaleMode::User;
    m_userScale = QRectF(QPointF(left, top), QPointF(right, bottom));
}

double Form::ScaleWidth() const
{
    switch (m_scaleMode) {
    case ScaleMode::Pixels: return width();
    case ScaleMode::User: return m_userScale.width();
    default: return toTwipsX(width());
    }
}

double Form::ScaleHeight() const
{
    switch (m_scaleMode) {
    case ScaleMode::Pixels: return height();
    case ScaleMode::User: return m_userScale.height();
    default: return toTwipsY(height());
    }
}

QPointF Form::toSurface(double x, double y) const
{
    switch (m_scaleMode) {
    case ScaleMode::Pixels: return {x, y};
    case ScaleMode::User:
        return {(x - m_userScale.left()) * width() / m_userScale.width(),
                (y - m_userScale.top()) * height() / m_userScale.height()};
    default: return {x / TwipsPerPixelX(), y / TwipsPerPixelY()};
    }
}

QPointF Form::fromSurface(QPointF p) const
{
    switch (m_scaleMode) {
    case ScaleMode::Pixels: return p;
    case ScaleMode::User:
        return {m_userScale.left() + p.x() * m_userScale.width() / std::max(width(), 1),
                m_userScale.top() + p.y() * m_userScale.height() / std::max(height(), 1)};
    default: return {p.x() * TwipsPerPixelX(), p.y() * TwipsPerPixelY()};
    }
}

void Form::Line(double x1, double y1, double x2, double y2, OleColor color)
{
    const QPointF a = toSurface(x1, y1);
    const QPointF b = toSurface(x2, y2);
    addStroke({Stroke::Segment, toQColor(color).rgb(), a, b},
              QRectF(a, b).normalized().toAlignedRect().adjusted(-1, -1, 1, 1));
}

void Form::Circle(double x, double y, double radius, OleColor color)
{
    // On whole pixels, as the classic circle is drawn: Qt then draws it with its fast
    // midpoint rasteriser instead of stroking a curve.
    const QPointF exact = toSurface(x, y);
    const QPoint centre = exact.toPoint();
    const int r = int(std::lround(toSurface(x + radius, y).x() - exact.x()));
    addStroke({r < 1 ? Stroke::Dot : Stroke::Ring, toQColor(color).rgb(), QPointF(centre), QPointF(r, 0)},
              QRect(centre.x() - r - 1, centre.y() - r - 1, 2 * r + 3, 2 * r + 3));
}

// Events ----------------------------------------------------------------------------------

void Form::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_paintedSinceShow = false;
}

void Form::paintEvent(QPaintEvent* event)
{
    if (!m_paintedSinceShow) {
        m_paintedSinceShow = true;
        logTiming(QStringLiteral("painted ") + objectName());
        Q_EMIT firstPainted();
    }
    endBatch();
    QPainter painter(this);
    if (m_surface.isNull())
        painter.fillRect(event->rect(), toQColor(m_backColor));
    else
        painter.drawImage(event->rect(), m_surface, event->rect());
}

void Form::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (m_menuBar)
        m_menuBar->setGeometry(0, 0, width(), menuBarHeight());
    ensureSurface();
    noteFrame();
    runHandler([this] { Form_Resize(); });
}

void Form::moveEvent(QMoveEvent* event)
{
    QWidget::moveEvent(event);
    // Width and Height are the outer size: a new frame is a new size, with its layout.
    if (noteFrame())
        runHandler([this] { Form_Resize(); });
}

bool Form::event(QEvent* event)
{
    if (event->type() == frameChangedEventType()) {
        followFrame();
        // Qt may learn the new frame a moment after the window manager has announced it.
        QTimer::singleShot(kFrameSettleMs, this, &Form::followFrame);
        return true;
    }
    return QWidget::event(event);
}

void Form::followFrame()
{
    if (noteFrame())
        runHandler([this] { Form_Resize(); });
}

void Form::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) {
        runHandler([this] { Form_Resize(); });
        // A maximised window may get another frame from the window manager.
        QTimer::singleShot(kFrameSettleMs, this, &Form::followFrame);
    }
}

void Form::closeEvent(QCloseEvent* event)
{
    // The window goes through Unload, whose handler decides; Qt must not close it by itself.
    event->ignore();
    runHandler([this] { Unload(*this); });
}

QPointF Form::clientPoint(const QMouseEvent& mouse) const
{
    return fromSurface(mouse.position() - QPointF(clientOrigin()));
}

void Form::mousePressEvent(QMouseEvent* event)
{
    m_pressed = true;
    const QPointF at = clientPoint(*event);
    runHandler([&] { Form_MouseDown(classicButton(event->button()), classicShift(event->modifiers()), at.x(), at.y()); });
}

void Form::mouseMoveEvent(QMouseEvent* event)
{
    const QPointF at = clientPoint(*event);
    runHandler([&] { Form_MouseMove(classicButtons(event->buttons()), classicShift(event->modifiers()), at.x(), at.y()); });
}

void Form::mouseReleaseEvent(QMouseEvent* event)
{
    const QPointF at = clientPoint(*event);
    runHandler([&] { Form_MouseUp(classicButton(event->button()), classicShift(event->modifiers()), at.x(), at.y()); });
    if (m_pressed && rect().contains(event->position().toPoint()))
        runHandler([this] { Form_Click(); });
    m_pressed = false;
}

void Form::mouseDoubleClickEvent(QMouseEvent*)
{
    // The second press of a double click raises DblClick alone; its release only MouseUp.
    m_pressed = false;
    runHandler([this] { Form_DblClick(); });
}

} // namespace platform
