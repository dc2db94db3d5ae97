// The least a program can do to show a page with Qt WebEngine: one view, one load. Prints the
// monotonic time in milliseconds when the page has loaded, then stays open until killed.
// Usage: bareview <url>

#include <QApplication>
#include <QUrl>
#include <QWebEngineView>

#include <chrono>
#include <cstdio>
#include <unistd.h>

int main(int argc, char* argv[])
{
    if (geteuid() == 0)
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1"); // Chromium cannot sandbox as root
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    if (argc != 2)
        return 2;
    QWebEngineView view;
    view.resize(665, 473);
    QObject::connect(&view, &QWebEngineView::loadFinished, [](bool) {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        std::printf("loaded %.1f\n", std::chrono::duration<double, std::milli>(now).count());
        std::fflush(stdout);
    });
    view.setUrl(QUrl::fromUserInput(QString::fromLocal8Bit(argv[1])));
    view.show();
    return app.exec();
}
