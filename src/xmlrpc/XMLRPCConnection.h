#pragma once

#include "xmlrpc/XMLRPCConnectionManager.h"
#include "xmlrpc/XMLRPCEventBasedParser.h"

#include <QNetworkReply>
#include <QTimer>
#include <optional>

/// One HTTP exchange for one request. Encoding of uploads and parsing run on the manager's queue, all else on the main
/// thread, where the delegate is called too.
///
/// It passes: encoding, sending (again after each redirect), head received, body arriving, parsing. It ends with a
/// response or a failure told to the delegate, at the request's time-out at the latest; a reply that nobody can read,
/// an empty one among them, is a failure. Once cancelled, nothing reaches the delegate any more.
class XMLRPCConnection : public QObject {
    Q_OBJECT
public:
    static constexpr qint64 MaximumReplySize = XMLRPCEventBasedParser::MaximumSize;
    static constexpr int MaximumRedirects = 10;
    /// Why the document is not sent on: it carries the password, which goes to no other host and does not leave an
    /// encrypted road.
    static std::optional<ZLError> objectionToRedirect(const QUrl &from, const QUrl &target);

    XMLRPCConnection(
        RequestPtr request, std::shared_ptr<XMLRPCConnectionDelegate> delegate, XMLRPCConnectionManager &manager);
    ~XMLRPCConnection() override;

    void start();
    void cancel();
    QString identifier() const { return m_identifier; }

private:
    void encode();
    void send(const QUrl &url);
    QNetworkReply *post(QNetworkRequest request) const;
    void didReceiveHead();
    void didReceiveData();
    void didSendBodyData(qint64 written);
    void didFinish();
    void parse();
    void deliver(const ResponsePtr &response);
    void redirect(const QUrl &target);
    void fail(const ZLError &error);
    std::shared_ptr<XMLRPCConnectionDelegate> close();
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
    QUrl m_url; // that gave the reply
    QNetworkReply *m_reply = nullptr;
    int m_redirects = 0;
    bool m_hasHead = false;
    bool m_isCancelled = false;
};
