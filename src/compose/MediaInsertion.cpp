#include "compose/MediaInsertion.h"

#include "platform/ZLLog.h"
#include "text/RandomString.h"

#include <QFile>
#include <QFileInfo>
#include <QPointer>

namespace {
/// The panel shows no others, but a name can be typed into it.
bool isPicture(const QUrl &file)
{
    static const QStringList kinds{
        QStringLiteral("png"), QStringLiteral("jpg"), QStringLiteral("jpeg"), QStringLiteral("gif")};
    return file.isLocalFile() && kinds.contains(QFileInfo(file.toLocalFile()).suffix(), Qt::CaseInsensitive);
}
} // namespace

MediaInsertion::MediaInsertion(const ComposeParts &parts, QObject *parent)
    : QObject(parent)
    , m_parts(parts)
{
}

QCoro::Task<void> MediaInsertion::insertMedia()
{
    const QPointer<MediaInsertion> self(this);
    if (!m_parts.state->actionsEnabled || m_parts.page.isShowingImageEditor() || m_isChoosing || isUploading())
        co_return;
    m_isChoosing = true;
    const int generation = m_parts.screen.generation();
    QCoro::Task<QUrl> choosing = m_parts.view.chooseMedia();
    const QUrl chosen = co_await choosing;
    if (!self)
        co_return;
    m_isChoosing = false;
    if (chosen.isEmpty() || generation != m_parts.screen.generation() || isUploading())
        co_return;
    if (!isPicture(chosen)) {
        m_parts.prompts.alert(QStringLiteral("This file cannot be added."),
            QStringLiteral("Choose a picture on this computer: PNG, JPEG or GIF."));
        co_return;
    }
    const QUrl copy = copyIntoCacheFolder(chosen.toLocalFile());
    if (copy.isEmpty()) {
        m_parts.prompts.alert(QStringLiteral("The picture could not be added."),
            QStringLiteral("\"%1\" could not be copied. Check that the file can be read and that there is room on the "
                           "disk, then try again.")
                .arg(chosen.toLocalFile()));
        co_return;
    }
    ImageInfo image;
    image.thumbUrl = copy;
    if (linksToFullImage(copy))
        image.linkTo = copy;
    m_parts.page.addImage(image);
    QCoro::Task<std::optional<QString>> asking = m_parts.page.getRawContent();
    const std::optional<QString> content = co_await asking;
    if (self && content && generation == m_parts.screen.generation())
        Q_EMIT setPostContent(*content);
}

bool MediaInsertion::isUploading() const
{
    return m_parts.overlay.isLoading(m_parts.screen.post()->id);
}

QUrl MediaInsertion::copyIntoCacheFolder(const QString &file) const
{
    const QString folder = m_parts.host.cacheFolder();
    const QString suffix = QFileInfo(file).suffix();
    const QString copy =
        QStringLiteral("%1/%2-%3.%4")
            .arg(folder, QString::number(m_parts.host.now().toSecsSinceEpoch()), genRandString(8), suffix);
    if (folder.isEmpty() || !QFile::copy(file, copy)) {
        ZLLog(QStringLiteral("Could not copy \"%1\" into the cache folder").arg(file));
        return {};
    }
    // The copy is ours, whatever the original allowed: it is read for the upload and cleared with the cache.
    QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner);
    QUrl url = QUrl::fromLocalFile(copy);
    url.setHost(QStringLiteral("localhost"));
    return url;
}

bool MediaInsertion::linksToFullImage(const QUrl &copy) const
{
    if (copy.path().endsWith(QLatin1String(".gif"), Qt::CaseInsensitive))
        return true;
    const AccountPtr account = m_parts.host.selectedAccount();
    return account && account->preferences && account->preferences->full_image_as_default;
}
