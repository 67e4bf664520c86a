#pragma once

#include <QDateTime>
#include <QMap>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>

/// What a pretended host says to one request.
struct FakeAnswer {
    int status = 200;
    QByteArray body = {};
    QNetworkReply::NetworkError error = QNetworkReply::NoError; ///< the connection breaks instead
    bool held = false; ///< not before FakeNetwork::release()
    QDateTime date = {}; ///< that the reply bears; invalid: none
    QString location = {}; ///< where the reply sends on to
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

/// A host that says the same to all who ask for none of its pages.
class FixedHost : public FakeHost {
public:
    explicit FixedHost(FakeAnswer says)
        : next(std::move(says))
    {
    }
    FakeAnswer answer(const FakeRequest &request) override
    {
        asked.append(request.request.url().toString());
        return pages.value(asked.last(), next);
    }

    FakeAnswer next;
    QMap<QString, FakeAnswer> pages; ///< by address
    QStringList asked;
};

/// A network of pretended hosts. A host that was not added cannot be found. Nothing leaves the process.
class FakeNetwork : public QNetworkAccessManager {
public:
    using QNetworkAccessManager::QNetworkAccessManager;

    void addHost(const QString &name, FakeHost &host) { m_hosts.insert(name, &host); }
    /// Lets the held answers go, in the order of their requests.
    void release();
    int heldCount() const;

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request, QIODevice *outgoing) override;

private:
    QHash<QString, FakeHost *> m_hosts;
    QList<QPointer<class FakeReply>> m_held;
};
