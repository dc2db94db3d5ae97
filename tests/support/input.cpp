#include "input.h"

#include <QApplication>
#include <QTest>
#include <QWindow>

namespace input {
namespace {

QWindow* windowOf(QWidget* widget)
{
    QWidget* top = widget->window();
    if (!top->isVisible())
        top->show();
    if (!QTest::qWaitForWindowExposed(top))
        qWarning("input: the window %s was not exposed", qPrintable(top->objectName()));
    return top->windowHandle();
}

// A point of a widget in its top-level window's coordinates.
QPoint inWindow(QWidget* widget, QPoint at)
{
    if (at == QPoint(-1, -1))
        at = widget->rect().center();
    return widget->mapTo(widget->window(), at);
}

QPoint clientToWindow(platform::Form& window, QPoint at)
{
    return at + window.clientOrigin();
}

} // namespace

bool focus(platform::Control& control)
{
    QWidget* widget = control.widget();
    QWindow* window = windowOf(widget);
    QWidget* top = widget->window();
    top->activateWindow();
    if (!QTest::qWaitForWindowActive(top))
        qWarning("input: the window %s did not become active", qPrintable(top->objectName()));
    widget->setFocus(Qt::MouseFocusReason);
    // The focus lands on the control or on the widget it names as its proxy.
    const bool ok = QTest::qWaitFor([&] {
        QWidget* f = QApplication::focusWidget();
        return f && (f == widget || widget->isAncestorOf(f) || f == widget->focusProxy());
    }, 2000);
    if (!ok)
        qWarning("input: %s did not take the keyboard focus", qPrintable(control.Name()));
    (void)window;
    return ok;
}

void typeInto(QWidget& window, const QString& text)
{
    QWindow* handle = windowOf(&window);
    for (const char c : text.toLatin1())
        QTest::keyClick(handle, c);
}

void keyInto(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(windowOf(&window), key, modifiers);
}

void type(platform::Control& control, const QString& text)
{
    focus(control);
    typeInto(*control.widget(), text);
}

void key(platform::Control& control, Qt::Key k, Qt::KeyboardModifiers modifiers)
{
    focus(control);
    keyInto(*control.widget(), k, modifiers);
}

void click(platform::Control& control, Qt::MouseButton button, QPoint at)
{
    QWidget* widget = control.widget();
    QWindow* window = windowOf(widget);
    QTest::mouseClick(window, button, Qt::NoModifier, inWindow(widget, at));
}

void doubleClick(platform::Control& control, QPoint at)
{
    QWidget* widget = control.widget();
    QWindow* window = windowOf(widget);
    QTest::mouseDClick(window, Qt::LeftButton, Qt::NoModifier, inWindow(widget, at));
}

void press(platform::Form& form, QPoint at, Qt::MouseButton button)
{
    QTest::mousePress(windowOf(form.widget()), button, Qt::NoModifier, clientToWindow(form, at));
}

void move(platform::Form& form, QPoint at)
{
    // The move carries the buttons still held from press(), as a real one does.
    QTest::mouseMove(windowOf(form.widget()), clientToWindow(form, at));
}

void release(platform::Form& form, QPoint at, Qt::MouseButton button)
{
    QTest::mouseRelease(windowOf(form.widget()), button, Qt::NoModifier, clientToWindow(form, at));
}

void click(platform::Form& form, QPoint at, Qt::MouseButton button)
{
    QTest::mouseClick(windowOf(form.widget()), button, Qt::NoModifier, clientToWindow(form, at));
}

void doubleClick(platform::Form& form, QPoint at)
{
    QTest::mouseDClick(windowOf(form.widget()), Qt::LeftButton, Qt::NoModifier, clientToWindow(form, at));
}

} // namespace input
