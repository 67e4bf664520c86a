// The pictures of a post on its way: all of them in parallel, before its content.

#include "wordpress/LocalPictures.h"
#include "wordpress/MediaUpload.h"
#include "wordpress/PostPictures.h"
#include "wordpress/PostUpload.h"
#include "wordpress/ZLWordpressService.h"

#include <QFileInfo>
#include <numeric>

using ServiceFailures::isCancelled;

namespace {
bool isOnTheWeb(const QString &address)
{
    const QString scheme = QUrl(address).scheme();
    return scheme == QLatin1String("http") || scheme == QLatin1String("https");
}

XMLRPCStruct mediaStruct(const QString &path, const QByteArray &bits)
{
    return {{QStringLiteral("name"), QFileInfo(path).fileName()},
        {QStringLiteral("type"), MediaUpload::mediaType(path)}, {QStringLiteral("bits"), bits}};
}
} // namespace

QCoro::Task<bool> PostUpload::sendPictures()
{
    const QStringList addresses = PostPictures::localPictures(*m_post, m_environment.files);
    for (const QString &address : addresses)
        m_pictures.insert(address, m_images.syncedImages.contains(address) ? 1.0F : 0.0F);
    if (!addresses.isEmpty())
        setStep(SyncingImages);
    std::vector<QCoro::Task<bool>> pictures;
    for (const QString &address : addresses) {
        if (hasEnded())
            co_return false;
        Q_EMIT m_environment.notifications.syncingImagesPostStatus(m_post);
        if (!m_images.syncedImages.contains(address))
            pictures.push_back(sendPicture(address));
    }
    for (QCoro::Task<bool> &picture : pictures) {
        const bool sent = co_await picture;
        if (!sent)
            co_return false;
    }
    co_return !hasEnded();
}

QCoro::Task<bool> PostUpload::sendPicture(QString address)
{
    constexpr auto type = ZLWordpressServiceRequestTypeUploadImageFromURL;
    const QString path = LocalPictures::path(address);
    const QString file = LocalPictures::file(address, m_environment.files);
    const QString name = QFileInfo(path).fileName();
    if (MediaUpload::mediaType(path).isNull()) {
        fail(type,
            ServiceFailures::upload(ServiceFailures::NoKindOfPicture,
                QStringLiteral("The picture %1 cannot be sent: only PNG, JPEG and GIF can.").arg(name)));
        co_return false;
    }
    if (file.isNull()) {
        fail(type, {QStringLiteral("ZLFile"), 2, QStringLiteral("The picture %1 could not be read.").arg(name)});
        co_return false;
    }
    auto encoding = m_calls.work<QByteArray>([file] { return MediaUpload::encodedFile(file); });
    const Result<QByteArray> bits = co_await encoding;
    if (!bits && isCancelled(bits.error()))
        co_return false;
    if (!bits) {
        fail(type,
            {QStringLiteral("ZLFile"), 2,
                QStringLiteral("The picture %1 could not be read: %2").arg(name, bits.error().description)});
        co_return false;
    }
    const RequestPtr request =
        m_calls.blogRequest(QStringLiteral("metaWeblog.newMediaObject"), {mediaStruct(path, *bits)});
    auto sending = m_calls.send(request, [this, address](float progress) { didSendPicture(address, progress); });
    const CallAnswer answer = co_await sending;
    if (!answer && isCancelled(answer.error()))
        co_return false;
    if (!answer) {
        fail(type, answer.error());
        co_return false;
    }
    const XMLRPCValue &object = (*answer)->object();
    const ZLWordpressImage image{object[u"url"].string(), object[u"id"].string()};
    if (!isOnTheWeb(image.url)) {
        fail(type,
            image.url.isEmpty()
                ? ServiceFailures::upload(ServiceFailures::NoAddress,
                    QStringLiteral("The blog took the picture %1, but does not say where it is.").arg(name))
                : ServiceFailures::upload(ServiceFailures::NotOnTheWeb,
                    QStringLiteral("The blog took the picture %1, but names a place that is not on the web: %2")
                        .arg(name, image.url)));
        co_return false;
    }
    m_images.insert(address, image);
    didSendPicture(address, 1);
    co_return !hasEnded();
}

void PostUpload::didSendPicture(const QString &address, float progress)
{
    m_pictures[address] = progress;
    setProgress(std::accumulate(m_pictures.cbegin(), m_pictures.cend(), 0.0F) / float(m_pictures.size()));
}
