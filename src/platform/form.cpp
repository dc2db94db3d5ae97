#include "form.h"

#include "classic_font.h"
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
#include <QWidget>
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

// The window's widget: hands what the window system tells it to its window.
class FormWidget : public QWidget {
public:
    explicit FormWidget(Form& form) : m_form(form) {}
    Form& form() const { return m_form; }

    void setVisible(bool visible) override
    {
        if (visible)
            m_form.placeOnFirstShow();
        QWidget::setVisible(visible);
    }

protected:
    void showEvent(QShowEvent* event) override
    {
        QWidget::showEvent(event);
        m_form.shown();
    }
    void paintEvent(QPaintEvent* event) override { m_form.paint(event); }
    void resizeEvent(QResizeEvent* event) override
    {
        QWidget::resizeEvent(event);
        m_form.resized();
    }
    void moveEvent(QMoveEvent* event) override
    {
        QWidget::moveEvent(event);
        m_form.moved();
    }
    void changeEvent(QEvent* event) override
    {
        QWidget::changeEvent(event);
        if (event->type() == QEvent::WindowStateChange)
            m_form.stateChanged();
    }
    void closeEvent(QCloseEvent* event) override
    {
        // The window goes through Unload, whose handler decides; Qt must not close it by itself.
        event->ignore();
        m_form.closeAsked();
    }
    void mousePressEvent(QMouseEvent* event) override { m_form.mousePressed(event); }
    void mouseMoveEvent(QMouseEvent* event) override { m_form.mouseMoved(event); }
    void mouseReleaseEvent(QMouseEvent* event) override { m_form.mouseReleased(event); }
    void mouseDoubleClickEvent(QMouseEvent*) override { m_form.mouseDoubleClicked(); }
    bool event(QEvent* event) override
    {
        if (event->type() == frameChangedEventType()) {
            m_form.followFrame();
            // Qt may learn the new frame a moment after the window manager has announced it.
            QTimer::singleShot(kFrameSettleMs, &m_form, &Form::followFrame);
            return true;
        }
        return QWidget::event(event);
    }

private:
    Form& m_form;
};

Form::Form(const char* name, int clientWidth, int clientHeight, Menu menu) : m_widget(new FormWidget(*this))
{
    setObjectName(QString::fromLatin1(name));
    m_widget->setObjectName(objectName());
    logTiming(QStringLiteral("creating ") + objectName());
    m_widget->setAttribute(Qt::WA_QuitOnClose, false);
    m_widget->setMouseTracking(true); // MouseMove comes with no button held too
    watchFrameChanges();
    if (menu == Menu::Bar) {
        m_menuBar = new QMenuBar(m_widget);
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
    m_widget->resize(toPixelsX(clientWidth), m_clientHeight); // the menu bar is added when its items are known
}

QWidget* Form::widget() const { return m_widget; }

Form* Form::of(const QWidget* widget)
{
    const auto* own = dynamic_cast<const FormWidget*>(widget);
    return own ? &own->form() : nullptr;
}

QSize Form::size() const { return m_widget->size(); }
int Form::width() const { return m_widget->width(); }
int Form::height() const { return m_widget->height(); }
void Form::update() { m_widget->update(); }
void Form::update(const QRect& area) { m_widget->update(area); }

void Form::placeOnFirstShow()
{
    if (m_placed)
        return;
    m_placed = true;
    // The designed client area lies below the menu bar, as on the classic desktop.
    if (m_menuBar && !m_heightWritten)
        m_widget->resize(width(), m_clientHeight + menuBarHeight());
    placeWholeOnScreen(*m_widget, !m_positionWritten);
}

int Form::menuBarHeight() const
{
    return m_menuHeight;
}

QPoint Form::clientOrigin() const
{
    return QPoint(0, m_menuHeight);
}

Form::~Form()
{
    // Its controls have gone already (they are the window's members); what is left of the
    // widget goes with it.
    delete m_widget;
}

bool Form::Visible() const { return m_widget->isVisible(); }
bool Form::painted() const { return m_widget->isVisible() && m_paintedSinceShow; }

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
    m_widget->setWindowTitle(caption);
    qCInfo(lcCaption).noquote() << objectName() + QLatin1String(": ") + caption;
    logTiming(QStringLiteral("caption ") + objectName() + QLatin1Char(' ') + caption);
    Q_EMIT captionWritten(caption);
}

