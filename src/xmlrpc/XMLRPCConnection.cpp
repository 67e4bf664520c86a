#include "xmlrpc/XMLRPCConnection.h"

#include "platform/ZLLog.h"
#include "text/RandomString.h"
#include "xmlrpc/TransferErrors.h"

#include <QLocale>
#include <QPointer>
#include <algorithm>

namespace {
/// A body that can be read once. The network layer sends a POST again by itself when a kept connection is closed before
/// the answer, and the host may have carried it out already; what cannot be rewound, it cannot send again.
class OneTimeBody : public QIODevice {
public:
    explicit OneTimeBody(const QByteArray &bytes)
        : m_bytes(bytes)
    {
        open(QIODevice::ReadOnly);
    }
    bool isSequential() const override { return true; }
    bool seek(qint64) override { return false; }
    qint64 bytesAvailable() const override { return m_bytes.size() - m_read + QIODevice::bytesAvailable(); }

protected:
    qint64 readData(char *data, qint64 maximum) override
    {
        const qint64 length = std::min<qint64>(maximum, m_bytes.size() - m_read);
        std::copy_n(m_bytes.constData() + m_read, length, data);
        m_read += length;
        return length == 0 ? -1 : length;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    const QByteArray m_bytes;
    qint64 m_read = 0;
};

bool carriesData(const XMLRPCValue &value)
{
    if (value.isArray())
        return std::any_of(value.array().begin(), value.array().end(), carriesData);
    const auto &members = value.structure().members();
    return !value.data().isEmpty()
        || std::any_of(members.begin(), members.end(), [](const auto &member) { return carriesData(member.second); });
}

int portOf(const QUrl &url)
{
    return url.port(url.scheme() == u"https" ? 443 : 80);
}

QByteArray charsetOf(const QString &contentType)
{
    const QStringList parameters = contentType.split(u';');
    for (const QString &parameter : parameters) {
        const QString text = parameter.trimmed();
        if (text.startsWith(u"charset=", Qt::CaseInsensitive))
            return text.mid(8).remove(u'"').remove(u'\'').trimmed().toLatin1();
    }
    return {};
}

QDateTime dateOf(const QNetworkReply &reply)
{
    const QString text = QString::fromLatin1(reply.rawHeader("Date"));
    QDateTime date = QLocale::c().toDateTime(text, QStringLiteral("ddd, dd MMM yyyy hh:mm:ss 'GMT'"));
    date.setTimeSpec(Qt::UTC);
    return date;
}
} // namespace

XMLRPCConnection::XMLRPCConnection(
    RequestPtr request, std::shared_ptr<XMLRPCConnectionDelegate> delegate, XMLRPCConnectionManager &manager)
    : QObject(&manager)
    , m_manager(manager)
    , m_request(std::move(request))
    , m_delegate(std::move(delegate))
    , m_identifier(stringByGeneratingUUID())
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, [this] { fail(TransferErrors::timedOut()); });
}

XMLRPCConnection::~XMLRPCConnection()
{
    cancel();
}

void XMLRPCConnection::start()
{
    m_timer.start(int(m_request->timeout() * 1000));
    const XMLRPCArray &parameters = m_request->parameters();
    if (std::any_of(parameters.begin(), parameters.end(), carriesData)) {
        encode();
    } else {
        m_body = m_request->body();
        send(m_request->URL());
    }
}

void XMLRPCConnection::cancel()
{
    m_isCancelled = true;
    m_timer.stop();
    dropReply();
}

void XMLRPCConnection::encode()
{
    // The manager outlives its queue, so it is what a job may post to; this object may be gone by then.
    m_manager.parsingQueue().start([manager = &m_manager, guard = QPointer(this), request = m_request] {
        const QByteArray body = request->body();
        QMetaObject::invokeMethod(manager, [guard, body] {
            if (!guard || guard->m_isCancelled)
                return;
            guard->m_body = body;
            guard->send(guard->m_request->URL());
        });
    });
}

void XMLRPCConnection::send(const QUrl &url)
{
    if (url.scheme() != u"http" && url.scheme() != u"https") {
        // Later, since the caller may not have its identifier yet.
        QMetaObject::invokeMethod(
            this, [this, url] { m_isCancelled ? void() : fail(TransferErrors::unsupported(url)); },
            Qt::QueuedConnection);
        return;
    }
    QNetworkRequest request = m_request->request(m_body.size());
    request.setUrl(url);
    // Followed by hand, because otherwise a POST would go on as a GET without its document.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    // The size of what arrives is watched here, packed or not.
    request.setDecompressedSafetyCheckThreshold(MaximumReplySize);
    m_hasHead = false;
    m_data.clear();
    m_textEncodingName.clear();
    m_date = {};
    m_reply = post(request);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &XMLRPCConnection::didReceiveHead);
    connect(m_reply, &QNetworkReply::readyRead, this, &XMLRPCConnection::didReceiveData);
    connect(m_reply, &QNetworkReply::uploadProgress, this, &XMLRPCConnection::didSendBodyData);
    connect(m_reply, &QNetworkReply::finished, this, &XMLRPCConnection::didFinish);
}

