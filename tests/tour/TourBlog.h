#pragma once

#include "xmlrpc/XMLRPCValue.h"

#include <QNetworkAccessManager>
#include <QUrl>

/// The blog as the tour sees it by itself, beside the program: plain calls that wait for their answer.
class TourBlog {
public:
    TourBlog(const QUrl &url, const QString &user, const QString &password);

    /// The answer of a call whose parameters follow blog id, user and password; absent after a fault or a failure,
    /// which lastError() then tells.
    XMLRPCValue call(const QString &method, const XMLRPCArray &parameters);
    QString lastError() const { return m_lastError; }

    /// Posts, or pages, as the program's sync asks for them.
    XMLRPCArray posts(const QString &type = u"post"_qs);
    XMLRPCValue post(const QString &id) { return call(u"wp.getPost"_qs, {id}); }
    /// The newest post or page with this title; absent when there is none.
    XMLRPCValue postWithTitle(const QString &title);
    QString newPost(const XMLRPCStruct &content) { return call(u"wp.newPost"_qs, {content}).string(); }
    /// Status and length of what the blog serves at this address; 0 when it serves nothing.
    qsizetype download(const QUrl &url);

private:
    QNetworkAccessManager m_network;
    QUrl m_endpoint;
    QString m_user;
    QString m_password;
    QString m_lastError;
};
