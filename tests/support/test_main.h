#pragma once
// main() for tests that use the web engine: it must be prepared before the application object.

#include "platform/web_browser.h"

#include <QApplication>
#include <QTest>

#define GLIDEPATH_WEB_TEST_MAIN(TestClass)                                                       \
    int main(int argc, char* argv[])                                                             \
    {                                                                                            \
        platform::prepareWebEngine();                                                            \
        QApplication app(argc, argv);                                                            \
        QApplication::setQuitOnLastWindowClosed(false);                                          \
        TestClass test;                                                                          \
        return QTest::qExec(&test, argc, argv);                                                  \
    }
