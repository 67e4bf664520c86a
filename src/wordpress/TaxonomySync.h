#pragma once

#include "model/ZLTaxonomy.h"
#include "platform/ZLError.h"
#include "store/Account.h"
#include "xmlrpc/XMLRPCValue.h"

struct ZLServiceEnvironment;

/// The account's categories and tags, as the blog has them.
namespace TaxonomySync {
/// The terms of a reply for this type. Fails for a reply that is of no use. Runs on any thread.
Result<QList<TaxonomyPtr>> read(const XMLRPCValue &reply, int type);
/// The account's terms of this type become these, and the store keeps them.
void replace(Account &account, int type, const QList<TaxonomyPtr> &terms, const ZLServiceEnvironment &environment);
/// Adds what a post brought along, so that it is known before the next sync.
void add(Account &account, const QList<ZLTaxonomy> &terms, const ZLServiceEnvironment &environment);
} // namespace TaxonomySync
