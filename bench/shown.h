#pragma once
// A bench measures real windows: a figure from one that never reached the screen, or never
// took the keyboard it is typed at, means nothing.

#include <QTest>
#include <QWidget>

#include <cstdio>
#include <cstdlib>

inline void require(bool reached, const QWidget& window, const char* what)
{
    if (!reached) {
        std::fprintf(stderr, "%s never %s\n", qPrintable(window.objectName()), what);
        std::exit(1);
    }
}

inline void waitUntilShown(QWidget& window)
{
    require(QTest::qWaitForWindowExposed(&window), window, "reached the screen");
}

// Keys a bench sends go to the active window's focus widget, as a person's do.
inline void waitUntilActive(QWidget& window)
{
    require(QTest::qWaitForWindowActive(&window), window, "took the keyboard");
}
