#include "TourBlog.h"

#include "xmlrpc/XMLRPCDefaultEncoder.h"
#include "xmlrpc/XMLRPCResponse.h"

#include <QNetworkReply>
#include <QTest>

namespace {

constexpr int patience = 30000; // ms

bool finished(QNetworkReply &reply)
{
    return QTest::qWaitFor([&reply] { return reply.isFinished(); }, patience)
        && reply.error() == QNetworkReply::NoError;
}

} // namespace

TourBlog::TourBlog(const QUrl &url, const QString &user, const QString &password)
    : m_endpoint(url.toString() + u"/xmlrpc.php"_qs)
    , m_user(user)
    , m_password(password)
{
}

XMLRPCValue TourBlog::call(const QString &method, const XMLRPCArray &parameters)
{
    XMLRPCArray all{QString(""), m_user, m_password};
    all.insert(all.end(), parameters.begin(), parameters.end());
    XMLRPCDefaultEncoder encoder;
    encoder.setMethod(method, all);
    QNetworkRequest request(m_endpoint);
    request.setHeader(QNetworkRequest::ContentTypeHeader, u"text/xml"_qs);
    const std::unique_ptr<QNetworkReply> reply(m_network.post(request, encoder.encode()));
    m_lastError.clear();
    if (!finished(*reply)) {
        m_lastError = reply->errorString();
        return {};
    }
    const ResponsePtr response = XMLRPCResponse::fromData(reply->readAll());
    if (!response || response->isFault()) {
        m_lastError = response ? response->faultString() : u"no answer that can be read"_qs;
        return {};
    }
    return response->object();
}

XMLRPCArray TourBlog::posts(const QString &type)
{
    XMLRPCStruct filter{{u"number"_qs, 50}};
    if (type != QLatin1String("post"))
        filter.insert(u"post_type"_qs, type);
    return call(u"wp.getPosts"_qs, {filter}).array();
}

XMLRPCValue TourBlog::postWithTitle(const QString &title)
{
    for (const XMLRPCValue &post : posts())
        if (post[u"post_title"].string() == title)
            return post;
    return {};
}

qsizetype TourBlog::download(const QUrl &url)
{
    const std::unique_ptr<QNetworkReply> reply(m_network.get(QNetworkRequest(url)));
    return finished(*reply) ? reply->readAll().size() : 0;
}
