// Glidepath starts by loading its intro screen; everything after that is the windows' handlers.

#include "platform/runtime.h"
#include "platform/timing.h"
#include "platform/web_browser.h"
#include "startup/intro.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    platform::logTiming(QStringLiteral("main"));
    platform::prepareWebEngine();
    QApplication app(argc, argv);
    platform::logTiming(QStringLiteral("application made"));
    QApplication::setApplicationName(QStringLiteral("Glidepath"));
    // The program ends only through the main window's End, never by running out of windows.
    QApplication::setQuitOnLastWindowClosed(false);
    platform::Runtime runtime;
    platform::useWebProfile(QStringLiteral("Glidepath"));
    // The start-up window is shown once its load handler has finished.
    platform::runHandler([] { platform::form<IntroFRM>().Show(); });
    return app.exec();
}
