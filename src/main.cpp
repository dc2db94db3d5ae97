// Glidepath starts by loading its intro screen; everything after that is the windows' handlers.

#include "platform/media_player.h"
#include "platform/runtime.h"
#include "platform/screen_place.h"
#include "platform/timing.h"
#include "platform/web_browser.h"
#include "startup/intro.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    platform::logTiming(QStringLiteral("main"));
    platform::prepareWebEngine();
    platform::prepareMedia();
    platform::prepareWindowSystem(argc, argv);
    QApplication app(argc, argv);
    platform::logTiming(QStringLiteral("application made"));
    QApplication::setApplicationName(QStringLiteral("Glidepath"));
    // The program ends only through the main window's End, never by running out of windows.
    QApplication::setQuitOnLastWindowClosed(false);
    platform::Runtime runtime;
    platform::useWebProfile(QStringLiteral("Glidepath"));
    // The start-up window is shown once its load handler has finished.
    platform::runHandler([&app] {
        IntroFRM& intro = platform::form<IntroFRM>();
        intro.Show();
        // While the intro waits for its click, after it is on the screen and its music has
        // started (queued after the music's own start), the web engine starts too.
        QObject::connect(&intro, &platform::Form::firstPainted, &app, platform::warmUpWebEngine,
                         Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
    });
    return app.exec();
}
