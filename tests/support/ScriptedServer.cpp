#include "ScriptedServer.h"

#include <sys/socket.h>

namespace {
// The request at the start of `received`, once all of it is there.
std::optional<ScriptedServer::Request> wholeRequest(const QByteArray &received)
{
    const qsizetype headEnd = received.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return std::nullopt;
    QList<QByteArray> lines = received.first(headEnd).split('\n');
    const QList<QByteArray> words = lines.takeFirst().trimmed().split(' ');
    ScriptedServer::Request request{words.value(0), words.value(1), {}, received.mid(headEnd + 4)};
    for (const QByteArray &line : lines) {
        const qsizetype colon = line.indexOf(':');
        request.headers.insert(line.first(colon).toLower(), line.mid(colon + 1).trimmed());
    }
    return request.body.size() < request.headers.value("content-length").toLongLong() ? std::nullopt
                                                                                      : std::optional(request);
}

QByteArray headOf(const ScriptedAnswer &answer)
{
    QByteArray head = "HTTP/1.1 " + QByteArray::number(answer.status) + ' ' + answer.reason + "\r\n";
    for (const auto &[name, value] : answer.headers)
        head += name + ": " + value + "\r\n";
    if (!answer.withoutLength)
        head += "Content-Length: " + QByteArray::number(answer.claimedLength.value_or(answer.body.size())) + "\r\n";
    return head + (answer.keepsOpen ? "\r\n" : "Connection: close\r\n\r\n");
}
} // namespace

ScriptedServer::ScriptedServer(QObject *parent)
    : QObject(parent)
{
    connect(&m_server, &QTcpServer::newConnection, this, &ScriptedServer::accept);
    m_server.listen(QHostAddress::LocalHost);
}

QUrl ScriptedServer::url(const QString &path) const
{
    return QUrl(u"http://127.0.0.1:%1%2"_qs.arg(m_server.serverPort()).arg(path));
}

void ScriptedServer::release()
{
    for (const auto &[socket, answer] : std::exchange(m_held, {})) {
        if (socket)
            send(socket, answer);
    }
}

void ScriptedServer::closeConnections()
{
    for (QTcpSocket *socket : m_received.keys())
        socket->abort();
}

void ScriptedServer::accept()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        m_received.insert(socket, {});
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QObject::destroyed, this, [this, socket] { m_received.remove(socket); });
    }
}

void ScriptedServer::read(QTcpSocket *socket)
{
    QByteArray &received = m_received[socket];
    received += socket->readAll();
    if (const std::optional<Request> request = wholeRequest(received)) {
        received.clear();
        take(socket, *request);
    }
}

void ScriptedServer::take(QTcpSocket *socket, const Request &request)
{
    m_requests.push_back(request);
    if (m_answers.empty())
        return;
    const ScriptedAnswer answer = m_answers.front();
    if (m_answers.size() > 1)
        m_answers.pop_front();
    if (answer.held)
        m_held.emplace_back(socket, answer);
    else
        send(socket, answer);
}

void ScriptedServer::send(QTcpSocket *socket, const ScriptedAnswer &answer)
{
    if (answer.resets)
        return reset(socket);
    socket->write(
        answer.raw.value_or(headOf(answer) + answer.body.first(answer.cutAfter.value_or(answer.body.size()))));
    if (!answer.endless.isEmpty())
        flood(socket, answer.endless);
    else if (!answer.keepsOpen)
        socket->disconnectFromHost();
}

void ScriptedServer::flood(QTcpSocket *socket, const QByteArray &bytes)
{
    constexpr qint64 Ahead = 1'000'000;
    const auto fill = [socket, bytes] {
        while (socket->state() == QAbstractSocket::ConnectedState && socket->bytesToWrite() < Ahead)
            socket->write(bytes);
    };
    connect(socket, &QTcpSocket::bytesWritten, socket, fill);
    fill();
}

void ScriptedServer::reset(QTcpSocket *socket)
{
    // Without lingering the system sends a reset in place of an orderly end.
    const linger none{1, 0};
    ::setsockopt(int(socket->socketDescriptor()), SOL_SOCKET, SO_LINGER, &none, sizeof none);
    socket->abort();
}
