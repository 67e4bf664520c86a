#pragma once

#include <QHash>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>
#include <deque>
#include <optional>
#include <vector>

/// What the server says to one request. The defaults make a good reply with a right length.
struct ScriptedAnswer {
    int status = 200;
    QByteArray reason = "OK";
    QList<std::pair<QByteArray, QByteArray>> headers = {};
    QByteArray body = {};
    std::optional<qsizetype> cutAfter = {}; ///< close after so many bytes of the body
    std::optional<qsizetype> claimedLength = {}; ///< a Content-Length that is not true
    bool withoutLength = false; ///< the end of the connection ends the body
    bool resets = false; ///< reset the connection in place of an answer
    bool held = false; ///< wait for release()
    bool keepsOpen = false; ///< leave the connection open for the next request
    std::optional<QByteArray> raw = {}; ///< these bytes in place of head and body
    QByteArray endless = {}; ///< sent after all that, again and again
};

/// An HTTP server on 127.0.0.1 that gives the answers of a test, one after the other; the last one is repeated.
class ScriptedServer : public QObject {
    Q_OBJECT
public:
    struct Request {
        QByteArray method;
        QByteArray path;
        QHash<QByteArray, QByteArray> headers; ///< names in lower case
        QByteArray body;
    };

    explicit ScriptedServer(QObject *parent = nullptr);

    QUrl url(const QString &path = u"/xmlrpc.php"_qs) const;
    void willAnswer(ScriptedAnswer answer) { m_answers.push_back(std::move(answer)); }
    const std::vector<Request> &requests() const { return m_requests; }
    int openConnections() const { return int(m_received.size()); }
    /// Sends the answers that were held.
    void release();
    void closeConnections();

protected:
    /// What becomes of a request that is read whole; as it stands, the next answer.
    virtual void take(QTcpSocket *socket, const Request &request);
    static void send(QTcpSocket *socket, const ScriptedAnswer &answer);

private:
    void accept();
    void read(QTcpSocket *socket);
    static void flood(QTcpSocket *socket, const QByteArray &bytes);
    static void reset(QTcpSocket *socket);

    QHash<QTcpSocket *, QByteArray> m_received;
    std::vector<Request> m_requests;
    std::deque<ScriptedAnswer> m_answers;
    std::vector<std::pair<QPointer<QTcpSocket>, ScriptedAnswer>> m_held;
    QTcpServer m_server; ///< the last, so that its sockets die before what they tell of their end
};
