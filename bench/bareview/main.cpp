// The least a program can do to show a page with Qt WebEngine: one view, one load. Prints the
// monotonic time in milliseconds when the page has loaded, then stays open until killed.
// Given an MP3 and a wave file too, it also plays each once, the way a plain Qt program would
// (a media player with an audio output, a sound effect): the baseline for a program that needs
// those media pieces.
// Usage: bareview <url> [<mp3> <wav>]

#include <QApplication>
#include <QAudioOutput>
#include <QMediaPlayer>
#include <QSoundEffect>
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
    if (argc != 2 && argc != 4)
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

    QMediaPlayer player;
    QAudioOutput output;
    QSoundEffect sound;
    if (argc == 4) {
        player.setAudioOutput(&output);
        player.setSource(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[2])));
        player.play();
        sound.setSource(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[3])));
        sound.play();
    }
    return app.exec();
}
