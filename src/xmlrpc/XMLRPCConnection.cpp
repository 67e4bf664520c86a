#include "xmlrpc/XMLRPCConnection.h"

#include "platform/ZLLog.h"
#include "xmlrpc/TransferErrors.h"

#include <QLocale>
#include <QPointer>
#include <QUuid>
#include <algorithm>

namespace {
bool carriesData(const XMLRPCValue &value)
{
    if (value.isArray())
        return std::any_of(value.array().begin(), value.array().end(), carriesData);
    const auto &members = value.structure().members();
    return !value.data().isEmpty()
        || std::any_of(members.begin(), members.end(), [](const auto &member) { return carriesData(member.second); });
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
    , m_identifier(QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper())
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &XMLRPCConnection::timeoutExpired);
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
    QNetworkRequest request = m_request->request(m_body.size(), m_manager.defaultUserAgent());
    request.setUrl(url);
    // Followed by hand, because otherwise a POST would go on as a GET without its document.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    // The size of what arrives is watched here, packed or not.
    request.setDecompressedSafetyCheckThreshold(MaximumReplySize);
    m_hasHead = false;
    m_data.clear();
    m_textEncodingName.clear();
    m_date = {};
    m_reply = m_manager.network().post(request, m_body);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &XMLRPCConnection::didReceiveHead);
    connect(m_reply, &QNetworkReply::readyRead, this, &XMLRPCConnection::didReceiveData);
    connect(m_reply, &QNetworkReply::uploadProgress, this, &XMLRPCConnection::didSendBodyData);
    connect(m_reply, &QNetworkReply::finished, this, &XMLRPCConnection::didFinish);
}

void XMLRPCConnection::didReceiveHead()
{
    if (m_hasHead || status() == 0 || redirectTarget())
        return;
    m_hasHead = true;
    m_textEncodingName = charsetOf(m_reply->header(QNetworkRequest::ContentTypeHeader).toString());
    m_date = dateOf(*m_reply);
    if (status() >= 400) {
        // The entry stays until the delegate closes it, or else until the body has come as well.
        m_hasFailedStatus = true;
        const auto delegate = m_delegate;
        delegate->didFailWithError(m_request, TransferErrors::ofStatus(*m_reply));
    } else if (status() == 304) {
        close();
    } else if (m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong() > MaximumReplySize) {
        fail(TransferErrors::tooLarge(MaximumReplySize));
    }
}

void XMLRPCConnection::didReceiveData()
{
    didReceiveHead();
    if (!m_reply || redirectTarget())
        return;
    if (m_data.size() + m_reply->bytesAvailable() > MaximumReplySize)
        fail(TransferErrors::tooLarge(MaximumReplySize));
    else
        m_data += m_reply->readAll();
}

void XMLRPCConnection::didSendBodyData(qint64 written, qint64 expected)
{
    if (expected > 0)
        m_delegate->didSendBodyData(m_request, float(double(written) / double(expected)));
}

void XMLRPCConnection::didFinish()
{
    didReceiveData();
    if (!m_reply)
        return;
    if (const std::optional<QUrl> target = redirectTarget()) {
        redirect(*target);
    } else if (m_reply->error() != QNetworkReply::NoError && !m_hasFailedStatus) {
        fail(TransferErrors::ofReply(*m_reply));
    } else {
        finishLoading();
    }
}

void XMLRPCConnection::finishLoading()
{
    m_timer.stop();
    dropReply();
    m_body.clear();
    if (m_data.isEmpty())
        close(); // nobody hears of an empty reply; as intended, the delegate would be told
    else
        parse();
}

void XMLRPCConnection::parse()
{
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
    // The entry stays registered, but neither a picture that was uploaded nor the post that it was for is kept with it.
    const auto request = std::exchange(m_request, nullptr);
    const auto delegate = std::exchange(m_delegate, nullptr);
    delegate->didReceiveResponse(request, response);
}

bool XMLRPCConnection::mayRedirect(const QUrl &from, const QUrl &target)
{
    return from.scheme() != u"https" || target.scheme() == u"https";
}

void XMLRPCConnection::redirect(const QUrl &target)
{
    const QUrl from = m_reply->url();
    if (++m_redirects > MaximumRedirects)
        return fail(TransferErrors::tooManyRedirects(from));
    if (!mayRedirect(from, target))
        return fail(TransferErrors::insecureRedirect(target));
    dropReply();
    send(target);
}

void XMLRPCConnection::timeoutExpired()
{
    fail(TransferErrors::timedOut());
}

void XMLRPCConnection::fail(const ZLError &error)
{
    ZLLog(
        QStringLiteral("The connection, %1, failed with the following error: %2").arg(m_identifier, error.description));
    m_timer.stop();
    dropReply();
    const auto delegate = m_delegate;
    delegate->didFailWithError(m_request, error);
    close();
}

void XMLRPCConnection::close()
{
    m_manager.closeConnectionForIdentifier(m_identifier);
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
