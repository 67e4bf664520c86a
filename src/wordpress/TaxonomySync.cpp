#include "wordpress/TaxonomySync.h"

#include "platform/ZLLog.h"
#include "text/HTMLEntities.h"
#include "wordpress/ServiceFailures.h"
#include "wordpress/ZLWordpressService.h"

namespace {
TaxonomyPtr newTaxonomy(const QString &name, int type, const QString &id)
{
    auto taxonomy = std::make_shared<Taxonomy>();
    taxonomy->name = name;
    taxonomy->taxonomy_type = type;
    taxonomy->taxonomy_id = id;
    return taxonomy;
}

bool isKnown(const QList<TaxonomyPtr> &taxonomies, const ZLTaxonomy &term)
{
    return std::any_of(taxonomies.begin(), taxonomies.end(), [&](const TaxonomyPtr &taxonomy) {
        return taxonomy->taxonomy_type == term.type && taxonomy->name == term.name;
    });
}

bool isSame(const QList<TaxonomyPtr> &one, const QList<TaxonomyPtr> &other)
{
    return std::equal(
        one.begin(), one.end(), other.begin(), other.end(), [](const TaxonomyPtr &term, const TaxonomyPtr &otherTerm) {
            return term->name == otherTerm->name && term->taxonomy_id == otherTerm->taxonomy_id;
        });
}

void save(const ZLServiceEnvironment &environment)
{
    ZLManagedObjectContext *context = environment.context ? environment.context() : nullptr;
    if (!context)
        return;
    context->saveSoon([](const ZLError &error) {
        ZLLog(QStringLiteral("Whoops, couldn't save categories: %1").arg(error.description)); // tags, too
    });
}
} // namespace

Result<QList<TaxonomyPtr>> TaxonomySync::read(const XMLRPCValue &reply, int type)
{
    const bool isOfCategories = type == ZLTaxonomy::Category;
    const QString nameKey = isOfCategories ? QStringLiteral("categoryName") : QStringLiteral("name");
    const QString idKey = isOfCategories ? QStringLiteral("categoryId") : QStringLiteral("term_id");
    QList<TaxonomyPtr> terms;
    for (const XMLRPCValue &term : reply.array()) {
        const QString name = HTMLEntities::stringByDecodingHTMLEntities(term[nameKey].string());
        if (!name.isEmpty())
            terms.append(newTaxonomy(name, type, term[idKey].string()));
    }
    if (terms.isEmpty() && !reply.array().empty())
        return failure(ServiceFailures::unusable());
    return terms;
}

void TaxonomySync::replace(
    Account &account, int type, const QList<TaxonomyPtr> &terms, const ZLServiceEnvironment &environment)
{
    QList<TaxonomyPtr> earlier;
    QList<TaxonomyPtr> all;
    for (const TaxonomyPtr &taxonomy : std::as_const(account.taxonomies))
        (taxonomy->taxonomy_type == type ? earlier : all).append(taxonomy);
    if (isSame(earlier, terms))
        return;
    account.taxonomies = all + terms;
    save(environment);
}

void TaxonomySync::add(Account &account, const QList<ZLTaxonomy> &terms, const ZLServiceEnvironment &environment)
{
    const qsizetype known = account.taxonomies.size();
    for (const ZLTaxonomy &term : terms) {
        if (!isKnown(account.taxonomies, term))
            account.taxonomies.append(newTaxonomy(term.name, term.type, term.termId));
    }
    if (account.taxonomies.size() != known)
        save(environment);
}
