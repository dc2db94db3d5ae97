#include "inet.h"

#include "cp1252.h"
#include "errors.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QThread>

#include <future>

namespace platform {
namespace {

// The network work runs on a thread of its own, so that the user-interface thread can wait
// for it without running its own event loop (which would run the program's handlers).
class Fetcher {
public:
    Fetcher()
    {
        m_thread.setObjectName(QStringLiteral("Inet"));
        m_thread.start();
        m_context.moveToThread(&m_thread);
    }
    ~Fetcher()
    {
        QMetaObject::invokeMethod(&m_context, [this] { delete m_manager; m_manager = nullptr; }, Qt::BlockingQueuedConnection);
        m_thread.quit();
        m_thread.wait();
    }

    QStringList schemes()
    {
        QStringList result;
        QMetaObject::invokeMethod(&m_context, [&] { result = manager().supportedSchemes(); }, Qt::BlockingQueuedConnection);
        return result;
    }

    QByteArray fetch(const QUrl& url, int timeoutMs)
    {
        std::promise<QByteArray> body;
        std::future<QByteArray> arrived = body.get_future();
        QMetaObject::invokeMethod(&m_context, [&, url, timeoutMs] {
            QNetworkRequest request(url);
            request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
            request.setTransferTimeout(timeoutMs);
            QNetworkReply* reply = manager().get(request);
            QObject::connect(reply, &QNetworkReply::finished, reply, [reply, &body] {
                body.set_value(reply->readAll()); // the body whatever the status; nothing on failure
                reply->deleteLater();
            });
        });
        return arrived.get();
    }

private:
    QNetworkAccessManager& manager()
    {
        if (!m_manager)
            m_manager = new QNetworkAccessManager;
        return *m_manager;
    }

    QThread m_thread;
    QObject m_context;
    QNetworkAccessManager* m_manager = nullptr; // lives on the fetcher's thread
};

Fetcher& fetcher()
{
    static Fetcher instance;
    return instance;
}

} // namespace

QString Inet::OpenURL(const QString& address)
{
    // The home page file's CR LF rides along into address boxes: a person means the address.
    const QString text = address.trimmed();
    QUrl url(text, QUrl::StrictMode);
    if (url.scheme().isEmpty() || !url.isValid())
        url = QUrl::fromUserInput(text); // "example.org/page": as a browser reads it
    if (text.isEmpty() || !url.isValid() || !fetcher().schemes().contains(url.scheme(), Qt::CaseInsensitive))
        throw RuntimeError(ErrInetBadUrl, QStringLiteral("URL is malformed"));
    return decodeAnsi(fetcher().fetch(url, kTimeoutMs));
}

} // namespace platform
