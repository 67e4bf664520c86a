#include "model/PostRow.h"

#include "model/PostRowScanner.h"

namespace {
constexpr qsizetype visibleCharacters = 400;
}

PostRow PostRow::fromFile(const PostFile &file)
{
    const QString content = file.storedContent.trimmed();
    return {
        file.title,
        content.isEmpty() ? QString() : ZLLocalPostRepresentation::contentExtract(content),
        file.fileInfo.status,
        file.blogStatus,
        file.status,
        file.type,
        file.createdAt,
        QUrl(file.URL),
        file.isWhole,
    };
}

PostRow PostRow::fromData(const QByteArray &data)
{
    if (std::optional<PostRow> scanned = PostRowScanner(data).scan())
        return *std::move(scanned);
    return fromFile(PostFile::fromData(data));
}

int PostRow::rowStatus(const QDateTime &now) const
{
    using Row = ZLLocalPostRepresentation;
    const bool isNote = status == PostFields::Note;
    if (fileStatus == QLatin1String("modified"))
        return Row::Modified;
    if (fileStatus == QLatin1String("new"))
        return isNote ? Row::EvernoteNote : Row::New;
    if (fileStatus == QLatin1String("conflict"))
        return Row::Conflict;
    if (fileStatus == QLatin1String("conflict-solved"))
        return Row::ConflictSolved;
    if (isNote)
        return Row::EvernoteNote;
    if (status == PostFields::Publish) {
        if (createdAt.isValid() && createdAt > now)
            return Row::Scheduled;
        return type == PostFields::Page ? Row::PublishedPage : Row::Published;
    }
    return status == PostFields::Draft ? Row::Draft : Row::New;
}

ZLLocalPostRepresentation PostRow::row(const QUrl &localFile, const QDateTime &now) const
{
    const int shown = rowStatus(now);
    const bool isPublished = status == PostFields::Publish && shown != ZLLocalPostRepresentation::ConflictSolved;
    return {title, content, shown, blogStatus, localFile, postURL, isPublished};
}

qsizetype PostRow::extractLength(QStringView content, bool isWhole)
{
    qsizetype visible = 0;
    qsizetype at = 0;
    while (at < content.size() && visible < visibleCharacters) {
        const bool isTag = content[at] == u'<' && at + 1 < content.size() && content[at + 1] != u'>';
        if (!isTag) {
            // The list shows this one as a blank.
            constexpr QLatin1String blank("&nbsp;");
            at += content[at] == u'&' && content.sliced(at).startsWith(blank) ? blank.size() : 1;
            ++visible;
            continue;
        }
        const qsizetype end = content.indexOf(u'>', at + 1);
        if (end < 0) {
            // No tag after all, if the text ends here.
            if (!isWhole)
                return -1;
            return qMin(content.size(), at + visibleCharacters);
        }
        at = end + 1;
    }
    if (at >= content.size())
        return isWhole ? content.size() : -1;
    return content[at].isLowSurrogate() ? at + 1 : at;
}
