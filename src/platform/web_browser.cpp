#include "web_browser.h"

#include "common_dialog.h"
#include "errors.h"
#include "dialogs.h"
#include "find_bar.h"
#include "page_properties.h"
#include "paths.h"
#include "runtime.h"
#include "screen_place.h"

#include <QAuthenticator>
#include <QKeyEvent>
#include <QPrinter>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QProgressBar>
#include <QScreen>
#include <QVBoxLayout>
#include <QLabel>
#include <QWebEngineCertificateError>
#include <QWebEngineDownloadRequest>
#include <QWebEngineHistory>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <QWebEngineProfile>
#include <QWebEngineView>

#include <cstdio>
#include <unistd.h>

// How Qt's signals become the classic events, in the order a classic hosted browser raises
// them for one navigation:
//
//   loadStarted        -> DownloadBegin, StatusTextChange("Opening page ..."), ProgressChange(0, 10000)
//   loadProgress(p)    -> ProgressChange(p * 100, 10000)
//   urlChanged         -> NavigateComplete2(url)   (the navigation has committed; raised once a load,
//                                                  and at the latest when the load finishes)
//   linkHovered(text)  -> StatusTextChange(text)
//   loadFinished       -> ProgressChange(10000, 10000), StatusTextChange("Done"),
//                         ProgressChange(-1, 0)   (the end-of-load report),
//                         DownloadComplete, DocumentComplete(url)   (always last)
//   createWindow       -> NewWindow2(cancel)
//
// Progress runs from 0 to 10000 as in the classic component; a load that fails still ends with
// DocumentComplete, for the error page the engine shows.

namespace platform {
namespace {

constexpr qint32 kProgressMax = 10000;
constexpr int kMethodFailed = -2147467259; // E_FAIL, as the classic component reports it

QWebEngineProfile* g_profile = nullptr;
QString g_profileName; // empty: off the record

// The engine's own window for a page's pop-up.
class PopupWindow : public QWidget {
public:
    explicit PopupWindow(QWebEngineProfile* profile)
    {
        setAttribute(Qt::WA_DeleteOnClose);
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        m_view = new QWebEngineView(this);
        m_view->setPage(new QWebEnginePage(profile, m_view));
        layout->addWidget(m_view);
        resize(800, 600);
        connect(m_view, &QWebEngineView::titleChanged, this, &QWidget::setWindowTitle);
        connect(m_view->page(), &QWebEnginePage::windowCloseRequested, this, &QWidget::close);
        connect(m_view->page(), &QWebEnginePage::geometryChangeRequested, this, [this](const QRect& r) {
            if (!r.isValid())
                return;
            // The page asks for a place for its content; the window, title bar included,
            // stays whole on the screen so that it can still be dragged.
            const QMargins frame = knownFrameMargins();
            const QRect screen = this->screen()->availableGeometry();
            const QRect outer = wholeOnScreen(r.marginsAdded(frame), screen);
            setGeometry(outer.marginsRemoved(frame));
        });
    }
    QWebEnginePage* page() const { return m_view->page(); }

private:
    QWebEngineView* m_view;
};

// A download's progress, in a small window of its own.
class DownloadWindow : public QWidget {
public:
    explicit DownloadWindow(QWebEngineDownloadRequest* download)
    {
        setAttribute(Qt::WA_DeleteOnClose);
        setWindowTitle(QStringLiteral("Download"));
        auto* layout = new QVBoxLayout(this);
        auto* label = new QLabel(QDir::toNativeSeparators(download->downloadDirectory() + QLatin1Char('/') +
                                                          download->downloadFileName()), this);
        auto* bar = new QProgressBar(this);
        layout->addWidget(label);
        layout->addWidget(bar);
        connect(download, &QWebEngineDownloadRequest::receivedBytesChanged, this, [download, bar] {
            const qint64 total = download->totalBytes();
            bar->setRange(0, total > 0 ? 100 : 0);
            if (total > 0)
                bar->setValue(int(download->receivedBytes() * 100 / total));
        });
        connect(download, &QWebEngineDownloadRequest::isFinishedChanged, this, [this, download, label, bar] {
            bar->setRange(0, 100);
            bar->setValue(100);
            label->setText(download->state() == QWebEngineDownloadRequest::DownloadCompleted
                               ? QStringLiteral("Done: ") + label->text()
                               : QStringLiteral("Failed: ") + label->text());
        });
        resize(420, 90);
    }
};

void handleDownload(QWebEngineDownloadRequest* download)
{
    const QString chosen = Runtime::current().dialogs().file(
        {true, QStringLiteral("Save As"), QString(), download->downloadDirectory(), download->downloadFileName()});
    if (chosen.isEmpty()) {
        download->cancel();
        return;
    }
    const QFileInfo target(chosen);
    download->setDownloadDirectory(target.absolutePath());
    download->setDownloadFileName(target.fileName());
    download->accept();
    auto* window = new DownloadWindow(download);
    placeWholeOnScreen(*window, true);
    window->show();
}

QWebEngineProfile* sharedProfile()
{
    if (!g_profile) {
        g_profile = g_profileName.isEmpty() ? new QWebEngineProfile(qApp) : new QWebEngineProfile(g_profileName, qApp);
        QObject::connect(g_profile, &QWebEngineProfile::downloadRequested, g_profile, handleDownload);
    }
    return g_profile;
}

} // namespace

// The page: new windows, log-ins and certificate errors as a hosted browser handles them.
class WebBrowser::Page : public QWebEnginePage {
public:
    Page(WebBrowser* owner, QObject* parent) : QWebEnginePage(sharedProfile(), parent), m_owner(owner)
    {
        connect(this, &QWebEnginePage::authenticationRequired, this, &Page::handleLogin);
        connect(this, &QWebEnginePage::certificateError, this, &Page::handleCertificate);
    }

