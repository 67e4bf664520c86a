#include "wordpress/ZLDownloadManager.h"

#include "platform/ZLLog.h"
#include "xmlrpc/TransferErrors.h"

#include <QDir>

ZLDownloadManager::ZLDownloadManager(
    QNetworkAccessManager &network, const ZLFileManager &files, const FileTransfer::Limits &limits, QObject *parent)
    : QObject(parent)
    , m_network(network)
    , m_files(files)
    , m_limits(limits)
{
    removeLeftovers();
}

QString ZLDownloadManager::unfinishedFolder() const
{
    return m_files.cacheFolder() + QLatin1String("/downloads");
}

void ZLDownloadManager::removeLeftovers() const
{
    // Other managers may be at work; what no transfer takes as long as is nobody's.
    const QDateTime limit = QDateTime::currentDateTimeUtc().addMSecs(-m_limits.whole.count());
    for (const QFileInfo &file : QDir(unfinishedFolder()).entryInfoList(QDir::Files)) {
        if (file.lastModified() < limit)
            QFile::remove(file.filePath());
    }
}

bool ZLDownloadManager::downloadFileFromURL(const QUrl &url, int action)
{
    const QString name = url.path(QUrl::FullyDecoded).section(QLatin1Char('/'), -1);
    const QString folder = m_files.cacheFolder();
    if (url.isEmpty() || folder.isEmpty() || !ZLFileManager::isPlainFileName(name)
        || !QDir().mkpath(unfinishedFolder()))
        return false;
    if (url.scheme() != QLatin1String("http") && url.scheme() != QLatin1String("https")) {
        // The network layer would serve local files too, and addresses come from foreign pages.
        failLater(url, TransferErrors::unsupported(url));
        return true;
    }
    QNetworkRequest request(url);
    request.setTransferTimeout(int(m_limits.silence.count()));
    auto *transfer =
        new FileTransfer(m_network.get(request), unfinishedFolder(), folder + QLatin1Char('/') + name, m_limits, this);
    connect(transfer, &FileTransfer::didFail, this, [this, url](const ZLError &error) { didFail(url, error); });
    connect(transfer, &FileTransfer::didFinish, this,
        [this, url, action](const QString &destination) { didFinish(url, destination, action); });
    return true;
}

void ZLDownloadManager::cancelDownloadFromURL(const QUrl &) { }

void ZLDownloadManager::failLater(const QUrl &url, const ZLError &error)
{
    QMetaObject::invokeMethod(
        this, [this, url, error] { didFail(url, error); }, Qt::QueuedConnection);
}

void ZLDownloadManager::didFail(const QUrl &url, const ZLError &error)
{
    ZLLog(QStringLiteral("Download failed! Error - %1 %2").arg(error.description, url.toString()));
    if (delegate)
        delegate->downloadFromURLDidFail(url, error, 0);
}

void ZLDownloadManager::didFinish(const QUrl &url, const QString &destination, int action)
{
    ZLLog(QStringLiteral("downloadDidFinish  - %1").arg(url.toString()));
    if (delegate)
        delegate->downloadFromURLDidFinish(url, destination, action);
}
