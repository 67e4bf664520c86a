#include "wordpress/PostChanges.h"

namespace {
qint64 minute(const QDateTime &date)
{
    return date.isValid() ? date.toSecsSinceEpoch() / 60 : -1;
}

QStringList names(const ZLWordpressPost &post, int type)
{
    QStringList names;
    for (const ZLTaxonomy &term : post.taxonomies) {
        if (term.type == type)
            names.append(term.name);
    }
    names.sort();
    return names;
}
} // namespace

PostChanges::Fields PostChanges::between(const ZLWordpressPost &one, const ZLWordpressPost &other)
{
    Fields changed;
    changed.setFlag(Title, one.title != other.title);
    changed.setFlag(Content, one.content != other.content);
    changed.setFlag(Date, minute(one.createdAt) != minute(other.createdAt));
    changed.setFlag(Status, statusWord(one) != statusWord(other));
    changed.setFlag(Type, one.type != other.type);
    changed.setFlag(Categories, names(one, ZLTaxonomy::Category) != names(other, ZLTaxonomy::Category));
    changed.setFlag(Tags, names(one, ZLTaxonomy::Tag) != names(other, ZLTaxonomy::Tag));
    changed.setFlag(Slug, one.slug != other.slug);
    changed.setFlag(Comments, one.allowComments != other.allowComments);
    changed.setFlag(Pings, one.allowPingback != other.allowPingback);
    changed.setFlag(
        FeaturedImage, one.featuredImageId != other.featuredImageId || one.featuredImageURL != other.featuredImageURL);
    return changed;
}

QString PostChanges::statusWord(const ZLWordpressPost &post)
{
    switch (post.status) {
    case ZLWordpressPost::New:
    case ZLWordpressPost::Note:
    case ZLWordpressPost::Publish:
        return post.blogStatus == QLatin1String("private") ? post.blogStatus : QStringLiteral("publish");
    default:
        return post.blogStatus == QLatin1String("pending") ? post.blogStatus : QStringLiteral("draft");
    }
}