    void setOwner(WebBrowser* owner) { m_owner = owner; }

    // The page warmUpWebEngine made, waiting for the first browser control to take it.
    static inline QPointer<Page> spare;

protected:
    QWebEnginePage* createWindow(WebWindowType) override
    {
        if (!m_owner || !m_owner->raiseNewWindow2())
            return nullptr;
        auto* window = new PopupWindow(sharedProfile());
        placeWholeOnScreen(*window, true);
        window->show();
        return window->page();
    }

private:
    void handleLogin(const QUrl& url, QAuthenticator* authenticator)
    {
        QString user, password;
        if (Runtime::current().dialogs().login(url.host() + QStringLiteral(" - ") + authenticator->realm(), user, password)) {
            authenticator->setUser(user);
            authenticator->setPassword(password);
        } else {
            *authenticator = QAuthenticator(); // refused: the server's own page is shown
        }
    }

    void handleCertificate(const QWebEngineCertificateError& error)
    {
        QWebEngineCertificateError e = error;
        if (!e.isOverridable()) {
            e.rejectCertificate();
            return;
        }
        e.defer();
        const int answer = MsgBox(QStringLiteral("There is a problem with this site's security certificate:\n\n%1\n\n"
                                                 "Do you want to go on to %2?")
                                      .arg(e.description(), e.url().host()),
                                  vbYesNo | vbExclamation | vbDefaultButton2, QStringLiteral("Security Alert"));
        if (answer == vbYes)
            e.acceptCertificate();
        else
            e.rejectCertificate();
    }

    WebBrowser* m_owner;
};

void prepareWebEngine()
{
    if (geteuid() == 0) {
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
        std::fprintf(stderr, "glidepath: running as root, so the web engine runs without its sandbox\n");
    }
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
}

WebBrowser::WebBrowser(Container& parent, const char* name, TwipsRect rect)
    : Control(parent, name, new QWebEngineView, rect)
{
    QWebEngineView* v = view();
    Page* page = Page::spare;
    Page::spare = nullptr;
    if (page) {
        page->setParent(v);
        page->setOwner(this);
    } else {
        page = new Page(this, v);
    }
    v->setPage(page);
    // Connected first, so that the events below read the new address and title.
    connect(v, &QWebEngineView::urlChanged, this, &WebBrowser::updateLocation);
    connect(v, &QWebEngineView::titleChanged, this, &WebBrowser::updateLocation);
    connect(v, &QWebEngineView::loadStarted, this, &WebBrowser::handleLoadStarted);
    connect(v, &QWebEngineView::loadProgress, this, &WebBrowser::handleLoadProgress);
    connect(v, &QWebEngineView::urlChanged, this, &WebBrowser::handleUrlChanged);
    connect(v, &QWebEngineView::loadFinished, this, &WebBrowser::handleLoadFinished);
    connect(v->page(), &QWebEnginePage::linkHovered, this, &WebBrowser::raiseStatus);
    connect(v, &QWebEngineView::printFinished, this, &WebBrowser::printed);
    connect(v, &QWebEngineView::pdfPrintingFinished, this, [this](const QString&, bool ok) { Q_EMIT printed(ok); });
    // The engine's drawing surface must exist before the window is first made: added to a
    // window that is already on the screen, it makes Qt re-create that window, which then
    // appears twice (and, under a window manager, somewhere else). Starting the page without
    // loading anything makes the surface now.
    v->page()->runJavaScript(QString());
    // Ctrl+F reaches the engine's surface, which has the keyboard whenever the pane has it.
    if (QWidget* surface = v->focusProxy())
        surface->installEventFilter(this);
}

WebBrowser::~WebBrowser() = default;

bool WebBrowser::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != widget() && event->type() == QEvent::KeyPress) {
        // The hosted browser's own keys while the page has the keyboard, through the same calls
        // as the window's buttons and menus, so that its events follow as they do for a click.
        // Back or forward with nowhere to go does nothing, as the browser's own key did.
        const auto* key = static_cast<QKeyEvent*>(event);
        const Qt::KeyboardModifiers mods = key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier);
        const struct {
            int key;
            Qt::KeyboardModifiers modifiers;
            std::function<void()> action;
        } keys[] = {
            {Qt::Key_F, Qt::ControlModifier, [this] { findBar().open(); }},
            {Qt::Key_F5, Qt::NoModifier, [this] { Refresh(); }},
            {Qt::Key_R, Qt::ControlModifier, [this] { Refresh(); }},
            {Qt::Key_Left, Qt::AltModifier, [this] { if (view()->history()->canGoBack()) GoBack(); }},
            {Qt::Key_Right, Qt::AltModifier, [this] { if (view()->history()->canGoForward()) GoForward(); }},
            {Qt::Key_P, Qt::ControlModifier, [this] { runHandler([this] { ExecWB(OLECMDID_PRINT, OLECMDEXECOPT_PROMPTUSER); }); }},
            {Qt::Key_Escape, Qt::NoModifier, [this] { Stop(); }},
        };
        for (const auto& k : keys) {
            if (key->key() == k.key && mods == k.modifiers) {
                k.action();
                return true;
            }
        }
    }
    return Control::eventFilter(watched, event);
}

