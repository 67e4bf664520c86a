#pragma once

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>

/// What a pretended host says to one request.
struct FakeAnswer {
    int status = 200;
    QByteArray body;
    QByteArray contentType = "text/xml";
    QNetworkReply::NetworkError error = QNetworkReply::NoError; ///< the connection breaks instead
    QUrl redirect; ///< with a status of 301 to 308
    bool held = false; ///< not before FakeNetwork::release()
};

/// What a host was asked.
struct FakeRequest {
    QNetworkAccessManager::Operation operation;
    QNetworkRequest request;
    QByteArray body;
};

/// One pretended host.
class FakeHost {
public:
    virtual ~FakeHost() = default;
    virtual FakeAnswer answer(const FakeRequest &request) = 0;
};

/// A network of pretended hosts. A host that was not added cannot be found. Nothing leaves the process.
class FakeNetwork : public QNetworkAccessManager {
public:
    using QNetworkAccessManager::QNetworkAccessManager;

    void addHost(const QString &name, FakeHost &host) { m_hosts.insert(name, &host); }
    /// Lets the held answers go, in the order of their requests.
    void release();
    int heldCount() const;
    bool isOffline = false;

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request, QIODevice *outgoing) override;

private:
    QHash<QString, FakeHost *> m_hosts;
    QList<QPointer<class FakeReply>> m_held;
};
