#pragma once

#include "model/ZLLocalPostRepresentation.h"
#include "store/Account.h"

#include <functional>

class ZLAppDelegate;

/// Copies a post to another blog, as a new post that its server has not seen.
namespace PostCopier {
/// Afterwards `account` is the current blog and `then` gets the copy's file. A failure is logged and ends it.
void copyPostToBlog(ZLAppDelegate &app, const LocalPostPtr &post, const AccountPtr &account,
    const std::function<void(const QUrl &)> &then);
} // namespace PostCopier