FindBar& WebBrowser::findBar()
{
    if (!m_findBar)
        m_findBar = new FindBar(view());
    return *m_findBar;
}

namespace {
constexpr double kZoomFactors[] = {0.6, 0.8, 1.0, 1.25, 1.5}; // Smallest to Largest
} // namespace

void WebBrowser::ExecWB(int command, int option, const QVariant& in, QVariant* out)
{
    const auto refused = [] {
        throw RuntimeError(kMethodFailed, QStringLiteral("Method 'ExecWB' of object 'IWebBrowser2' failed"));
    };
    switch (command) {
    case OLECMDID_PRINT:
        print(option != OLECMDEXECOPT_DONTPROMPTUSER);
        break;
    case OLECMDID_PAGESETUP:
        // Page set-up is its dialog: "do not prompt" would set nothing at all, so the dialog
        // is shown whatever the option, as a person who chose Print Setup expects.
        if (!m_printer)
            m_printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
        Runtime::current().dialogs().pageSetup(*m_printer);
        break;
    case OLECMDID_PROPERTIES:
        (new PagePropertiesWindow(view()->page()))->show();
        break;
    case OLECMDID_COPY:
        if (!view()->hasSelection())
            refused();
        editAction(QWebEnginePage::Copy);
        break;
    case OLECMDID_SELECTALL:
        editAction(QWebEnginePage::SelectAll);
        break;
    case OLECMDID_ZOOM: {
        const int level = in.toInt();
        if (!in.isValid() || level < 0 || level > 4)
            raiseError(ErrInvalidProcedureCall);
        view()->setZoomFactor(kZoomFactors[level]);
        if (out)
            *out = level;
        break;
    }
    default:
        refused();
    }
}

void WebBrowser::editAction(int webAction)
{
    const auto action = QWebEnginePage::WebAction(webAction);
    // The engine's edit actions work on the page's focused frame, and a page nobody has clicked
    // into has none: the page focuses its frame first, and the action follows once it has.
    const QPointer<QWebEnginePage> page = view()->page();
    page->runJavaScript(QStringLiteral("window.focus()"), QWebEngineScript::ApplicationWorld,
                        [page, action](const QVariant&) {
                            if (page)
                                page->triggerAction(action);
                        });
}

void WebBrowser::print(bool prompt)
{
    if (!m_printer)
        m_printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    if (prompt && !Runtime::current().dialogs().print(*m_printer))
        return; // cancelled: nothing printed
    // Printed to a file, the page goes out as the engine's own PDF, its text kept as text; to a
    // printer, as the pages the engine lays out for it.
    if (m_printer->outputFormat() == QPrinter::PdfFormat && !m_printer->outputFileName().isEmpty())
        view()->printToPdf(m_printer->outputFileName(), m_printer->pageLayout(), m_printer->pageRanges());
    else
        view()->print(m_printer.get());
}

