#include "model/ConflictSides.h"

#include "model/LocalFileURL.h"
#include "model/PostSync.h"
#include "text/StoredText.h"
#include "text/TextDifference.h"

#include <QFileInfo>

namespace {
constexpr qsizetype shownLines = 5;
constexpr qsizetype shownCharacters = 300; // of a line
constexpr qsizetype excerptLength = 60;

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

/// Of each line, as much as a card has room for around the place where it differs.
QStringList excerpts(const QStringList &lines, const QStringList &others)
{
    QStringList shown;
    for (qsizetype index = 0; index < lines.size(); ++index)
        shown << TextDifference::excerpt(lines[index], others.value(index), excerptLength);
    return shown;
}
} // namespace

QStringList differencesBetween(const PostFields &one, const PostFields &other)
{
    QStringList found;
    const auto say = [&](bool differs, const char *what) {
        if (differs)
            found << QString::fromLatin1(what);
    };
    say(!sameStoredText(one.title, other.title), "Title");
    say(!sameStoredText(one.content, other.content), "Text");
    say(sortedKeywords(one) != sortedKeywords(other), "Categories and tags");
    say(one.createdAt.secsTo(other.createdAt) / 60 != 0, "Date");
    say(one.slug != other.slug, "Address");
    say(one.status != other.status || one.blogStatus != other.blogStatus, "Status");
    say(one.allowComments != other.allowComments || one.allowPingback != other.allowPingback, "Options");
    say(one.featuredImageId != other.featuredImageId, "Featured image");
    return found;
}

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
        mine << excerpts(one, other);
        theirs << excerpts(other, one);
    }
    sides.local.differingLines = beginning(mine);
    sides.remote.differingLines = beginning(theirs);
    sides.differences = differencesBetween((*local)->storedFields(), (*remote)->storedFields());
    return sides;
}
