#include "http_server.h"

#include <QThread>

#include <QTcpSocket>
#include <QTimer>

namespace {

constexpr int kDripPieces = 6;
constexpr int kDripIntervalMs = 250;

QByteArray page(const QByteArray& title, const QByteArray& body)
{
    const QByteArray head = title.isNull() ? QByteArray() : "<title>" + title + "</title>";
    return "<!DOCTYPE html><html><head>" + head + "</head><body>" + body + "</body></html>";
}

} // namespace

QByteArray HttpServer::longPage()
{
    QByteArray body;
    for (int i = 0; body.size() < 20000; ++i)
        body += "<b>" + QByteArray::number(i) + "</b>";
    return page("Long Line", body);
}

HttpServer::HttpServer()
{
    m_server.listen(QHostAddress::LocalHost, 0);
    connect(&m_server, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket* socket = m_server.nextPendingConnection()) {
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { handle(socket); });
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
    });
}

QUrl HttpServer::url(const QString& path) const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path));
}

QString HttpServer::typed(const QString& path) const
{
    return QStringLiteral("127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path);
}

void HttpServer::reply(QTcpSocket* socket, int status, const QByteArray& body, const QByteArray& extraHeaders)
{
    const QByteArray reason = status == 200 ? "OK" : status == 302 ? "Found" : status == 401 ? "Unauthorized" : "Not Found";
    socket->write("HTTP/1.1 " + QByteArray::number(status) + " " + reason + "\r\n" +
                  "Content-Type: text/html; charset=utf-8\r\nCache-Control: no-store\r\nConnection: close\r\n" +
                  extraHeaders + "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
    socket->disconnectFromHost();
}

void HttpServer::drip(QTcpSocket* socket)
{
    QByteArray body = "<!DOCTYPE html><html><head><title>Slow Page</title></head><body>";
    QList<QByteArray> pieces;
    for (int i = 0; i < kDripPieces; ++i)
        pieces << "<p>" + QByteArray(2000, char('a' + i)) + "</p>";
    const QByteArray tail = "</body></html>";
    qsizetype length = body.size() + tail.size();
    for (const QByteArray& p : pieces)
        length += p.size();
    socket->write("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nCache-Control: no-store\r\nConnection: close\r\n"
                  "Content-Length: " + QByteArray::number(length) + "\r\n\r\n" + body);
    auto* timer = new QTimer(socket);
    auto sent = std::make_shared<int>(0);
    connect(timer, &QTimer::timeout, socket, [socket, timer, pieces, tail, sent] {
        if (*sent < pieces.size()) {
            socket->write(pieces[(*sent)++]);
            return;
        }
        timer->stop();
        socket->write(tail);
        socket->disconnectFromHost();
    });
    timer->start(kDripIntervalMs);
}

void HttpServer::handle(QTcpSocket* socket)
{
    const QByteArray request = socket->peek(socket->bytesAvailable());
    if (!request.contains("\r\n\r\n"))
        return;
    socket->readAll();
    ++m_requests;
    const QByteArray path = request.split(' ').value(1);
    m_paths << QString::fromLatin1(path);
    if (path == "/titled")
        reply(socket, 200, page("Titled Page", "<p>A page with a title.</p>"));
    else if (path == "/untitled")
        reply(socket, 200, page(QByteArray(), "<p>A page without a title.</p>"));
    else if (path == "/redirect")
        reply(socket, 302, "", "Location: /titled\r\n");
    else if (path == "/slow")
        drip(socket);
    else if (path == "/private" && request.contains("Authorization: Basic " + QByteArray("user:secret").toBase64()))
        reply(socket, 200, page("Private", "<p>Logged in.</p>"));
    else if (path == "/private")
        reply(socket, 401, page("Unauthorized", ""), "WWW-Authenticate: Basic realm=\"Glidepath Test\"\r\n");
    else if (path == "/file.bin")
        reply(socket, 200, QByteArray(100000, 'g'), "Content-Disposition: attachment; filename=\"file.bin\"\r\n");
    else if (path == "/dated")
        reply(socket, 200, page("Dated Page", "<p>A page with the server's dates.</p>"),
              "Last-Modified: Wed, 21 Oct 2015 07:28:00 GMT\r\nDate: Mon, 02 Nov 2026 10:00:00 GMT\r\n"
              "Expires: Tue, 03 Nov 2026 10:00:00 GMT\r\n");
    else if (path == "/long")
        reply(socket, 200, longPage());
    else if (path == "/empty")
        reply(socket, 200, QByteArray());
    else if (path == "/popup")
        reply(socket, 200, page("Opener", "<script>window.open('/titled', 'child', 'width=300,height=200,left=-40,top=-60');</script>"));
    else
        reply(socket, 404, page("Not Found", "<p>No such page.</p>"));
}

HttpServerThread::HttpServerThread() : m_thread(new QThread)
{
    m_thread->start();
    QObject context;
    context.moveToThread(m_thread);
    QMetaObject::invokeMethod(&context, [this] { m_server = new HttpServer; }, Qt::BlockingQueuedConnection);
}

HttpServerThread::~HttpServerThread()
{
    QMetaObject::invokeMethod(m_server, [this] { delete m_server; }, Qt::BlockingQueuedConnection);
    m_thread->quit();
    m_thread->wait();
    delete m_thread;
}