QWebEngineView* WebBrowser::view() const
{
    return static_cast<QWebEngineView*>(widget());
}

QUrl WebBrowser::interpret(const QString& typed)
{
    QString text = typed.trimmed();
    if (!text.contains(QLatin1String("://")))
        text = nativePath(text); // a path may use either slash
    if (text.isEmpty())
        return QUrl(QStringLiteral("about:blank"));
    if (text.startsWith(QLatin1Char('/')) || text.startsWith(QLatin1String("~/")) || text.startsWith(QLatin1String("./"))) {
        QString path = text;
        if (path.startsWith(QLatin1Char('~')))
            path.replace(0, 1, QDir::homePath());
        return QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath());
    }
    return QUrl::fromUserInput(text);
}

void WebBrowser::Navigate(const QString& address)
{
    view()->setUrl(interpret(address));
}

void WebBrowser::GoBack()
{
    if (!view()->history()->canGoBack())
        throw RuntimeError(kMethodFailed, QStringLiteral("Method 'GoBack' of object 'IWebBrowser2' failed"));
    view()->back();
}

void WebBrowser::GoForward()
{
    if (!view()->history()->canGoForward())
        throw RuntimeError(kMethodFailed, QStringLiteral("Method 'GoForward' of object 'IWebBrowser2' failed"));
    view()->forward();
}

void WebBrowser::Refresh() { view()->reload(); }
void WebBrowser::Stop() { view()->stop(); }

QString WebBrowser::LocationURL() const
{
    return m_locationUrl;
}

QString WebBrowser::LocationName() const
{
    return m_locationName;
}

void WebBrowser::updateLocation()
{
    const QUrl url = view()->url();
    m_locationUrl = url.isEmpty() ? QString() : url.toString();
    m_locationName = view()->title();
    // The engine titles an untitled page with its address; the classic component leaves it empty.
    for (const QString& address : {url.toString(), url.toDisplayString(),
                                   url.toString(QUrl::RemoveScheme).mid(2), url.toDisplayString(QUrl::RemoveScheme).mid(2),
                                   url.toString(QUrl::RemoveScheme | QUrl::StripTrailingSlash).mid(2), url.path(),
                                   url.fileName()}) {
        if (!address.isEmpty() && m_locationName == address)
            m_locationName.clear();
    }
}

bool WebBrowser::raiseNewWindow2()
{
    bool cancel = false;
    if (m_newWindow2)
        runHandler([&] { m_newWindow2(cancel); });
    return !cancel;
}

void WebBrowser::raiseStatus(const QString& text)
{
    if (m_statusTextChange)
        runHandler([&] { m_statusTextChange(text); });
}

void WebBrowser::raiseProgress(qint32 progress, qint32 progressMax)
{
    if (m_progressChange)
        runHandler([&] { m_progressChange(progress, progressMax); });
}

void WebBrowser::raiseNavigateComplete()
{
    if (m_navigateCompleteRaised)
        return;
    m_navigateCompleteRaised = true;
    const QString url = LocationURL();
    if (m_navigateComplete2)
        runHandler([&] { m_navigateComplete2(url); });
}

void WebBrowser::handleLoadStarted()
{
    m_loading = true;
    m_navigateCompleteRaised = false;
    raiseEvent(m_downloadBegin);
    raiseStatus(QStringLiteral("Opening page ") + LocationURL() + QStringLiteral("..."));
    raiseProgress(0, kProgressMax);
}

void WebBrowser::handleLoadProgress(int percent)
{
    if (m_loading && percent > 0 && percent < 100)
        raiseProgress(percent * (kProgressMax / 100), kProgressMax);
}

void WebBrowser::handleUrlChanged(const QUrl&)
{
    if (m_loading)
        raiseNavigateComplete();
}

void WebBrowser::handleLoadFinished(bool)
{
    if (!m_loading)
        return;
    m_loading = false;
    raiseNavigateComplete();
    raiseProgress(kProgressMax, kProgressMax);
    raiseStatus(QStringLiteral("Done"));
    raiseProgress(-1, 0);
    raiseEvent(m_downloadComplete);
    const QString url = LocationURL();
    if (m_documentComplete)
        runHandler([&] { m_documentComplete(url); });
}

void useWebProfile(const QString& storageName)
{
    g_profileName = storageName;
}

void warmUpWebEngine()
{
    if (WebBrowser::Page::spare)
        return;
    auto* page = new WebBrowser::Page(nullptr, qApp);
    // Running nothing starts the engine and the page's own process, as a load would, without
    // leaving an entry in the page's history.
    page->runJavaScript(QString());
    WebBrowser::Page::spare = page;
}

} // namespace platform
