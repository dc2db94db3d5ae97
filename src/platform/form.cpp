#include "form.h"

#include "classic_input.h"
#include "errors.h"
#include "graphics.h"
#include "timing.h"
#include "runtime.h"
#include "screen_place.h"

#include <QCloseEvent>
#include <QLoggingCategory>
#include <QMenuBar>
#include <QPainter>
#include <QScreen>
#include <QTimer>
#include <QWindow>

namespace platform {
namespace {
// How long after a frame change the frame is read once more.
constexpr int kFrameSettleMs = 150;
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
    QPainter painter(this);
    m_canvas.paint(painter, event->rect());
}

void Form::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (m_menuBar)
        m_menuBar->setGeometry(0, 0, width(), menuBarHeight());
    m_canvas.resized();
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
