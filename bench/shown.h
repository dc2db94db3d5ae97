#pragma once
// A bench measures real windows: a figure from one that never reached the screen, or never
// took the keyboard it is typed at, means nothing.

#include <QTest>
#include <QWidget>

#include <cstdio>
#include <cstdlib>

inline void waitUntilShown(QWidget& window)
{
    if (!QTest::qWaitForWindowExposed(&window)) {
        std::fprintf(stderr, "%s never reached the screen\n", qPrintable(window.objectName()));
        std::exit(1);
    }
}

// Keys a bench sends go to the active window's focus widget, as a person's do.
inline void waitUntilActive(QWidget& window)
{
    if (!QTest::qWaitForWindowActive(&window)) {
        std::fprintf(stderr, "%s never took the keyboard\n", qPrintable(window.objectName()));
        std::exit(1);
    }
}
