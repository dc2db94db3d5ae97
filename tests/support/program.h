#pragma once
// The one program the in-process window tests run: a program directory with a chosen theme,
// home page and font colour code, as a start of the program leaves it, and a record of what the
// program shows and plays: the main window's captions, the status pop-up's texts, every sound
// asked for with the windows on the screen at that moment, and every question put to a person.

#include "support/test_runtime.h"

#include <QStringList>
#include <QTemporaryDir>

#include <functional>

class MainFRM;
namespace platform {
class Form;
class WebBrowser;
}

// The themes the program ships, in the source tree.
extern const QString kThemes;
extern const QString kDone; // the main window's caption once a page has loaded

class Program : public TestRuntime {
public:
    struct Setup {
        QString theme = kThemes + QStringLiteral("/Default");
        QByteArray home = "about:blank\r\n";
        QByteArray fontColour = {}; // ForeC.INI's bytes; null: no file
    };
    Program();
    explicit Program(const Setup& setup);

    // The window touched as its menu entry touches it (its load handler runs), then shown;
    // null, with a warning, when its load ended the program or it never reached the screen.
    template <class F>
    F* open()
    {
        return static_cast<F*>(opened([]() -> platform::Form* { return &platform::form<F>(); }));
    }
    // The main window on the screen with its home page loaded; null when it never got there.
    MainFRM* main();
    // Chooses a menu entry of the main window by its name ("AboutMNU"), as a click on it does.
    void choose(const QString& entry);
    bool waitForCaption(const QString& caption, qsizetype from = 0);

    // Every sound asked for and every question put to a person ("open file", TestDialogs), in
    // order. A sound of the theme is named by its file ("Click.WAV"), one of the program's own
    // by its path there ("Art/OpenWin.WAV"), any other by its whole path; it is followed by the
    // windows named in watch, as "Click.WAV +IdleFRM -MainFRM": shown or not when it was asked for.
    QStringList log;
    QStringList watch;
    QStringList captions; // every caption the main window was given
    QStringList status;   // every text the status pop-up was given
    QList<bool> statusShown; // and whether it was on the screen then
    QString theme;

private:
    platform::Form* opened(const std::function<platform::Form*()>& touch);
    MainFRM* m_main = nullptr;
};

// A copy of the Default theme without one of its files, in dir.
QString themeWithout(const QTemporaryDir& dir, const QString& missing);
// What a script run in the page gives back.
QVariant evaluate(platform::WebBrowser& browser, const QString& script);
