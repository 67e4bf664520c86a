#pragma once

#include "platform/ZLError.h"

#include <QNetworkReply>
#include <QObject>
#include <QTemporaryFile>
#include <QTimer>
#include <chrono>

/// One download into one file. What arrives goes to a temporary, which takes the file's place at the end and goes away
/// on failure. It ends itself when it is told, and every transfer ends.
class FileTransfer : public QObject {
    Q_OBJECT
public:
    struct Limits {
        qint64 bytes = 128LL * 1024 * 1024;
        std::chrono::milliseconds silence = std::chrono::minutes(2); ///< for which nothing arrives
        std::chrono::milliseconds whole = std::chrono::minutes(10);
    };
    /// The temporary lies in `folder`, on the same file system as `destination`.
    FileTransfer(
        QNetworkReply *reply, const QString &folder, const QString &destination, const Limits &limits, QObject *parent);
    ~FileTransfer() override;

Q_SIGNALS:
    void didFinish(const QString &destination);
    void didFail(const ZLError &error);

private:
    void readHead();
    void write();
    void finish();
    void keep();
    void fail(const ZLError &error);
    ZLError fileError(const QString &reason) const;

    QNetworkReply *m_reply;
    QTemporaryFile m_file;
    QString m_destination;
    qint64 m_mostBytes;
    QTimer m_deadline;
    bool m_ended = false;
};
