#include "screen_place.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QApplication>
#include <QGuiApplication>
#include <QHash>
#include <QScreen>
#include <QTimer>
#include <QWidget>

#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>

namespace platform {
namespace {

QMargins g_frame;
QHash<WId, QMargins> g_announced;

// Listens for the window manager's _NET_FRAME_EXTENTS on the program's windows.
class FrameWatcher : public QAbstractNativeEventFilter {
public:
    explicit FrameWatcher(xcb_connection_t* connection) : m_connection(connection)
    {
        const char name[] = "_NET_FRAME_EXTENTS";
        xcb_intern_atom_reply_t* reply =
            xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 0, sizeof name - 1, name), nullptr);
        if (reply) {
            m_atom = reply->atom;
            std::free(reply);
        }
    }

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr*) override
    {
        if (m_atom == XCB_ATOM_NONE || type != "xcb_generic_event_t")
            return false;
        const auto* event = static_cast<const xcb_generic_event_t*>(message);
        if ((event->response_type & ~0x80) == XCB_DESTROY_NOTIFY) {
            // A window made again after an unload is a new X window: the old one's frame goes.
            g_announced.remove(static_cast<const xcb_destroy_notify_event_t*>(message)->window);
            return false;
        }
        if ((event->response_type & ~0x80) == XCB_REPARENT_NOTIFY) {
            askPlaceAgain(static_cast<const xcb_reparent_notify_event_t*>(message)->window);
            return false;
        }
        if ((event->response_type & ~0x80) != XCB_PROPERTY_NOTIFY)
            return false;
        const auto* property = static_cast<const xcb_property_notify_event_t*>(message);
        if (property->atom != m_atom)
            return false;
        // Qt works the frame out from where the window manager's own windows stand, which may
        // not have moved yet: the extents announced are what the frame will be.
        g_announced[property->window] = extents(property->window);
        for (QWidget* top : QApplication::topLevelWidgets())
            if (top->internalWinId() == property->window)
                QCoreApplication::postEvent(top, new QEvent(frameChangedEventType()));
        return false;
    }

private:
    // A window taken into the window manager's frame is put where the program placed it once
    // more if the window system has it elsewhere: a compositor's X window manager (weston's) can
    // frame a window in its corner and leave it there, without a word, while Qt still believes
    // the place it asked for. It can do so a while after the window came, so it is looked at a
    // few times, each a single question to the X server.
    void askPlaceAgain(xcb_window_t window) const
    {
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (top->internalWinId() != window)
                continue;
            for (const int ms : {0, 100, 300, 1000})
                QTimer::singleShot(ms, top, [top, connection = m_connection] { keepPlace(*top, connection); });
        }
    }

    static void keepPlace(QWidget& top, xcb_connection_t* connection)
    {
        if (!top.isVisible() || top.isMaximized() || top.isFullScreen() || top.isMinimized())
            return;
        const auto window = xcb_window_t(top.internalWinId());
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
        xcb_translate_coordinates_reply_t* real =
            xcb_translate_coordinates_reply(connection, xcb_translate_coordinates(connection, window, root, 0, 0), nullptr);
        if (!real)
            return;
        const QPoint seen(real->dst_x, real->dst_y);
        std::free(real);
        if (seen == top.geometry().topLeft())
            return;
        const QPoint at = top.pos(); // as Qt asked: the frame's corner
        const uint32_t place[] = {uint32_t(at.x()), uint32_t(at.y())};
        xcb_configure_window(connection, window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, place);
        xcb_flush(connection);
    }

    // Left, right, top, bottom; all zero when the property was taken away.
    QMargins extents(xcb_window_t window) const
    {
        xcb_get_property_reply_t* reply = xcb_get_property_reply(
            m_connection, xcb_get_property(m_connection, 0, window, m_atom, XCB_ATOM_CARDINAL, 0, 4), nullptr);
        QMargins margins;
        if (reply && xcb_get_property_value_length(reply) == 4 * int(sizeof(uint32_t))) {
            const auto* e = static_cast<const uint32_t*>(xcb_get_property_value(reply));
            margins = QMargins(int(e[0]), int(e[2]), int(e[1]), int(e[3]));
        }
        std::free(reply);
        return margins;
    }

    xcb_connection_t* m_connection;
    xcb_atom_t m_atom = XCB_ATOM_NONE;
};

} // namespace

QMargins knownFrameMargins() { return g_frame; }

std::optional<QMargins> announcedFrameMargins(WId window)
{
    const auto found = g_announced.constFind(window);
    return found == g_announced.constEnd() ? std::nullopt : std::optional(*found);
}
void noteFrameMargins(const QMargins& margins) { g_frame = margins; }

QRect wholeOnScreen(const QRect& outer, const QRect& screen)
{
    QRect r = outer;
    if (r.right() > screen.right())
        r.moveRight(screen.right());
    if (r.bottom() > screen.bottom())
        r.moveBottom(screen.bottom());
    if (r.left() < screen.left())
        r.moveLeft(screen.left());
    if (r.top() < screen.top())
        r.moveTop(screen.top());
    return r;
}

void placeWholeOnScreen(QWidget& window, bool centre)
{
    const QScreen* screen = window.screen() ? window.screen() : QGuiApplication::primaryScreen();
    if (!screen)
        return;
    const QRect available = screen->availableGeometry();
    const QMargins frame = window.windowFlags() & Qt::FramelessWindowHint ? QMargins() : knownFrameMargins();
    QRect outer(window.pos(), window.size().grownBy(frame));
    if (centre)
        outer.moveCenter(available.center());
    window.move(wholeOnScreen(outer, available).topLeft());
}

void prepareWindowSystem(int argc, char* argv[])
{
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || qEnvironmentVariableIsEmpty("DISPLAY"))
        return;
    for (int i = 1; i < argc; ++i)
        if (qstrcmp(argv[i], "-platform") == 0 || qstrcmp(argv[i], "--platform") == 0)
            return;
    // Wayland stays the fallback, should the X server named not answer.
    qputenv("QT_QPA_PLATFORM", "xcb;wayland");
}

bool windowManagerRunning()
{
    auto* x11 = qApp ? qApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    if (!x11)
        return true; // other window systems always manage their windows
    xcb_connection_t* c = x11->connection();
    const char name[] = "_NET_SUPPORTING_WM_CHECK";
    xcb_intern_atom_reply_t* atom = xcb_intern_atom_reply(c, xcb_intern_atom(c, 1, sizeof name - 1, name), nullptr);
    if (!atom)
        return false;
    const xcb_atom_t check = atom->atom;
    std::free(atom);
    if (check == XCB_ATOM_NONE)
        return false;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
    xcb_get_property_reply_t* property =
        xcb_get_property_reply(c, xcb_get_property(c, 0, root, check, XCB_ATOM_WINDOW, 0, 1), nullptr);
    const bool running = property && xcb_get_property_value_length(property) > 0;
    std::free(property);
    return running;
}

QEvent::Type frameChangedEventType()
{
    static const auto type = QEvent::Type(QEvent::registerEventType());
    return type;
}

void watchFrameChanges()
{
    static bool watching = false;
    if (watching)
        return;
    watching = true;
    auto* x11 = qApp ? qApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    if (!x11)
        return; // another window system: Qt's own events say enough
    qApp->installNativeEventFilter(new FrameWatcher(x11->connection()));
}

} // namespace platform
