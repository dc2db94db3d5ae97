#pragma once
// The hosted web browser control over Qt WebEngine, with the interface the windows use:
// Navigate / GoBack / GoForward / Refresh / Stop, LocationURL / LocationName, and the
// classic events StatusTextChange, ProgressChange, DownloadBegin, DownloadComplete,
// NavigateComplete2, DocumentComplete and NewWindow2, raised in the classic order (the
// mapping from Qt's signals is written down once, in web_browser.cpp).
//
// What a hosted browser does on its own, this control does too: a page's pop-up opens in a
// plain browser window, a download asks where to save and shows its progress, an HTTP log-in
// asks for a user name and password, a certificate error asks whether to go on.

#include "control.h"

#include <QUrl>

#include <functional>
#include <memory>

class QPrinter;
class QWebEngineView;
class QWebEngineProfile;

namespace platform {

class FindBar;

// ExecWB's commands and options, with the classic values.
enum ExecWBCommand : int {
    OLECMDID_PRINT = 6, OLECMDID_PAGESETUP = 8, OLECMDID_PROPERTIES = 10, OLECMDID_COPY = 12,
    OLECMDID_SELECTALL = 17, OLECMDID_ZOOM = 19
};
enum ExecWBOption : int { OLECMDEXECOPT_DODEFAULT = 0, OLECMDEXECOPT_PROMPTUSER = 1, OLECMDEXECOPT_DONTPROMPTUSER = 2 };

class WebBrowser : public Control {
    Q_OBJECT
public:
    WebBrowser(Container& parent, const char* name, TwipsRect rect);
    ~WebBrowser() override;

    // The text as the user typed it; what it means is decided here, as a desktop browser
    // does: "example.org" opens http://example.org, a local path opens the file, an empty
    // text opens a blank page.
    void Navigate(const QString& address);
    // With no page to go back (or forward) to, these raise an error.
    void GoBack();
    void GoForward();
    void Refresh();
    void Stop();
    // A page command. print: the print dialog (none with "do not prompt"), then the page as
    // the engine lays it out for print, to the chosen printer or PDF file. page set-up: the
    // page set-up dialog, whose settings the next print uses. properties: the page properties
    // window. copy and select all: the engine's own edit actions; copy with nothing selected
    // is refused with the component's error. zoom: in is the level 0 to 4, 2 being 100%.
    void ExecWB(int command, int option, const QVariant& in = {}, QVariant* out = nullptr);
    // The find bar that Ctrl+F in the pane opens.
    FindBar& findBar();
    QString LocationURL() const;
    // The page's title; empty for a page without one, never its address.
    QString LocationName() const;

    QWebEngineView* view() const;

    // What a typed text means.
    static QUrl interpret(const QString& typed);

    void onStatusTextChange(std::function<void(const QString&)> h) { m_statusTextChange = std::move(h); }
    void onProgressChange(std::function<void(qint32 progress, qint32 progressMax)> h) { m_progressChange = std::move(h); }
    void onDownloadBegin(Handler h) { m_downloadBegin = std::move(h); }
    void onDownloadComplete(Handler h) { m_downloadComplete = std::move(h); }
    void onNavigateComplete2(std::function<void(const QString& url)> h) { m_navigateComplete2 = std::move(h); }
    void onDocumentComplete(std::function<void(const QString& url)> h) { m_documentComplete = std::move(h); }
    // Set cancel to true to refuse the page its new window.
    void onNewWindow2(std::function<void(bool& cancel)> h) { m_newWindow2 = std::move(h); }

    // Raised for a new window; false when the handler cancelled it.
    bool raiseNewWindow2();

Q_SIGNALS:
    // A print has gone to its printer or file (false: it failed).
    void printed(bool ok);

private:
    class Page;
    friend void warmUpWebEngine();
    void handleLoadStarted();
    void handleLoadProgress(int percent);
    void handleUrlChanged(const QUrl& url);
    void handleLoadFinished(bool ok);
    void raiseStatus(const QString& text);
    void raiseProgress(qint32 progress, qint32 progressMax);
    void raiseNavigateComplete();

    void updateLocation();

    bool eventFilter(QObject* watched, QEvent* event) override;
    void print(bool prompt);
    void editAction(int action); // a QWebEnginePage::WebAction

    std::unique_ptr<QPrinter> m_printer; // kept, so that page set-up and the last print carry over
    FindBar* m_findBar = nullptr;
    QString m_locationUrl;  // kept up to date from the engine's signals: read many times a second
    QString m_locationName;
    bool m_loading = false;
    bool m_navigateCompleteRaised = false;

    std::function<void(const QString&)> m_statusTextChange;
    std::function<void(qint32, qint32)> m_progressChange;
    Handler m_downloadBegin, m_downloadComplete;
    std::function<void(const QString&)> m_navigateComplete2, m_documentComplete;
    std::function<void(bool&)> m_newWindow2;
};

// The web engine's sandbox stays on for a normal user; a process running as root (where
// Chromium cannot sandbox) turns it off and says so once. Call before the application object
// is made.
void prepareWebEngine();
// The profile browser controls use: by default one that keeps nothing on disk; the program
// names its own, persistent one. It is made when the first browser control is, so the web
// engine starts no sooner than the first window that needs it.
void useWebProfile(const QString& storageName);
// Starts the web engine and one page ahead of the first browser control, which then takes that
// page over: the program calls it while its first window waits for the user, so that the main
// window's page loads without waiting for the engine to start.
void warmUpWebEngine();

} // namespace platform
