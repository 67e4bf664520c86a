#pragma once

#include "support/FakeBlog.h"
#include "support/ScriptedServer.h"

/// A pretended blog behind a real port of this machine.
class ServedBlog : public ScriptedServer {
    Q_OBJECT
public:
    FakeBlog &blog() { return m_blog; }
    QString url() const { return m_blog.url(); }

protected:
    /// What becomes of a request that is read whole; as it stands, the blog's own answer.
    virtual void respond(QTcpSocket *socket, const FakeRequest &request) { send(socket, m_blog.answer(request)); }
    static void send(QTcpSocket *socket, const FakeAnswer &answer)
    {
        ScriptedServer::send(
            socket, {.status = answer.status, .headers = {{"Content-Type", "text/xml"}}, .body = answer.body});
    }

private:
    void take(QTcpSocket *socket, const Request &asked) final
    {
        const auto operation =
            asked.method == "POST" ? QNetworkAccessManager::PostOperation : QNetworkAccessManager::GetOperation;
        respond(socket, {operation, QNetworkRequest(QUrl(url() + QString::fromLatin1(asked.path))), asked.body});
    }

    FakeBlog m_blog{ScriptedServer::url({}).authority()};
};
