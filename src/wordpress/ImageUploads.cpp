#include "wordpress/ImageUploads.h"

#include "platform/ZLLog.h"
#include "wordpress/LocalPictures.h"
#include "wordpress/MediaUpload.h"
#include "wordpress/ZLWordpressService.h"

#include <QFileInfo>
#include <QFuture>
#include <QPromise>
#include <QThreadPool>

namespace {
using Bits = Result<QByteArray>;

constexpr int mostRepliesWithoutAddress = 3; // each leaves a copy of the picture in the blog's library

bool isUpload(const ZLWordpressXMLRPCRequest &call)
{
    return call.currentRequestType == ZLWordpressServiceRequestTypeUploadImageFromURL;
}

/// Runs `encode` on a worker and gives its result on the main thread, unless `context` has ended.
void onWorker(QObject &context, std::function<Bits()> encode, std::function<void(const Bits &)> then)
{
    const auto promise = std::make_shared<QPromise<Bits>>();
    promise->future().then(&context, std::move(then));
    promise->start();
    QThreadPool::globalInstance()->start([promise, encode = std::move(encode)] {
        promise->addResult(encode());
        promise->finish();
    });
}

XMLRPCStruct mediaStruct(const QString &name, const QString &type, const QByteArray &bits)
{
    XMLRPCStruct media{{QStringLiteral("name"), name}, {QStringLiteral("type"), type}};
    if (!bits.isNull())
        media.insert(QStringLiteral("bits"), bits);
    return media;
}
} // namespace

ImageUploads::ImageUploads(const ZLServiceEnvironment &environment, ServiceCalls &calls)
    : m_environment(environment)
    , m_calls(calls)
{
}

void ImageUploads::syncImage(const QString &address, const PostPtr &post, int kind)
{
    syncingImages.insert(address);
    uploadImageFromURL(address, post, kind);
}

void ImageUploads::uploadImageFromURL(const QString &address, const PostPtr &post, int kind)
{
    if (MediaUpload::mediaType(LocalPictures::path(address)).isNull()) {
        // Settled: no call goes out, and the address stays marked, so the gate waits until the user cancels.
        ZLLog(QStringLiteral("picture %1 is of a kind that is not sent").arg(address));
        return;
    }
    const QString path = LocalPictures::file(address, m_environment.files);
    const Encoding upload{post, address, kind, ++m_lastTicket};
    m_encoding.append(upload);
    if (path.isNull()) {
        const QString reason = QStringLiteral("no such file in the cache folder");
        didEncode(upload.ticket, failure(QStringLiteral("ZLFile"), 2, reason));
        return;
    }
    onWorker(
        m_context, [path] { return MediaUpload::encodedFile(path); },
        [this, ticket = upload.ticket](const Bits &bits) { didEncode(ticket, bits); });
}

void ImageUploads::didEncode(int ticket, const Result<QByteArray> &bits)
{
    const auto upload = std::find_if(
        m_encoding.begin(), m_encoding.end(), [ticket](const Encoding &encoding) { return encoding.ticket == ticket; });
    if (upload == m_encoding.end()) // cancelled
        return;
    const Encoding found = *upload;
    m_encoding.erase(upload);
    // Without bytes the call goes out all the same.
    if (!bits)
        ZLLog(QStringLiteral("couldn't read the picture %1: %2").arg(found.address, bits.error().description));
    send(found, bits.value_or(QByteArray()));
}

void ImageUploads::send(const Encoding &upload, const QByteArray &bits)
{
    const QString path = LocalPictures::path(upload.address);
    const XMLRPCStruct media = mediaStruct(QFileInfo(path).fileName(), MediaUpload::mediaType(path), bits);
    CallInfo info;
    info.lacksPicture = bits.isNull();
    info.processingMedia = upload.address;
    info.processingPost = upload.post;
    info.processingType = upload.kind;
    m_calls.spawn(m_calls.blogRequest(QStringLiteral("metaWeblog.newMediaObject"), {media}),
        ZLWordpressServiceRequestTypeUploadImageFromURL, info);
}

