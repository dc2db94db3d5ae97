#include "control.h"

#include "classic_font.h"
#include "classic_input.h"
#include "errors.h"
#include "runtime.h"

#include <QKeyEvent>
#include <QLoggingCategory>
#include <QMouseEvent>

namespace platform {

// Every size the program gives a control, for following a window's layout from outside
// (QT_LOGGING_RULES="glidepath.geometry=true"): "Window.Control width twips".
Q_LOGGING_CATEGORY(lcGeometry, "glidepath.geometry", QtWarningMsg)

Control::Control(Container& parent, const char* name, QWidget* widget, TwipsRect rect)
    : m_widget(widget), m_origin(parent.clientOrigin())
{
    QWidget* container = parent.containerWidget();
    widget->setParent(container);
    widget->setObjectName(QString::fromLatin1(name));
    // A click on a control belongs to the control, never to the window behind it.
    widget->setAttribute(Qt::WA_NoMousePropagation);
    Move(rect.left, rect.top, rect.width, rect.height);
    watch(widget);
    widget->show();
}

Control::~Control() = default;

void Control::setIndex(int index)
{
    m_index = index;
    m_widget->setProperty("index", index);
}

void Control::watch(QWidget* inner)
{
    inner->installEventFilter(this);
}

int Control::Left() const { return m_left.read(m_widget->x() - m_origin.x(), TwipsPerPixelX()); }
int Control::Top() const { return m_top.read(m_widget->y() - m_origin.y(), TwipsPerPixelY()); }
int Control::Width() const { return m_width.read(m_widget->width(), TwipsPerPixelX()); }
int Control::Height() const { return m_height.read(m_widget->height(), TwipsPerPixelY()); }

void Control::setLeft(int twips)
{
    const int px = toPixelsX(twips);
    m_left.written(twips, px);
    m_widget->move(px + m_origin.x(), m_widget->y());
}

void Control::setTop(int twips)
{
    const int px = toPixelsY(twips);
    m_top.written(twips, px);
    m_widget->move(m_widget->x(), px + m_origin.y());
}

void Control::setWidth(int twips)
{
    if (twips < 0)
        raiseError(ErrInvalidPropertyValue);
    const int px = toPixelsX(twips);
    m_width.written(twips, px);
    m_widget->resize(px, m_widget->height());
    qCInfo(lcGeometry).noquote() << m_widget->window()->objectName() + QLatin1Char('.') + Name() << "width" << twips;
}

void Control::setHeight(int twips)
{
    if (twips < 0)
        raiseError(ErrInvalidPropertyValue);
    const int px = toPixelsY(twips);
    m_height.written(twips, px);
    m_widget->resize(m_widget->width(), px);
    qCInfo(lcGeometry).noquote() << m_widget->window()->objectName() + QLatin1Char('.') + Name() << "height" << twips;
}

void Control::Move(int left, int top, int width, int height)
{
    setLeft(left);
    setTop(top);
    setWidth(width);
    setHeight(height);
}

void Control::setForeColor(OleColor color)
{
    m_foreColor = color;
    m_ownForeColor = true;
    applyColors();
}

void Control::setBackColor(OleColor color)
{
    m_backColor = color;
    m_ownBackColor = true;
    applyColors();
}

void Control::applyColors()
{
    QPalette palette = m_widget->palette();
    if (m_ownForeColor) {
        const QColor fore = toQColor(m_foreColor);
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            palette.setColor(role, fore);
    }
    if (m_ownBackColor) {
        const QColor back = toQColor(m_backColor);
        for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button})
            palette.setColor(role, back);
        m_widget->setAutoFillBackground(true);
    }
    m_widget->setPalette(palette);
}

void Control::setBackStyle(int style)
{
    m_ownBackColor = style != 0;
    m_widget->setAutoFillBackground(style != 0);
    applyColors();
}

void Control::setFont(const QString& name, double points, bool bold)
{
    m_widget->setFont(classicFont(name, points, bold));
}

void Control::ZOrder(int position)
{
    if (position == 0)
        m_widget->raise();
    else
        m_widget->lower();
}

bool Control::anotherTabStop() const
{
    for (QWidget* w = m_widget->nextInFocusChain(); w && w != m_widget; w = w->nextInFocusChain())
        if (w->window() == m_widget->window() && !m_widget->isAncestorOf(w) && (w->focusPolicy() & Qt::TabFocus) &&
            w->isVisibleTo(w->window()) && w->isEnabled())
            return true;
    return false;
}

void Control::setTabStop(bool stop)
{
    if (!stop && m_widget->focusPolicy() != Qt::NoFocus)
        m_tabStopFocus = m_widget->focusPolicy();
    m_widget->setFocusPolicy(stop ? m_tabStopFocus : Qt::NoFocus);
}

void SetTabOrder(const std::vector<Control*>& controls)
{
    for (std::size_t i = 1; i < controls.size(); ++i)
        QWidget::setTabOrder(controls[i - 1]->widget(), controls[i]->widget());
}

void Control::raiseEvent(const Handler& handler)
{
    if (handler)
        runHandler(handler);
}

bool Control::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        m_pressed = true;
        if (m_mouseDown)
            runHandler([&] {
                m_mouseDown(classicButton(mouse->button()), classicShift(mouse->modifiers()),
                            mouse->position().x() * TwipsPerPixelX(), mouse->position().y() * TwipsPerPixelY());
            });
        break;
    }
    case QEvent::MouseButtonRelease: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (m_mouseUp)
            runHandler([&] {
                m_mouseUp(classicButton(mouse->button()), classicShift(mouse->modifiers()),
                          mouse->position().x() * TwipsPerPixelX(), mouse->position().y() * TwipsPerPixelY());
            });
        const bool inside = m_widget && m_widget->rect().contains(mouse->position().toPoint());
        if (m_synthesizedClick && m_pressed && inside)
            raiseClick();
        m_pressed = false;
        break;
    }
    case QEvent::MouseButtonDblClick:
        raiseEvent(m_dblClick);
        break;
    case QEvent::MouseMove:
        if (m_mouseMove) {
            const auto* mouse = static_cast<QMouseEvent*>(event);
            runHandler([&] {
                m_mouseMove(classicButtons(mouse->buttons()), classicShift(mouse->modifiers()),
                            mouse->position().x() * TwipsPerPixelX(), mouse->position().y() * TwipsPerPixelY());
            });
        }
        break;
    case QEvent::KeyPress: {
        if (m_keyTarget && watched != m_keyTarget)
            break;
        // Tab moves the keyboard on to the next control in the tab order; it is a character
        // for KeyPress only where no other control can take the keyboard.
        const auto* pressed = static_cast<QKeyEvent*>(event);
        if ((pressed->key() == Qt::Key_Tab || pressed->key() == Qt::Key_Backtab) && anotherTabStop())
            break;
        const int code = keyAscii(*pressed);
        if (code < 0 || !m_keyPress)
            break;
        std::int16_t ascii = static_cast<std::int16_t>(code);
        runHandler([&] { m_keyPress(ascii); });
        if (ascii == 0)
            return true; // the handler swallowed the key
        break;
    }
    default:
        break;
    }
    return false;
}

} // namespace platform
