#pragma once
// A small HTTP server on 127.0.0.1 for the end-to-end tests, with pages that have a title or
// none, a redirect, a slow page that arrives in pieces over time, a page that opens a pop-up,
// a page behind a log-in (user "user", password "secret"), a download, a page with an empty
// body, a page whose server gives its dates, a page of 20,000 characters on one line, and a
// 404 for everything else.

#include <QTcpServer>
#include <QStringList>
#include <QUrl>

class QThread;

class HttpServer : public QObject {
    Q_OBJECT
public:
    HttpServer();
    QUrl url(const QString& path) const;
    // "127.0.0.1:port" + path: an address as a person types it, without a scheme.
    QString typed(const QString& path) const;
    int requests() const { return m_requests; }
    // The path of every request, in the order they came.
    const QStringList& paths() const { return m_paths; }
    // The body of "/long".
    static QByteArray longPage();

private:
    void handle(QTcpSocket* socket);
    void reply(QTcpSocket* socket, int status, const QByteArray& body, const QByteArray& extraHeaders = {});
    void drip(QTcpSocket* socket);

    QTcpServer m_server;
    int m_requests = 0;
    QStringList m_paths;
};

// The same server on a thread of its own, for tests of code that waits for a reply without
// processing messages on the thread that asked.
class HttpServerThread {
public:
    HttpServerThread();
    ~HttpServerThread();
    HttpServer& server() { return *m_server; }

private:
    QThread* m_thread;
    HttpServer* m_server = nullptr;
};
