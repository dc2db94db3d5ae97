#pragma once
// The real glidepath executable, started from a copy of the program directory on the test
// screen (which has a window manager), and driven as a person drives it: with the X server's
// own keyboard and mouse through xdotool. What the program shows is read back from the screen
// (window titles and places, a screenshot), from the sound server (what plays) and from its log:
// every caption, every size given to a control, every text written to a text box, and the
// moments a window is made, painted, hidden or unloaded and a message box asks.

#include <QProcess>
#include <QRect>
#include <QStringList>
#include <QTemporaryDir>

class HttpServer;

class RealProgram {
public:
    RealProgram();
    ~RealProgram();

    // The copied program directory and files in it.
    QString path(const QString& name) const;
    void write(const QString& name, const QByteArray& bytes) const;
    QByteArray read(const QString& name) const;
    // Chooses the shipped theme, as the theme selector would have stored it.
    void useTheme(const QString& theme = QStringLiteral("Default"));
    // An environment variable of the program's and of the tools that look at it, set (or, with
    // no value, taken away).
    void setEnvironment(const QString& name, const QString& value = {});

    void start();
    bool running() const { return m_process.state() != QProcess::NotRunning; }
    int exitCode() const { return m_process.exitCode(); }
    // Ended by a signal (a crash or an abort), not by its own exit.
    bool crashed() const { return m_process.exitStatus() == QProcess::CrashExit; }
    bool waitForExit(int ms = 10000);
    // What the program wrote to its standard error so far.
    QByteArray errorOutput();

    // The messages of one of the program's log categories ("caption", "timing"), oldest first,
    // each as it was logged after the category's name ("MainFRM: Glidepath - [Inactive]").
    QStringList log(const QString& category);
    // Every caption the program wrote, oldest first, without the window's name.
    QStringList captions();
    bool waitForCaption(const QString& caption, int ms = 20000);
    // The moments of the timing log ("painted IntroFRM"), oldest first, without their time.
    QStringList moments();
    // Waits for a moment after the first `from` moments.
    bool waitForMoment(const QString& moment, qsizetype from = 0, int ms = 20000);
    // The last width or height ("width", "height") the program gave a control ("MainFRM.URLC")
    // in twips, -1 when none; the first line of the last text it wrote to a text box
    // ("CalculatorFRM.txtDisplay"), "<none>" when none.
    int lastSize(const QString& control, const QString& side);
    QString lastText(const QString& control);
    // The sound server's playing (not corked) streams of the program, by media name.
    QStringList playing() const;

    // The X window whose title is exactly title, or matches a pattern (0 when none comes).
    unsigned long waitForWindow(const QString& title, int ms = 20000);
    unsigned long waitForWindowLike(const QString& pattern, int ms = 20000, QSize atLeast = {});
    bool waitForGone(unsigned long window, int ms = 10000);
    // The window that has the keyboard; the one (wider than a menu's edge) that takes it from
    // window, 0 when none does.
    unsigned long activeWindow() const;
    unsigned long waitForActiveOtherThan(unsigned long window, int ms = 10000) const;
    // The window's outer rectangle (frame included) and its inner one, in screen pixels.
    QRect frame(unsigned long window) const;
    QRect inner(unsigned long window) const;
    QRect screen() const;
    // The title the window manager shows (the window's _NET_WM_NAME).
    QString title(unsigned long window) const;
    bool wholeOnScreen(unsigned long window) const { return screen().contains(frame(window)); }
    QImage screenShot() const;

    // The person's hands.
    void click(unsigned long window, QPoint inside, int button = 1); // a point of the inner area
    void clickScreen(QPoint at, int button = 1);
    void doubleClickScreen(QPoint at);
    void activate(unsigned long window);
    void key(const QString& keys); // xdotool key names: "Return", "ctrl+a"
    void type(const QString& text);
    void resize(unsigned long window, QSize inner);

    // Started, the intro clicked away once it is painted, and the main window come (0 when it
    // does not). Settled, its load sequence is over too: "[Done Loading Document]", then
    // "Going to:" once more. openOn first chooses the Default theme and a loopback home page.
    unsigned long openMainWindow(bool settled = true);
    unsigned long openOn(const HttpServer& server, const QString& page = QStringLiteral("/titled"));
    // A menu entry chosen with the keyboard: File opened with a click, then the keys (Left from
    // File wraps to the last menu, with its first entry highlighted).
    void chooseMenu(unsigned long main, const QStringList& keys);
    // A file dialog that waits for a person answered: the name typed, then Enter. Its window.
    unsigned long answerFileDialog(const QString& path);

private:
    QString run(const QString& tool, const QStringList& args) const;

    QTemporaryDir m_dir;
    QProcess m_process;
    QByteArray m_log;
};
