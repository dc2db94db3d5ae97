#pragma once
// Where top-level windows appear: whole on the screen, frame and title bar included, and
// centred where nobody gave them a place. Also tells the windows when the window manager
// changes the frame it draws around them (on mapping, on maximising), which Qt reports with
// no event of its own.

#include <QEvent>
#include <QMargins>
#include <QRect>
#include <qwindowdefs.h>

#include <optional>

class QWidget;

namespace platform {

// The frame the window manager draws around a window: the last one seen on any window (none
// before one is seen, or where no window manager runs).
QMargins knownFrameMargins();
void noteFrameMargins(const QMargins& margins);
// The frame the window manager last announced for this window (on X11), if it has.
std::optional<QMargins> announcedFrameMargins(WId window);

// The outer rectangle moved (never resized) so that it lies on the available screen area; a
// rectangle larger than the screen keeps its top-left corner on it.
QRect wholeOnScreen(const QRect& outer, const QRect& screen);

// Places a window that is about to be shown for the first time: centred on the screen when
// centre is true, and in any case whole on it, the expected frame counted.
void placeWholeOnScreen(QWidget& window, bool centre);

// Before the application is made: the windows go to an X server where there is one, also in a
// Wayland session that runs one beside it (XWayland), since only there may a program place its
// windows, keep them on top and move them as the windows do; unless the person chose a window
// system (QT_QPA_PLATFORM or -platform). With Wayland alone, Wayland it is.
void prepareWindowSystem(int argc, char* argv[]);

// Whether a window manager looks after the screen (on X11: it has claimed the root window);
// without one, nobody maximises or frames a window but the program itself.
bool windowManagerRunning();

// From the first call on, a top-level widget receives an event of this type after the window
// manager has changed the frame around it.
QEvent::Type frameChangedEventType();
void watchFrameChanges();

} // namespace platform
