#pragma once

#include "platform/ZLError.h"

#include <QNetworkReply>
#include <QObject>
#include <QSaveFile>

/// One download into one file. What arrives goes to a temporary beside it, which takes its place at the end and goes
/// away on failure. It ends itself when it is told.
class FileTransfer : public QObject {
    Q_OBJECT
public:
    FileTransfer(QNetworkReply *reply, const QString &destination, QObject *parent);
    ~FileTransfer() override;

Q_SIGNALS:
    void didFinish(const QString &destination);
    void didFail(const ZLError &error);

private:
    void write();
    void finish();
    void fail(const ZLError &error);

    QNetworkReply *m_reply;
    QSaveFile m_file;
    bool m_ended = false;
};
