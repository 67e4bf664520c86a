#include "wordpress/PostParameters.h"

#include "platform/ZLLog.h"

#include <array>

namespace {
const QString &publishWord()
{
    static const QString word = QStringLiteral("publish");
    return word;
}

const QString &draftWord()
{
    static const QString word = QStringLiteral("draft");
    return word;
}

QString typeWord(const ZLWordpressPost &post)
{
    return post.type == ZLWordpressPost::Page ? QStringLiteral("page") : QStringLiteral("post");
}

QString openWord(bool open)
{
    return open ? QStringLiteral("open") : QStringLiteral("closed");
}

QString slugForBlog(const ZLWordpressPost &post)
{
    return post.slug.isEmpty() ? post.title : post.slug;
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
    QString key;
    XMLRPCArray ids;
    XMLRPCArray names;
};

std::array<TermLists, 2> termLists(const ZLWordpressPost &post, const PostParameters::Surroundings &surroundings)
{
    std::array<TermLists, 2> lists{{{QStringLiteral("category"), {}, {}}, {QStringLiteral("post_tag"), {}, {}}}};
    for (const ZLTaxonomy &term : post.taxonomies) {
        if (term.type != ZLTaxonomy::Category && term.type != ZLTaxonomy::Tag)
            continue;
        TermLists &list = lists[term.type == ZLTaxonomy::Category ? 0 : 1];
        const QString id = surroundings.termsByName ? QString() : knownTermId(surroundings.account, term);
        if (id.isNull())
            list.names.emplace_back(term.name); // the blog makes a term that it does not know
        else
            list.ids.emplace_back(id);
    }
    return lists;
}

void insertTerms(
    XMLRPCStruct &parameters, const ZLWordpressPost &post, const PostParameters::Surroundings &surroundings)
{
    if (post.type == ZLWordpressPost::Page) // a term on a page is a fault
        return;
    XMLRPCStruct terms;
    XMLRPCStruct names;
    for (TermLists &list : termLists(post, surroundings)) {
        // The blog keeps what is not named, so the removal of the last term is told by an empty list.
        const bool becameEmpty = surroundings.isUpdate && list.ids.empty() && list.names.empty();
        if (!list.ids.empty() || becameEmpty)
            terms.insert(list.key, std::move(list.ids));
        if (!list.names.empty())
            names.insert(list.key, std::move(list.names));
    }
    parameters.insert(QStringLiteral("terms"), std::move(terms));
    parameters.insert(QStringLiteral("terms_names"), std::move(names));
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
    const bool isPublic = post.status == ZLWordpressPost::New || post.status == ZLWordpressPost::Publish
        || post.status == ZLWordpressPost::Note;
    XMLRPCStruct parameters;
    parameters.setObjectIfNotNil(post.title, QStringLiteral("post_title"));
    parameters.setObjectIfNotNil(post.content, QStringLiteral("post_content"));
    parameters.setObjectIfNotNil(post.createdAt, QStringLiteral("post_date_gmt"));
    parameters.insert(QStringLiteral("post_status"), isPublic ? publishWord() : draftWord());
    parameters.insert(QStringLiteral("post_type"), typeWord(post));
    insertTerms(parameters, post, surroundings);
    parameters.setObjectIfNotNil(slugForBlog(post), QStringLiteral("post_name"));
    parameters.insert(QStringLiteral("comment_status"), openWord(post.allowComments));
    parameters.insert(QStringLiteral("ping_status"), openWord(post.allowPingback));
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
    parameters.insert(QStringLiteral("post_status"), isPublic ? publishWord() : draftWord());
    parameters.insert(QStringLiteral("post_type"), typeWord(post));
    parameters.insert(QStringLiteral("categories"), namesOfType(post, ZLTaxonomy::Category));
    parameters.insert(QStringLiteral("mt_keywords"), namesOfType(post, ZLTaxonomy::Tag));
    parameters.setObjectIfNotNil(slugForBlog(post), QStringLiteral("wp_slug"));
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
