#include "wordpress/TaxonomySync.h"

#include "platform/ZLLog.h"
#include "text/HTMLEntities.h"
#include "wordpress/SyncGroup.h"
#include "wordpress/ZLWordpressService.h"

/// How the replies for categories and for tags differ.
struct TaxonomySync::Kind {
    int type;
    QString nameKey;
    QString idKey;
    QString deletedLine;
    QString failureLine;
};

namespace {
QString termName(const XMLRPCValue &term, const QString &key)
{
    return HTMLEntities::stringByDecodingHTMLEntities(term[key].string());
}

QMultiHash<QString, TaxonomyPtr> byName(const QList<TaxonomyPtr> &taxonomies, int type)
{
    QMultiHash<QString, TaxonomyPtr> found;
    for (const TaxonomyPtr &taxonomy : taxonomies) {
        if (taxonomy->taxonomy_type == type)
            found.insert(taxonomy->name, taxonomy);
    }
    return found;
}

bool isKnown(const QList<TaxonomyPtr> &taxonomies, const ZLTaxonomy &term)
{
    return std::any_of(taxonomies.begin(), taxonomies.end(), [&](const TaxonomyPtr &taxonomy) {
        return taxonomy->taxonomy_type == term.type && taxonomy->name == term.name;
    });
}

TaxonomyPtr newTaxonomy(const QString &name, int type, const QString &id)
{
    auto taxonomy = std::make_shared<Taxonomy>();
    taxonomy->name = name;
    taxonomy->taxonomy_type = type;
    taxonomy->taxonomy_id = id;
    return taxonomy;
}

void logNoAccount()
{
    ZLLog(QStringLiteral("no selected account for this service. should return"));
}
} // namespace

TaxonomySync::TaxonomySync(
    ZLWordpressService &service, const ZLServiceEnvironment &environment, ServiceCalls &calls, SyncGroup &group)
    : m_service(service)
    , m_environment(environment)
    , m_calls(calls)
    , m_group(group)
{
}

void TaxonomySync::syncBlogTaxonomies()
{
    const RequestPtr categories = m_calls.blogRequest(QStringLiteral("metaWeblog.getCategories"));
    const RequestPtr tags = m_calls.blogRequest(QStringLiteral("wp.getTerms"), {QStringLiteral("post_tag")});
    m_group.add(categories);
    m_group.add(tags);
    m_calls.spawn(categories, ZLWordpressServiceRequestTypeSyncCategories);
    m_calls.spawn(tags, ZLWordpressServiceRequestTypeSyncTags);
}

void TaxonomySync::syncCategories(const XMLRPCValue &categories, const ZLWordpressXMLRPCRequest &call)
{
    static const Kind kind{ZLTaxonomy::Category, QStringLiteral("categoryName"), QStringLiteral("categoryId"),
        QStringLiteral("delete category: %1"), QStringLiteral("Whoops, couldn't save categories: %1")};
    syncTerms(categories, call, kind);
}

void TaxonomySync::syncTags(const XMLRPCValue &tags, const ZLWordpressXMLRPCRequest &call)
{
    static const Kind kind{ZLTaxonomy::Tag, QStringLiteral("name"), QStringLiteral("term_id"),
        QStringLiteral("delete tag: %1"), QStringLiteral("Whoops, couldn't save tags: %1")};
    syncTerms(tags, call, kind);
}

void TaxonomySync::syncTerms(const XMLRPCValue &terms, const ZLWordpressXMLRPCRequest &call, const Kind &kind)
{
    const AccountPtr account = call.isForCurrentBlog() ? m_service.account : call.additionalInfo.account;
    if (!account) {
        logNoAccount(); // and the call stays in its round
        return;
    }
    // A known term is left as it is, on purpose: terms go by name where an id has gone stale. Meant was to take a new
    // id from the blog as well.
    QMultiHash<QString, TaxonomyPtr> gone = byName(account->taxonomies, kind.type);
    const QSet<QString> known(gone.keyBegin(), gone.keyEnd());
    for (const XMLRPCValue &term : terms.array()) {
        const QString name = termName(term, kind.nameKey);
        if (const auto hit = gone.find(name); hit != gone.end())
            gone.erase(hit);
        else if (!name.isEmpty() && !known.contains(name))
            account->taxonomies.append(newTaxonomy(name, kind.type, term[kind.idKey].string()));
    }
    // An empty or unusable reply therefore wipes the list, on purpose: the next sync builds it again. Meant was that an
    // unusable one changes nothing.
    for (const TaxonomyPtr &taxonomy : std::as_const(gone))
        ZLLog(kind.deletedLine.arg(taxonomy->name));
    const QSet<TaxonomyPtr> removed(gone.cbegin(), gone.cend());
    account->taxonomies.removeIf([&](const TaxonomyPtr &taxonomy) { return removed.contains(taxonomy); });
    save(kind.failureLine);
    m_group.finish(call.currentRequest);
}

void TaxonomySync::syncTaxonomiesAfterPublish(const ZLWordpressPost &post)
{
    if (!m_service.account) {
        logNoAccount();
        return;
    }
    QList<TaxonomyPtr> &taxonomies = m_service.account->taxonomies;
    for (const ZLTaxonomy &taxonomy : post.taxonomies) {
        if (!isKnown(taxonomies, taxonomy))
            taxonomies.append(newTaxonomy(taxonomy.name, taxonomy.type, taxonomy.taxonomyId));
    }
    save(QStringLiteral("Whoops, couldn't save categories: %1")); // said for tags too
}

void TaxonomySync::save(const QString &failure)
{
    ZLManagedObjectContext *context = m_environment.context ? m_environment.context() : nullptr;
    if (!context)
        return;
    const Result<void> saved = context->save();
    if (!saved)
        ZLLog(failure.arg(saved.error().description));
}

void TaxonomySync::getTaxonomies()
{
    m_processedTaxonomies.clear();
    m_calls.spawn(
        m_calls.blogRequest(QStringLiteral("metaWeblog.getCategories")), ZLWordpressServiceRequestTypeGetCategories);
}

void TaxonomySync::addCategoriesToProcessedTaxonomies(const XMLRPCValue &categories)
{
    for (const XMLRPCValue &category : categories.array())
        m_processedTaxonomies.append({termName(category, QStringLiteral("categoryName")), {}, ZLTaxonomy::Category});
    m_calls.spawn(m_calls.blogRequest(QStringLiteral("wp.getTerms"), {QStringLiteral("post_tag")}),
        ZLWordpressServiceRequestTypeGetTags);
}

void TaxonomySync::addTagsToProcessedTaxonomies(const XMLRPCValue &tags)
{
    for (const XMLRPCValue &tag : tags.array())
        m_processedTaxonomies.append({termName(tag, QStringLiteral("name")), {}, ZLTaxonomy::Tag});
    if (m_service.delegate)
        m_service.delegate->didGetTaxonomies(&m_service, m_processedTaxonomies);
}
