#pragma once

#include "xmlrpc/XMLRPCConnectionManager.h"
#include "xmlrpc/XMLRPCEventBasedParser.h"

#include <QNetworkReply>
#include <QTimer>
#include <optional>

/// One HTTP exchange for one request. Encoding of uploads and parsing run on the manager's queue, all else on the main
/// thread, where the delegate is called too.
///
/// It passes: encoding, sending (again after each redirect), head received, body arriving; then it ends as delivered
/// (it stays registered), as failed or timed out (the delegate hears, the entry goes), or silently, when the reply is
/// empty or a 304. Once cancelled, nothing reaches the delegate any more.
class XMLRPCConnection : public QObject {
    Q_OBJECT
public:
    static constexpr qint64 MaximumReplySize = XMLRPCEventBasedParser::MaximumSize;
    static constexpr int MaximumRedirects = 10;
    /// Whether to send the document on: it carries the password, which must not leave an encrypted road.
    static bool mayRedirect(const QUrl &from, const QUrl &target);

    XMLRPCConnection(
        RequestPtr request, std::shared_ptr<XMLRPCConnectionDelegate> delegate, XMLRPCConnectionManager &manager);
    ~XMLRPCConnection() override;

    void start();
    void cancel();
    QString identifier() const { return m_identifier; }
    /// Null once it has heard the response.
    const std::shared_ptr<XMLRPCConnectionDelegate> &delegate() const { return m_delegate; }

private:
    void encode();
    void send(const QUrl &url);
    void didReceiveHead();
    void didReceiveData();
    void didSendBodyData(qint64 written, qint64 expected);
    void didFinish();
    void finishLoading();
    void parse();
    void deliver(const ResponsePtr &response);
    void redirect(const QUrl &target);
    void timeoutExpired();
    void fail(const ZLError &error);
    void close();
    void dropReply();
    int status() const;
    std::optional<QUrl> redirectTarget() const;

    XMLRPCConnectionManager &m_manager;
    RequestPtr m_request;
    std::shared_ptr<XMLRPCConnectionDelegate> m_delegate;
    QString m_identifier;
    QTimer m_timer;
    QByteArray m_body; // what is sent, kept for redirects
    QByteArray m_data; // the reply
    QByteArray m_textEncodingName;
    QDateTime m_date; // of the reply
    QNetworkReply *m_reply = nullptr;
    int m_redirects = 0;
    bool m_hasHead = false;
    bool m_hasFailedStatus = false;
    bool m_isCancelled = false;
};
