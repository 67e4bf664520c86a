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
    : m_endpoint(url.toString() + QStringLiteral("/xmlrpc.php"))
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
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("text/xml"));
    const std::unique_ptr<QNetworkReply> reply(m_network.post(request, encoder.encode()));
    m_lastError.clear();
    if (!finished(*reply)) {
        m_lastError = reply->errorString();
        return {};
    }
    const ResponsePtr response = XMLRPCResponse::fromData(reply->readAll());
    if (!response || response->isFault()) {
        m_lastError = response ? response->faultString() : QStringLiteral("no answer that can be read");
        return {};
    }
    return response->object();
}

XMLRPCArray TourBlog::posts(const QString &type)
{
    XMLRPCStruct filter{{QStringLiteral("number"), 50}};
    if (type != QLatin1String("post"))
        filter.insert(QStringLiteral("post_type"), type);
    return call(QStringLiteral("wp.getPosts"), {filter}).array();
}

XMLRPCValue TourBlog::post(const QString &id)
{
    return call(QStringLiteral("wp.getPost"), {id});
}

XMLRPCValue TourBlog::postWithTitle(const QString &title)
{
    for (const XMLRPCValue &post : posts())
        if (post[u"post_title"].string() == title)
            return post;
    return {};
}

QString TourBlog::newPost(const XMLRPCStruct &content)
{
    return call(QStringLiteral("wp.newPost"), {content}).string();
}

qsizetype TourBlog::download(const QUrl &url)
{
    const std::unique_ptr<QNetworkReply> reply(m_network.get(QNetworkRequest(url)));
    return finished(*reply) ? reply->readAll().size() : 0;
}
