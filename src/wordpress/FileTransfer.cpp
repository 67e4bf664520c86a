#include "wordpress/FileTransfer.h"

#include "xmlrpc/TransferErrors.h"

FileTransfer::FileTransfer(QNetworkReply *reply, const QString &destination, QObject *parent)
    : QObject(parent)
    , m_reply(reply)
    , m_file(destination)
{
    m_reply->setParent(this);
    m_file.open(QIODevice::WriteOnly); // a failure shows with the first write
    connect(m_reply, &QNetworkReply::readyRead, this, &FileTransfer::write);
    connect(m_reply, &QNetworkReply::finished, this, &FileTransfer::finish);
}

FileTransfer::~FileTransfer()
{
    m_reply->disconnect(this);
    m_reply->abort();
}

void FileTransfer::write()
{
    const QByteArray bytes = m_reply->readAll();
    if (!m_ended && (!m_file.isOpen() || m_file.write(bytes) != bytes.size()))
        fail({QStringLiteral("ZLFile"), int(m_file.error()),
            QStringLiteral("The file %1 could not be written: %2").arg(m_file.fileName(), m_file.errorString())});
}

void FileTransfer::finish()
{
    write();
    if (m_ended)
        return;
    if (m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() >= 400)
        return fail(TransferErrors::ofStatus(*m_reply));
    if (m_reply->error() != QNetworkReply::NoError)
        return fail(TransferErrors::ofReply(*m_reply));
    if (!m_file.commit())
        return fail({QStringLiteral("ZLFile"), int(m_file.error()),
            QStringLiteral("The file %1 could not be written: %2").arg(m_file.fileName(), m_file.errorString())});
    m_ended = true;
    deleteLater();
    Q_EMIT didFinish(m_file.fileName());
}

void FileTransfer::fail(const ZLError &error)
{
    m_ended = true;
    m_file.cancelWriting();
    deleteLater();
    Q_EMIT didFail(error);
}
