#pragma once

#include "platform/ZLError.h"
#include "platform/ZLFileManager.h"
#include "wordpress/FileTransfer.h"

#include <QNetworkAccessManager>
#include <QObject>
#include <QUrl>

/// Hears how downloads end, on the main thread.
class ZLDownloadManagerDelegate {
public:
    virtual ~ZLDownloadManagerDelegate() = default;
    virtual void downloadFromURLDidFinish(const QUrl &url, const QString &destination, int action) = 0;
    /// `action` carries no meaning here, on purpose: there is no file to act on. Meant was the caller's, as above.
    virtual void downloadFromURLDidFail(const QUrl &url, const ZLError &error, int action) = 0;
};

/// Fetches remote files into the cache folder, each under the last part of its address. Two files of that name from
/// different hosts therefore replace each other. The action is the caller's note on what to do with the file. Only
/// http and https are asked.
class ZLDownloadManager : public QObject {
    Q_OBJECT
public:
    /// Also removes what transfers of an earlier start have left half done.
    ZLDownloadManager(QNetworkAccessManager &network, const ZLFileManager &files,
        const FileTransfer::Limits &limits = {}, QObject *parent = nullptr);

    ZLDownloadManagerDelegate *delegate = nullptr;

    /// Starts a transfer; false when the address is empty or names no file. A second call for an address starts
    /// a second transfer, and each is told. Kept on purpose, as the callers ask once; meant was that it joins the
    /// first.
    bool downloadFileFromURL(const QUrl &url, int action);
    /// Finds no transfer, since they are not kept by address. Kept on purpose, as the file serves the next who asks;
    /// meant was to end the transfer.
    void cancelDownloadFromURL(const QUrl &url);

private:
    QString unfinishedFolder() const;
    void removeLeftovers() const;
    void failLater(const QUrl &url, const ZLError &error);
    void didFail(const QUrl &url, const ZLError &error);
    void didFinish(const QUrl &url, const QString &destination, int action);

    QNetworkAccessManager &m_network;
    const ZLFileManager &m_files;
    const FileTransfer::Limits m_limits;
};
