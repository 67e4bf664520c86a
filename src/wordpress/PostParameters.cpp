#include "wordpress/PostParameters.h"

#include "platform/ZLLog.h"
#include "wordpress/PostChanges.h"

namespace {
QString typeWord(const ZLWordpressPost &post)
{
    return post.type == ZLWordpressPost::Page ? QStringLiteral("page") : QStringLiteral("post");
}

QString openWord(bool open)
{
    return open ? QStringLiteral("open") : QStringLiteral("closed");
}

QString knownTermId(const AccountPtr &account, const ZLTaxonomy &term)
{
    if (!account)
        return {};
    for (const TaxonomyPtr &taxonomy : account->taxonomies) {
        if (taxonomy->taxonomy_type == term.type && taxonomy->name == term.name)
            return taxonomy->taxonomy_id;
    }
    return {};
}

/// The terms of one type, parted by how they go to the blog.
struct TermLists {
    TermLists(const ZLWordpressPost &post, int type, const PostParameters::Surroundings &surroundings)
    {
        for (const ZLTaxonomy &term : post.taxonomies) {
            if (term.type != type)
                continue;
            const QString known = term.termId.isEmpty() ? knownTermId(surroundings.account, term) : term.termId;
            if (known.isEmpty() || surroundings.termsByName)
                names.emplace_back(term.name); // the blog makes a term that it does not know
            else
                ids.emplace_back(known);
        }
    }

    XMLRPCArray ids;
    XMLRPCArray names;
};

void insertTerms(XMLRPCStruct &parameters, const ZLWordpressPost &post, PostChanges::Fields fields,
    const PostParameters::Surroundings &surroundings)
{
    if (post.type == ZLWordpressPost::Page) // a term on a page is a fault
        return;
    XMLRPCStruct terms;
    XMLRPCStruct names;
    const auto insert = [&](PostChanges::Field field, const QString &key, int type) {
        if (!fields.testFlag(field))
            return;
        TermLists lists(post, type, surroundings);
        // The blog keeps what is not named, so the removal of the last term is told by an empty list.
        const bool becameEmpty = surroundings.isUpdate && lists.ids.empty() && lists.names.empty();
        if (!lists.ids.empty() || becameEmpty)
            terms.insert(key, std::move(lists.ids));
        if (!lists.names.empty())
            names.insert(key, std::move(lists.names));
    };
    insert(PostChanges::Categories, QStringLiteral("category"), ZLTaxonomy::Category);
    insert(PostChanges::Tags, QStringLiteral("post_tag"), ZLTaxonomy::Tag);
    if (fields & (PostChanges::Categories | PostChanges::Tags)) {
        parameters.insert(QStringLiteral("terms"), std::move(terms));
        parameters.insert(QStringLiteral("terms_names"), std::move(names));
    }
}

QString thumbnailForBlog(const ZLWordpressPost &post, const QHash<QString, ZLWordpressImage> &images)
{
    if (!post.featuredImageId.isEmpty())
        return post.featuredImageId;
    if (post.featuredImageURL.isEmpty())
        return QStringLiteral("0"); // clears the thumbnail
    const auto image = images.constFind(post.featuredImageURL);
    if (image != images.constEnd())
        return image->id;
    ZLLog(QStringLiteral("Featured image not on dict, what should I do now? \n Let's remove it for now"));
    return QStringLiteral("");
}

XMLRPCArray namesOfType(const ZLWordpressPost &post, int type)
{
    XMLRPCArray names;
    for (const ZLTaxonomy &term : post.taxonomies) {
        if (term.type == type)
            names.emplace_back(term.name);
    }
    return names;
}
} // namespace

XMLRPCStruct PostParameters::forWPPost(const ZLWordpressPost &post, const Surroundings &surroundings)
{
    const bool isPartial = surroundings.isUpdate && !surroundings.isWhole && post.synced;
    const PostChanges::Fields fields =
        isPartial ? PostChanges::between(post, *post.synced) : PostChanges::Fields(PostChanges::all);
    XMLRPCStruct parameters;
    const auto insert = [&](PostChanges::Field field, const char *key, const XMLRPCValue &value) {
        if (fields.testFlag(field))
            parameters.setObjectIfNotNil(value, QString::fromLatin1(key));
    };
    insert(PostChanges::Title, "post_title", post.title);
    insert(PostChanges::Content, "post_content", post.content);
    insert(PostChanges::Date, "post_date_gmt", post.createdAt);
    insert(PostChanges::Status, "post_status", PostChanges::statusWord(post));
    insert(PostChanges::Type, "post_type", typeWord(post));
    insertTerms(parameters, post, fields, surroundings);
    if (!post.slug.isEmpty()) // else the blog makes one of the first title, or keeps the one that it has
        insert(PostChanges::Slug, "post_name", post.slug);
    insert(PostChanges::Comments, "comment_status", openWord(post.allowComments));
    insert(PostChanges::Pings, "ping_status", openWord(post.allowPingback));
    if (fields.testFlag(PostChanges::FeaturedImage))
        parameters.insert(QStringLiteral("post_thumbnail"), thumbnailForBlog(post, surroundings.syncedWPImages));
    return parameters;
}

XMLRPCStruct PostParameters::forPost(const ZLWordpressPost &post)
{
    // A note is a draft on this road, on purpose: this post is for a look only. Meant was one status on both roads.
    const bool isPublic = post.status == ZLWordpressPost::New || post.status == ZLWordpressPost::Publish;
    XMLRPCStruct parameters;
    parameters.setObjectIfNotNil(post.title, QStringLiteral("title"));
    parameters.setObjectIfNotNil(post.content, QStringLiteral("description"));
    parameters.setObjectIfNotNil(post.createdAt, QStringLiteral("date_created_gmt"));
    parameters.insert(QStringLiteral("post_status"), isPublic ? QStringLiteral("publish") : QStringLiteral("draft"));
    parameters.insert(QStringLiteral("post_type"), typeWord(post));
    parameters.insert(QStringLiteral("categories"), namesOfType(post, ZLTaxonomy::Category));
    parameters.insert(QStringLiteral("mt_keywords"), namesOfType(post, ZLTaxonomy::Tag));
    if (!post.slug.isEmpty())
        parameters.insert(QStringLiteral("wp_slug"), post.slug);
    parameters.insert(QStringLiteral("mt_allow_comments"), openWord(post.allowComments));
    parameters.insert(QStringLiteral("mt_allow_pings"), openWord(post.allowPingback));
    return parameters;
}

bool PostParameters::hasTermIds(const XMLRPCStruct &parameters)
{
    const XMLRPCValue *terms = parameters.find(u"terms");
    if (!terms)
        return false;
    const auto &lists = terms->structure().members();
    return std::any_of(lists.begin(), lists.end(), [](const auto &list) { return !list.second.array().empty(); });
}
