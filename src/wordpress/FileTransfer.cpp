#include "wordpress/FileTransfer.h"

#include "xmlrpc/TransferErrors.h"

#include <QFileInfo>
#include <filesystem>

namespace {
constexpr qint64 BytesAhead = 1024 * 1024; // that the network layer reads before they are written
}

FileTransfer::FileTransfer(
    QNetworkReply *reply, const QString &folder, const QString &destination, const Limits &limits, QObject *parent)
    : QObject(parent)
    , m_reply(reply)
    , m_file(folder + QLatin1String("/XXXXXX"))
    , m_destination(destination)
    , m_mostBytes(limits.bytes)
{
    m_reply->setParent(this);
    m_reply->setReadBufferSize(BytesAhead);
    m_file.open(); // a failure shows with the first write
    m_deadline.setSingleShot(true);
    m_deadline.start(limits.whole);
    connect(&m_deadline, &QTimer::timeout, this, [this] { fail(TransferErrors::timedOut()); });
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &FileTransfer::readHead);
    connect(m_reply, &QNetworkReply::readyRead, this, &FileTransfer::write);
    connect(m_reply, &QNetworkReply::finished, this, &FileTransfer::finish);
}

FileTransfer::~FileTransfer()
{
    m_reply->disconnect(this);
    m_reply->abort();
}

void FileTransfer::readHead()
{
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status >= 400)
        fail(TransferErrors::ofStatus(*m_reply));
    else if (m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong() > m_mostBytes)
        fail(TransferErrors::tooLarge(m_reply->url(), m_mostBytes));
}

void FileTransfer::write()
{
    if (m_ended)
        return;
    const QByteArray bytes = m_reply->readAll();
    if (!m_file.isOpen() || m_file.write(bytes) != bytes.size())
        fail(fileError(m_file.errorString()));
    else if (m_file.pos() > m_mostBytes)
        fail(TransferErrors::tooLarge(m_reply->url(), m_mostBytes));
}

void FileTransfer::finish()
{
    if (m_ended)
        return;
    const QNetworkReply::NetworkError error = m_reply->error();
    if (error == QNetworkReply::OperationCanceledError)
        return fail(TransferErrors::timedOut()); // after the longest silence
    if (error != QNetworkReply::NoError)
        return fail(TransferErrors::ofReply(*m_reply));
    write();
    if (!m_ended)
        keep();
}

void FileTransfer::keep()
{
    if (m_file.pos() == 0)
        return fail(TransferErrors::unreadable(m_reply->url()));
    if (!m_file.flush())
        return fail(fileError(m_file.errorString()));
    std::error_code failure;
    std::filesystem::rename(m_file.fileName().toStdU16String(), m_destination.toStdU16String(), failure);
    if (failure)
        return fail(fileError(QString::fromStdString(failure.message())));
    m_file.setAutoRemove(false);
    m_ended = true;
    deleteLater();
    Q_EMIT didFinish(m_destination);
}

void FileTransfer::fail(const ZLError &error)
{
    if (std::exchange(m_ended, true))
        return;
    m_deadline.stop();
    m_file.remove();
    deleteLater();
    Q_EMIT didFail(error);
}

ZLError FileTransfer::fileError(const QString &reason) const
{
    return {QStringLiteral("ZLFile"), int(m_file.error()),
        QStringLiteral("The file %1 could not be written: %2").arg(QFileInfo(m_destination).fileName(), reason)};
}
