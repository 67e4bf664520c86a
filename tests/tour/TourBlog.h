#pragma once

#include "TourScreen.h"
#include "xmlrpc/XMLRPCDefaultEncoder.h"
#include "xmlrpc/XMLRPCResponse.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTest>

/// The blog as the tour sees it by itself, beside the program: plain calls that wait for their answer, and fail the
/// step where there is none.
class TourBlog {
public:
    TourBlog(const QUrl &url, const QString &user, const QString &password)
        : m_endpoint(url.toString() + "/xmlrpc.php")
        , m_user(user)
        , m_password(password)
    {
    }

    /// The answer of a call whose parameters follow blog id, user and password.
    XMLRPCValue call(const QString &method, const XMLRPCArray &parameters)
    {
        XMLRPCArray all{QString(""), m_user, m_password};
        all.insert(all.end(), parameters.begin(), parameters.end());
        XMLRPCDefaultEncoder encoder;
        encoder.setMethod(method, all);
        QNetworkRequest request(m_endpoint);
        request.setHeader(QNetworkRequest::ContentTypeHeader, "text/xml");
        const ResponsePtr response = XMLRPCResponse::fromData(received(m_network.post(request, encoder.encode())));
        require(response && !response->isFault(),
            method + ": " + (response ? response->faultString() : "no answer that can be read"));
        return response->object();
    }
    /// Posts, or pages, as the program's sync asks for them.
    XMLRPCArray posts(const QString &type = "post")
    {
        return call("wp.getPosts", {XMLRPCStruct{{"number", 50}, {"post_type", type}}}).array();
    }
    XMLRPCValue post(const QString &id) { return call("wp.getPost", {id}); }
    /// The newest post with this title; absent when there is none.
    XMLRPCValue postWithTitle(const QString &title)
    {
        for (const XMLRPCValue &post : posts())
            if (post[u"post_title"].string() == title)
                return post;
        return {};
    }
    QString newPost(const QString &title, const QString &content, const QString &status)
    {
        return call(
            "wp.newPost", {XMLRPCStruct{{"post_title", title}, {"post_content", content}, {"post_status", status}}})
            .string();
    }
    QByteArray download(const QUrl &url) { return received(m_network.get(QNetworkRequest(url))); }

private:
    static QByteArray received(QNetworkReply *sent)
    {
        const std::unique_ptr<QNetworkReply> reply(sent);
        const bool ended = QTest::qWaitFor([&reply] { return reply->isFinished(); }, 30'000);
        require(ended && reply->error() == QNetworkReply::NoError, "the blog: " + reply->errorString());
        return reply->readAll();
    }

    QNetworkAccessManager m_network;
    QUrl m_endpoint;
    QString m_user;
    QString m_password;
};
