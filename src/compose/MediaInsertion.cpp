#include "compose/MediaInsertion.h"

#include "platform/ZLLog.h"
#include "text/RandomString.h"

#include <QFile>
#include <QFileInfo>
#include <QPointer>

namespace {
/// The panel shows no others, but a name can be typed into it, and anything can be dropped.
bool isPicture(const QUrl &file)
{
    static const QStringList kinds{
        QStringLiteral("png"), QStringLiteral("jpg"), QStringLiteral("jpeg"), QStringLiteral("gif")};
    return file.isLocalFile() && kinds.contains(QFileInfo(file.toLocalFile()).suffix(), Qt::CaseInsensitive);
}

QUrl contentURL(const QString &path)
{
    QUrl url = QUrl::fromLocalFile(path);
    url.setHost(QStringLiteral("localhost"));
    return url;
}
} // namespace

MediaInsertion::MediaInsertion(
    ComposeHost &host, ComposePage &page, ComposeView &view, Prompts &prompts, PostOnScreen &screen)
    : m_host(host)
    , m_page(page)
    , m_view(view)
    , m_prompts(prompts)
    , m_screen(screen)
{
}

QCoro::Task<void> MediaInsertion::insertMedia()
{
    const QPointer<MediaInsertion> self(this);
    const int generation = m_screen.generation();
    const QUrl chosen = co_await m_view.chooseMedia();
    if (!self || chosen.isEmpty() || generation != m_screen.generation())
        co_return;
    QCoro::Task<void> inserting = insertPictures({chosen});
    co_await inserting;
}

QCoro::Task<void> MediaInsertion::insertPictures(QList<QUrl> files)
{
    QList<QUrl> copies;
    for (const QUrl &file : files) {
        if (const QUrl copy = copyIntoCacheFolder(file); !copy.isEmpty())
            copies.append(copy);
    }
    return addToPage(copies);
}

QCoro::Task<void> MediaInsertion::insertPicture(QByteArray png)
{
    const QString path = pathInCacheFolder(QStringLiteral("png"));
    QFile file(path);
    const bool isWritten =
        !path.isNull() && file.open(QFile::WriteOnly | QFile::NewOnly) && file.write(png) == png.size() && file.flush();
    if (!isWritten)
        m_prompts.alert(QStringLiteral("The picture could not be added."),
            QStringLiteral("It could not be saved on this computer. Make room on the disk, then try again."));
    return addToPage(isWritten ? QList<QUrl>{contentURL(path)} : QList<QUrl>());
}

QUrl MediaInsertion::copyIntoCacheFolder(const QUrl &file)
{
    if (!isPicture(file)) {
        m_prompts.alert(QStringLiteral("This file cannot be added."),
            QStringLiteral("Choose a picture on this computer: PNG, JPEG or GIF."));
        return {};
    }
    const QString original = file.toLocalFile();
    const QString copy = pathInCacheFolder(QFileInfo(original).suffix());
    if (copy.isNull() || !QFile::copy(original, copy)) {
        ZLLog(QStringLiteral("Could not copy \"%1\" into the cache folder").arg(original));
        m_prompts.alert(QStringLiteral("The picture could not be added."),
            QStringLiteral("\"%1\" could not be copied. Check that the file can be read and that there is room on the "
                           "disk, then try again.")
                .arg(original));
        return {};
    }
    // The copy is ours, whatever the original allowed: it is read for the upload and cleared with the cache.
    QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner);
    return contentURL(copy);
}

QString MediaInsertion::pathInCacheFolder(const QString &suffix) const
{
    const QString folder = m_host.cacheFolder();
    if (folder.isEmpty())
        return {};
    return QStringLiteral("%1/%2-%3.%4")
        .arg(folder, QString::number(m_host.now().toSecsSinceEpoch()), genRandString(8), suffix);
}

QCoro::Task<void> MediaInsertion::addToPage(QList<QUrl> copies)
{
    const QPointer<MediaInsertion> self(this);
    const int generation = m_screen.generation();
    if (copies.isEmpty())
        co_return;
    for (const QUrl &copy : copies) {
        ImageInfo image;
        image.thumbUrl = copy;
        if (linksToFullImage(copy))
            image.linkTo = copy;
        m_page.addImage(image);
    }
    const std::optional<QString> content = co_await m_page.getRawContent();
    if (self && content && generation == m_screen.generation())
        m_screen.setContent(*content);
}

bool MediaInsertion::linksToFullImage(const QUrl &copy) const
{
    if (copy.path().endsWith(QLatin1String(".gif"), Qt::CaseInsensitive))
        return true;
    const AccountPtr account = m_host.selectedAccount();
    return account && account->preferences && account->preferences->full_image_as_default;
}
