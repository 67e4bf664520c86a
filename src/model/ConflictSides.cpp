#include "model/ConflictSides.h"

#include "model/LocalFileURL.h"
#include "model/PostSync.h"
#include "text/StoredText.h"
#include "text/TextDifference.h"

#include <QFileInfo>

namespace {
constexpr qsizetype shownLines = 5;
constexpr qsizetype shownCharacters = 300; // of a line

QStringList beginning(const QStringList &lines)
{
    QStringList shown;
    for (const QString &line : lines.mid(0, shownLines))
        shown << line.left(shownCharacters);
    return shown;
}

QStringList sortedKeywords(const PostFields &post)
{
    QStringList keywords = post.taxonomiesArray();
    keywords.sort();
    return keywords;
}

ConflictSides::Side sideOf(const ZLDocument &document, const QDateTime &date)
{
    const QStringList lines = TextDifference::lines(document.storedContent());
    return {!document.isDamaged(), date, document.post.title, beginning(lines), {}};
}

QStringList differencesOf(const ZLDocument &local, const ZLDocument &remote)
{
    const PostFields &one = local.post;
    const PostFields &other = remote.post;
    QStringList found;
    const auto say = [&](bool differs, const char *what) {
        if (differs)
            found << QString::fromLatin1(what);
    };
    say(!sameStoredText(local.storedTitle(), remote.storedTitle()), "Title");
    say(!sameStoredText(local.storedContent(), remote.storedContent()), "Text");
    say(sortedKeywords(one) != sortedKeywords(other), "Categories and tags");
    say(one.createdAt != other.createdAt, "Date");
    say(one.slug != other.slug, "Address");
    say(one.status != other.status || one.blogStatus != other.blogStatus, "Status");
    say(one.allowComments != other.allowComments || one.allowPingback != other.allowPingback, "Options");
    say(one.featuredImageId != other.featuredImageId, "Featured image");
    return found;
}
} // namespace

ConflictSides conflictSides(const LocalPostPtr &row, const ZLDocumentController &documents)
{
    const QString path = pathOfFileURL(row->localFile);
    const DocumentPtr open = documents.documentForURL(row->localFile);
    const Result<DocumentPtr> local = open ? Result<DocumentPtr>(open) : ZLDocument::open(row->localFile);
    const Result<DocumentPtr> remote = ZLDocument::open(QUrl::fromLocalFile(PostSync::conflictPath(path)));
    ConflictSides sides;
    if (local)
        sides.local = sideOf(**local, QFileInfo(path).lastModified().toUTC());
    if (remote)
        sides.remote = sideOf(**remote, (*remote)->post.updatedAt);
    if (!sides.local.isThere || !sides.remote.isThere)
        return sides;
    QStringList mine;
    QStringList theirs;
    for (const auto &[one, other] : TextDifference::between((*local)->storedContent(), (*remote)->storedContent())) {
        mine << one;
        theirs << other;
    }
    sides.local.differingLines = beginning(mine);
    sides.remote.differingLines = beginning(theirs);
    sides.differences = differencesOf(**local, **remote);
    return sides;
}
