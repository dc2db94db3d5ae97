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
// How long after a frame change the frame is read once more.
constexpr int kFrameSettleMs = 150;
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

Form::Form(const char* name, int clientWidth, int clientHeight, Menu menu)
    : m_widget(new FormWidget(*this)), m_canvas(*m_widget)
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
    const std::optional<QMargins> announced = announcedFrameMargins(m_widget->internalWinId());
    const QSize frame = announced ? QSize(announced->left() + announced->right(), announced->top() + announced->bottom())
                                  : m_widget->frameGeometry().size() - size();
    if (frame == m_frame)
        return false;
    m_frame = frame;
    if (announced)
        noteFrameMargins(*announced);
    else if (const QWindow* handle = m_widget->windowHandle(); handle && !frame.isEmpty())
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
    QPainter painter(m_widget);
    m_canvas.paint(painter, event->rect());
}

void Form::resized()
{
    if (m_menuBar)
        m_menuBar->setGeometry(0, 0, width(), menuBarHeight());
    m_canvas.resized();
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
