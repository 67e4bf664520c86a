#pragma once

#include "model/ZLTaxonomy.h"
#include "wordpress/ServiceCalls.h"

class SyncGroup;
struct ZLServiceEnvironment;

/// Keeps the account's categories and tags in step with the blog's. Terms are matched by exact name and type.
class TaxonomySync {
public:
    TaxonomySync(
        ZLWordpressService &service, const ZLServiceEnvironment &environment, ServiceCalls &calls, SyncGroup &group);

    void syncBlogTaxonomies();
    void syncCategories(const XMLRPCValue &categories, const ZLWordpressXMLRPCRequest &call);
    void syncTags(const XMLRPCValue &tags, const ZLWordpressXMLRPCRequest &call);
    /// Adds what a post brought along, so that it is known before the next sync.
    void syncTaxonomiesAfterPublish(const ZLWordpressPost &post);

    // The list-only road: both replies in turn, since the list must be whole before it is told.
    void getTaxonomies();
    void addCategoriesToProcessedTaxonomies(const XMLRPCValue &categories);
    void addTagsToProcessedTaxonomies(const XMLRPCValue &tags);
    void cleanData() { m_processedTaxonomies.clear(); }

private:
    struct Kind;
    void syncTerms(const XMLRPCValue &terms, const ZLWordpressXMLRPCRequest &call, const Kind &kind);
    void save(const QString &failure);

    ZLWordpressService &m_service;
    const ZLServiceEnvironment &m_environment;
    ServiceCalls &m_calls;
    SyncGroup &m_group;
    QList<ZLTaxonomy> m_processedTaxonomies;
};
