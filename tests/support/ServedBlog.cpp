#include "support/ServedBlog.h"

#include <QNetworkRequest>

namespace {

QString hostOf(QTcpServer &server)
{
    if (!server.listen(QHostAddress::LocalHost))
        qFatal("no port for a blog");
    return u"127.0.0.1:%1"_qs.arg(server.serverPort());
}

/// The request at the start of the bytes, once all of it is there.
std::optional<FakeRequest> wholeRequest(const QByteArray &received, const QString &blog)
{
    const qsizetype headEnd = received.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return std::nullopt;
    const QList<QByteArray> lines = received.first(headEnd).split('\n');
    const QList<QByteArray> words = lines.first().trimmed().split(' ');
    qsizetype length = 0;
    for (const QByteArray &line : lines)
        if (line.toLower().startsWith("content-length:"))
            length = line.mid(line.indexOf(':') + 1).trimmed().toLongLong();
    const QByteArray body = received.mid(headEnd + 4);
    if (body.size() < length)
        return std::nullopt;
    const bool isPost = words.value(0) == "POST";
    return FakeRequest{isPost ? QNetworkAccessManager::PostOperation : QNetworkAccessManager::GetOperation,
        QNetworkRequest(QUrl(blog + QString::fromLatin1(words.value(1)))), body};
}

} // namespace

ServedBlog::ServedBlog()
    : m_blog(hostOf(m_server))
{
    connect(&m_server, &QTcpServer::newConnection, this, &ServedBlog::accept);
}

void ServedBlog::closeConnections()
{
    for (QTcpSocket *socket : m_received.keys())
        socket->abort();
}

void ServedBlog::accept()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        m_received.insert(socket, {});
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            m_received.remove(socket);
            socket->deleteLater();
        });
    }
}

void ServedBlog::read(QTcpSocket *socket)
{
    QByteArray &received = m_received[socket];
    received += socket->readAll();
    if (const std::optional<FakeRequest> request = wholeRequest(received, url())) {
        received.clear();
        respond(socket, *request);
    }
}

void ServedBlog::respond(QTcpSocket *socket, const FakeRequest &request)
{
    send(socket, m_blog.answer(request));
}

void ServedBlog::send(QTcpSocket *socket, const FakeAnswer &answer)
{
    socket->write("HTTP/1.1 " + QByteArray::number(answer.status)
        + " Answer\r\nContent-Type: text/xml\r\nContent-Length: " + QByteArray::number(answer.body.size())
        + "\r\nConnection: close\r\n\r\n" + answer.body);
    socket->disconnectFromHost();
}