void ImageUploads::uploadImage(const QByteArray &picture)
{
    onWorker(
        m_context, [picture] { return MediaUpload::encodedAsJPEG(picture); },
        [this](const Bits &bits) {
            if (!bits)
                ZLLog(QStringLiteral("couldn't read the picture: %1").arg(bits.error().description));
            XMLRPCStruct media =
                mediaStruct(QStringLiteral("base64img.jpg"), QStringLiteral("image/jpeg"), bits.value_or(QByteArray()));
            media.insert(QStringLiteral("overwrite"), QStringLiteral("0"));
            m_calls.spawn(m_calls.blogRequest(QStringLiteral("metaWeblog.newMediaObject"), {media}),
                ZLWordpressServiceRequestTypeUploadImage);
        });
}

bool ImageUploads::didUpload(const QString &address, const ZLWordpressImage &image)
{
    m_progress.remove(address);
    if (image.url.isEmpty()) {
        if (++m_repliesWithoutAddress[address] >= mostRepliesWithoutAddress) {
            m_repliesWithoutAddress.remove(address);
            return false; // and stays marked, as any failed upload does
        }
    } else {
        m_repliesWithoutAddress.remove(address);
        syncedImages.insert(address, image.url);
        syncedImages.insert(image.url, image.url);
        syncedWPImages.insert(address, image);
        syncedWPImages.insert(image.url, image);
    }
    syncingImages.remove(address);
    return true;
}

bool ImageUploads::isUnderWay(const QString &address) const
{
    const bool isEncoding = std::any_of(
        m_encoding.begin(), m_encoding.end(), [&](const Encoding &upload) { return upload.address == address; });
    return isEncoding || m_calls.isUnanswered([&](const ZLWordpressXMLRPCRequest &call) {
        return call.additionalInfo.processingMedia == address;
    });
}

void ImageUploads::cancel(const PostPtr &post, const QStringList &addresses)
{
    QStringList ended = addresses;
    m_encoding.removeIf([&](const Encoding &upload) {
        if (upload.post == post)
            ended.append(upload.address);
        return upload.post == post;
    });
    m_calls.cancel([&](const ZLWordpressXMLRPCRequest &call) {
        const bool isOfPost = isUpload(call) && call.additionalInfo.processingPost == post;
        if (isOfPost)
            ended.append(call.additionalInfo.processingMedia);
        return isOfPost;
    });
    for (const QString &address : std::as_const(ended)) {
        m_progress.remove(address);
        m_repliesWithoutAddress.remove(address);
        if (!isUnderWay(address))
            syncingImages.remove(address);
    }
}

QSet<PostPtr> ImageUploads::posts() const
{
    QSet<PostPtr> posts;
    for (const Encoding &upload : m_encoding)
        posts.insert(upload.post);
    for (const ServiceCallPtr &call : m_calls.unanswered()) {
        if (isUpload(*call))
            posts.insert(call->additionalInfo.processingPost);
    }
    return posts;
}

void ImageUploads::cleanData()
{
    // The mark of an upload that still runs stays, or its post would send the picture a second time.
    syncingImages.removeIf([this](const QString &address) { return !isUnderWay(address); });
    m_repliesWithoutAddress.clear();
    syncedImages.clear(); // syncedWPImages is kept
    m_progress.clear();
}

void ImageUploads::setProgress(const QString &address, float progress)
{
    m_progress.insert(address, progress);
}

float ImageUploads::progress(const QStringList &addresses) const
{
    if (addresses.isEmpty())
        return 0;
    float sum = 0;
    for (const QString &address : addresses)
        sum += syncedImages.contains(address) ? 1.0F : m_progress.value(address);
    return sum / float(addresses.size());
}
