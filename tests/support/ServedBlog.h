#pragma once

#include "support/FakeBlog.h"

#include <QTcpServer>
#include <QTcpSocket>

/// A pretended blog behind a real port of this machine.
class ServedBlog : public QObject {
    Q_OBJECT
public:
    ServedBlog();

    FakeBlog &blog() { return m_blog; }
    QString url() const { return m_blog.url(); }
    void closeConnections();

protected:
    /// What becomes of a request that is read whole; as it stands, the blog's own answer.
    virtual void respond(QTcpSocket *socket, const FakeRequest &request);
    static void send(QTcpSocket *socket, const FakeAnswer &answer);

private:
    void accept();
    void read(QTcpSocket *socket);

    QHash<QTcpSocket *, QByteArray> m_received;
    QTcpServer m_server; ///< after what its sockets tell of their end
    FakeBlog m_blog;
};
