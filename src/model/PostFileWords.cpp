#include "model/PostFileWords.h"

namespace {
const QString evernote = QStringLiteral("evernote");
const QString publish = QStringLiteral("publish");
const QString draft = QStringLiteral("draft");
const QString page = QStringLiteral("page");
} // namespace

QString PostFileWords::engine(int status)
{
    return status == PostFields::Note ? evernote : QStringLiteral("wordpress");
}

QString PostFileWords::status(int status)
{
    switch (status) {
    case PostFields::New:
    case PostFields::Note:
        return QStringLiteral("new");
    case PostFields::Draft:
        return draft;
    case PostFields::Publish:
        return publish;
    default:
        return {};
    }
}

QString PostFileWords::type(int type)
{
    return type == PostFields::Page ? page : QStringLiteral("post");
}

int PostFileWords::statusFrom(const QString &engine, const QString &status)
{
    if (engine == evernote)
        return PostFields::Note;
    return status == publish ? PostFields::Publish : status == draft ? PostFields::Draft : PostFields::New;
}

int PostFileWords::typeFrom(const QString &type)
{
    return type == page ? PostFields::Page : PostFields::Post;
}

QString PostFileWords::keywordIds(const QList<ZLTaxonomy> &taxonomies)
{
    QStringList ids;
    bool isAnyKnown = false;
    for (const ZLTaxonomy &taxonomy : taxonomies) {
        const bool changesKind = taxonomy.type != ZLTaxonomy::Tag && taxonomy.name.startsWith(u'#');
        const bool isUsable = !changesKind && !taxonomy.termId.isEmpty() && !taxonomy.termId.contains(u',');
        ids << (isUsable ? taxonomy.termId : QString());
        isAnyKnown |= isUsable;
    }
    return isAnyKnown ? ids.join(u',') : QString();
}

void PostFileWords::giveIds(QList<ZLTaxonomy> &taxonomies, const QString &ids)
{
    const QStringList each = ids.split(u',');
    if (ids.isEmpty() || each.size() != taxonomies.size())
        return;
    for (qsizetype at = 0; at < each.size(); ++at)
        taxonomies[at].termId = each[at].trimmed();
}