void Form::Show()
{
    if (!m_widget->isVisible())
        m_widget->show();
    m_widget->raise();
    m_widget->activateWindow();
}

void Form::Hide()
{
    m_widget->hide();
    logTiming(QStringLiteral("hidden ") + objectName());
}

void Form::setBorderStyle(BorderStyle style)
{
    switch (style) {
    case vbBSNone: {
        const bool visible = m_widget->isVisible();
        m_widget->setWindowFlag(Qt::FramelessWindowHint, true);
        if (visible)
            m_widget->show();
        break;
    }
    case vbFixedSingle: m_widget->setFixedSize(size()); break;
    default: raiseError(ErrInvalidPropertyValue);
    }
}

void Form::setFont(const QString& name, double points, bool bold)
{
    m_widget->setFont(classicFont(name, points, bold));
}

void Form::CentreOnScreen()
{
    setLeft((ScreenWidth() - Width()) / 2);
    setTop((ScreenHeight() - Height()) / 2);
}

void Form::setTopMost()
{
    if (m_widget->windowFlags() & Qt::WindowStaysOnTopHint)
        return;
    const Qt::WindowFlags flags = m_widget->windowFlags() | Qt::WindowStaysOnTopHint;
    if (QWindow* handle = m_widget->windowHandle()) {
        // A window that exists keeps its native window: the flag goes to the window manager
        // as a state change, instead of Qt's hiding and re-creating the window.
        m_widget->overrideWindowFlags(flags);
        handle->setFlags(flags);
    } else {
        m_widget->setWindowFlags(flags);
    }
}

bool Form::noteFrame()
{
    if (!m_widget->isVisible() || m_widget->isMinimized())
        return false;
    const QSize frame = m_widget->frameGeometry().size() - size();
    if (frame == m_frame)
        return false;
    m_frame = frame;
    if (const QWindow* handle = m_widget->windowHandle(); handle && !frame.isEmpty())
        noteFrameMargins(handle->frameMargins());
    // A frame seen for the first time may push the window past the screen's edge.
    if (!m_widget->isMaximized() && !m_widget->isFullScreen()) {
        const QRect screen = m_widget->screen() ? m_widget->screen()->availableGeometry() : QRect();
        if (screen.isValid() && !screen.contains(m_widget->frameGeometry()))
            m_widget->move(wholeOnScreen(m_widget->frameGeometry(), screen).topLeft());
    }
    return true;
}

int Form::Left() const { return m_left.read(m_widget->pos().x(), TwipsPerPixelX()); }
int Form::Top() const { return m_top.read(m_widget->pos().y(), TwipsPerPixelY()); }
int Form::Width() const { return m_width.read(width() + m_frame.width(), TwipsPerPixelX()); }
int Form::Height() const { return m_height.read(height() + m_frame.height(), TwipsPerPixelY()); }

void Form::setLeft(int twips)
{
    const int px = toPixelsX(twips);
    m_left.written(twips, px); // before the move: its handlers already read the new value
    m_positionWritten = true;
    m_widget->move(px, m_widget->pos().y());
}

void Form::setTop(int twips)
{
    const int px = toPixelsY(twips);
    m_top.written(twips, px);
    m_positionWritten = true;
    m_widget->move(m_widget->pos().x(), px);
}

void Form::setWidth(int twips)
{
    if (twips < 0)
        raiseError(ErrInvalidPropertyValue);
    const int outer = toPixelsX(twips);
    m_width.written(twips, outer); // before the resize: Form_Resize already reads the new value
    m_widget->resize(std::max(outer - m_frame.width(), 0), height());
    Q_EMIT sizeWritten(twips, Height());
}

