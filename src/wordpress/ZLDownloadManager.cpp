#include "wordpress/ZLDownloadManager.h"

#include "platform/ZLLog.h"
#include "wordpress/FileTransfer.h"

namespace {
constexpr int transferTimeout = 120000; // milliseconds

ZLError unsupportedAddress(const QUrl &url)
{
    return {QStringLiteral("NSURLErrorDomain"), -1002,
        QStringLiteral("This address cannot be loaded: %1").arg(url.toDisplayString())};
}
} // namespace

ZLDownloadManager::ZLDownloadManager(QNetworkAccessManager &network, const ZLFileManager &files, QObject *parent)
    : QObject(parent)
    , m_network(network)
    , m_files(files)
{
}

bool ZLDownloadManager::downloadFileFromURL(const QUrl &url, int action)
{
    const QString name = url.path(QUrl::FullyDecoded).section(QLatin1Char('/'), -1);
    const QString folder = m_files.cacheFolder();
    if (url.isEmpty() || folder.isEmpty() || !ZLFileManager::isPlainFileName(name))
        return false;
    if (url.scheme() != QLatin1String("http") && url.scheme() != QLatin1String("https")) {
        // The network layer would serve local files too, and addresses come from foreign pages.
        failLater(url, unsupportedAddress(url));
        return true;
    }
    QNetworkRequest request(url);
    request.setTransferTimeout(transferTimeout);
    auto *transfer = new FileTransfer(m_network.get(request), folder + QLatin1Char('/') + name, this);
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