QNetworkReply *XMLRPCConnection::post(QNetworkRequest request) const
{
    if (m_request->mayBeRepeated())
        return m_manager.network().post(request, m_body);
    request.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
    auto *body = new OneTimeBody(m_body);
    QNetworkReply *reply = m_manager.network().post(request, body);
    body->setParent(reply);
    return reply;
}

void XMLRPCConnection::didReceiveHead()
{
    if (m_hasHead || status() == 0)
        return;
    m_hasHead = true;
    m_textEncodingName = charsetOf(m_reply->header(QNetworkRequest::ContentTypeHeader).toString());
    m_date = dateOf(*m_reply);
    if (const std::optional<QUrl> target = redirectTarget())
        redirect(*target);
    else if (status() >= 400)
        fail(TransferErrors::ofStatus(*m_reply));
    else if (m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong() > MaximumReplySize)
        fail(TransferErrors::tooLarge(m_reply->url(), MaximumReplySize));
}

void XMLRPCConnection::didReceiveData()
{
    const QNetworkReply *reply = m_reply;
    didReceiveHead();
    if (m_reply != reply)
        return;
    if (m_data.size() + m_reply->bytesAvailable() > MaximumReplySize)
        fail(TransferErrors::tooLarge(m_reply->url(), MaximumReplySize));
    else
        m_data += m_reply->readAll();
}

void XMLRPCConnection::didSendBodyData(qint64 written)
{
    if (written > 0)
        m_delegate->didSendBodyData(m_request, float(double(written) / double(m_body.size())));
}

void XMLRPCConnection::didFinish()
{
    const QNetworkReply *reply = m_reply;
    didReceiveHead();
    if (m_reply == reply && m_reply->error() != QNetworkReply::NoError)
        fail(TransferErrors::ofReply(*m_reply));
    if (m_reply == reply)
        didReceiveData();
    if (m_reply == reply)
        parse();
}

void XMLRPCConnection::parse()
{
    m_timer.stop();
    m_url = m_reply->url();
    dropReply();
    m_body.clear();
    m_manager.parsingQueue().start([manager = &m_manager, guard = QPointer(this), data = std::exchange(m_data, {}),
                                       charset = m_textEncodingName, date = m_date]() mutable {
        const ResponsePtr response = XMLRPCResponse::fromData(data, charset, date);
        data.clear();
        QMetaObject::invokeMethod(manager, [guard, response] {
            if (guard && !guard->m_isCancelled)
                guard->deliver(response);
        });
    });
}

void XMLRPCConnection::deliver(const ResponsePtr &response)
{
    if (!response || (response->object().isAbsent() && !response->isFault()))
        return fail(TransferErrors::unreadable(m_url));
    const RequestPtr request = m_request;
    close()->didReceiveResponse(request, response);
}

std::optional<ZLError> XMLRPCConnection::objectionToRedirect(const QUrl &from, const QUrl &target)
{
    if (target.scheme() != u"http" && target.scheme() != u"https")
        return TransferErrors::unsupported(target);
    if (target.host() != from.host())
        return TransferErrors::redirectToOtherHost(from, target);
    if (from.scheme() == u"https" && target.scheme() != u"https")
        return TransferErrors::insecureRedirect(target);
    // Another port is another server, but for the way from http to https.
    const bool isUpgrade = from.scheme() != target.scheme() && from.port() == -1 && target.port() == -1;
    if (!isUpgrade && portOf(from) != portOf(target))
        return TransferErrors::redirectToOtherHost(from, target);
    return std::nullopt;
}

void XMLRPCConnection::redirect(const QUrl &target)
{
    const QUrl from = m_reply->url();
    if (++m_redirects > MaximumRedirects)
        return fail(TransferErrors::tooManyRedirects(from));
    if (const std::optional<ZLError> objection = objectionToRedirect(from, target))
        return fail(*objection);
    dropReply();
    m_delegate->didRedirect(target);
    send(target);
}

void XMLRPCConnection::fail(const ZLError &error)
{
    ZLLog(
        QStringLiteral("The connection, %1, failed with the following error: %2").arg(m_identifier, error.description));
    const RequestPtr request = m_request;
    close()->didFailWithError(request, error);
}

/// Takes the entry away, so that nothing more is heard of this one, and gives who is to be told.
std::shared_ptr<XMLRPCConnectionDelegate> XMLRPCConnection::close()
{
    m_manager.closeConnectionForIdentifier(m_identifier);
    return std::exchange(m_delegate, nullptr);
}

void XMLRPCConnection::dropReply()
{
    if (!m_reply)
        return;
    QNetworkReply *reply = std::exchange(m_reply, nullptr);
    reply->disconnect(this);
    // Not at once: the reply may be in the middle of the signal that led here.
    QMetaObject::invokeMethod(
        reply,
        [reply] {
            reply->abort();
            reply->deleteLater();
        },
        Qt::QueuedConnection);
}

int XMLRPCConnection::status() const
{
    return m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

std::optional<QUrl> XMLRPCConnection::redirectTarget() const
{
    const QUrl target = m_reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    return target.isEmpty() ? std::nullopt : std::optional(m_reply->url().resolved(target));
}