void Form::setHeight(int twips)
{
    if (twips < 0)
        raiseError(ErrInvalidPropertyValue);
    const int outer = toPixelsY(twips);
    m_height.written(twips, outer);
    m_heightWritten = true;
    m_widget->resize(width(), std::max(outer - m_frame.height(), 0));
    Q_EMIT sizeWritten(Width(), twips);
}

int Form::WindowState() const
{
    if (m_widget->isMinimized())
        return vbMinimized;
    if (m_widget->isMaximized())
        return vbMaximized;
    return vbNormal;
}

void Form::setWindowState(int state)
{
    // With no window manager nobody else fills the screen with a maximised window, or gives it
    // back its size afterwards: the window does both itself.
    QWidget& w = *m_widget;
    const bool unmanaged = !windowManagerRunning() && w.screen();
    switch (state) {
    case vbNormal:
        if (unmanaged && w.isMaximized()) {
            w.setWindowState(Qt::WindowNoState);
            w.setGeometry(m_normalGeometry);
        }
        w.setWindowState(Qt::WindowNoState);
        break;
    case vbMinimized: w.setWindowState(Qt::WindowMinimized); break;
    case vbMaximized:
        if (unmanaged && !w.isMaximized()) {
            m_normalGeometry = w.geometry();
            w.setGeometry(w.screen()->availableGeometry());
        }
        w.setWindowState(Qt::WindowMaximized);
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
        QObject::timerEvent(event);
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

void Form::shown()
{
    m_paintedSinceShow = false;
}

void Form::paint(QPaintEvent* event)
{
    if (!m_paintedSinceShow) {
        m_paintedSinceShow = true;
        logTiming(QStringLiteral("painted ") + objectName());
        Q_EMIT firstPainted();
    }
    endBatch();
    QPainter painter(m_widget);
    if (m_surface.isNull())
        painter.fillRect(event->rect(), toQColor(m_backColor));
    else
        painter.drawImage(event->rect(), m_surface, event->rect());
}

void Form::resized()
{
    if (m_menuBar)
        m_menuBar->setGeometry(0, 0, width(), menuBarHeight());
    ensureSurface();
    noteFrame();
    runHandler([this] { Form_Resize(); });
}

void Form::moved()
{
    // Width and Height are the outer size: a new frame is a new size, with its layout.
    if (noteFrame())
        runHandler([this] { Form_Resize(); });
}

void Form::followFrame()
{
    if (noteFrame())
        runHandler([this] { Form_Resize(); });
}

void Form::stateChanged()
{
    runHandler([this] { Form_Resize(); });
    // A maximised window may get another frame from the window manager.
    QTimer::singleShot(kFrameSettleMs, this, &Form::followFrame);
}

void Form::closeAsked()
{
    runHandler([this] { Unload(*this); });
}

QPointF Form::clientPoint(const QMouseEvent& mouse) const
{
    return fromSurface(mouse.position() - QPointF(clientOrigin()));
}

void Form::mousePressed(QMouseEvent* event)
{
    m_pressed = true;
    const QPointF at = clientPoint(*event);
    runHandler([&] { Form_MouseDown(classicButton(event->button()), classicShift(event->modifiers()), at.x(), at.y()); });
}

void Form::mouseMoved(QMouseEvent* event)
{
    const QPointF at = clientPoint(*event);
    runHandler([&] { Form_MouseMove(classicButtons(event->buttons()), classicShift(event->modifiers()), at.x(), at.y()); });
}

void Form::mouseReleased(QMouseEvent* event)
{
    const QPointF at = clientPoint(*event);
    runHandler([&] { Form_MouseUp(classicButton(event->button()), classicShift(event->modifiers()), at.x(), at.y()); });
    if (m_pressed && m_widget->rect().contains(event->position().toPoint()))
        runHandler([this] { Form_Click(); });
    m_pressed = false;
}

void Form::mouseDoubleClicked()
{
    // The second press of a double click raises DblClick alone; its release only MouseUp.
    m_pressed = false;
    runHandler([this] { Form_DblClick(); });
}

} // namespace platform
