#pragma once
// main() for the window tests: the web engine and the media framework prepared as the program
// prepares them (the engine must be, before the application object; the media framework then
// decodes MP3 as in the program), and an application that stays when its last window closes.

#include "platform/media_player.h"
#include "platform/web_browser.h"

#include <QApplication>
#include <QTest>

#define GLIDEPATH_TEST_MAIN(TestClass)                                                           \
    int main(int argc, char* argv[])                                                             \
    {                                                                                            \
        platform::prepareWebEngine();                                                            \
        platform::prepareMedia();                                                                \
        QApplication app(argc, argv);                                                            \
        QApplication::setQuitOnLastWindowClosed(false);                                          \
        TestClass test;                                                                          \
        return QTest::qExec(&test, argc, argv);                                                  \
    }
