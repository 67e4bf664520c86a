#include "wordpress/PostPictures.h"

#include "text/ContentPasses.h"
#include "wordpress/LocalPictures.h"

namespace {
const QString &filePrefix()
{
    static const QString prefix = QStringLiteral("file://");
    return prefix;
}

/// The full-size twin of a thumbnail's address: "_thumb" in its last piece becomes "_full".
QString fullSizeAddress(const QString &address)
{
    const QString name = LocalPictures::fileName(address);
    const QString fullName = QString(name).replace(QLatin1String("_thumb"), QLatin1String("_full"));
    return address.chopped(name.size()) + fullName;
}

/// Whether a body came with this local address from elsewhere, as a paste from another program leaves them on blogs: it
/// goes back as it is.
bool isForeign(const QString &address, const ZLWordpressPost &post, const ZLFileManager &files)
{
    return post.storedContent.contains(address) && !LocalPictures::isInCacheFolder(address, files);
}
} // namespace

QStringList PostPictures::localPictures(const ZLWordpressPost &post, const ZLFileManager &files)
{
    QStringList noted;
    for (const QString &address : ContentPasses::imageSources(post.content, filePrefix())) {
        if (isForeign(address, post, files))
            continue;
        noted.append(address);
        const QString full = fullSizeAddress(address);
        if (post.content.contains(full))
            noted.append(full);
    }
    if (post.featuredImageId.isEmpty() && post.featuredImageURL.startsWith(filePrefix()))
        noted.append(post.featuredImageURL);
    noted.removeDuplicates();
    return noted;
}

QString PostPictures::withAddressesOnTheBlog(const QString &content, const SyncedImages &images)
{
    if (!content.contains(filePrefix()))
        return content;
    QHash<QString, QString> addresses;
    for (auto image = images.syncedImages.cbegin(); image != images.syncedImages.cend(); ++image) {
        if (image.key().startsWith(filePrefix()) && content.contains(image.key()))
            addresses.insert(image.key(), image.value());
    }
    return ContentPasses::replaceOccurrences(content, addresses);
}
