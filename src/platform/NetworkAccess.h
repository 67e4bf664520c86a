#pragma once

#include <QList>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QTimer>

/// The road to every host. What comes back may be hostile:
/// - No cookies are kept, and no host's wish for a login is answered: an answer to NTLM or Negotiate names the user's
///   computer.
/// - A transfer that is aborted frees its socket at once, whatever the host goes on sending.
/// - Transfers end as cancelled when what they bring fills the memory unseen. The network layer gathers a head of any
///   length, and tells nobody before its end.
class NetworkAccess : public QNetworkAccessManager {
    Q_OBJECT
public:
    static constexpr qint64 DefaultUnseenBytes = 512LL * 1024 * 1024;
    /// `mostUnseenBytes`: how far the memory may grow, never shrinking, while transfers run. Watched where the system
    /// tells the memory in use.
    explicit NetworkAccess(qint64 mostUnseenBytes = DefaultUnseenBytes, QObject *parent = nullptr);

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request, QIODevice *outgoing) override;

private:
    void watchMemory();

    const qint64 m_mostUnseenBytes;
    QList<QPointer<QNetworkReply>> m_running;
    QTimer m_watch;
    qint64 m_lastUse = 0;
    qint64 m_useBeforeGrowth = 0;
};
