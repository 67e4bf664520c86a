#pragma once

#include "model/ZLLocalPostRepresentation.h"
#include "platform/ZLError.h"
#include "store/Account.h"

class ZLAppDelegate;

/// Copies a post to another blog, as a new post that its server has not seen.
namespace PostCopier {
/// Gives the copy's file. Afterwards `account` is the current blog, unless it failed.
[[nodiscard]] Result<QUrl> copyPostToBlog(ZLAppDelegate &app, const LocalPostPtr &post, const AccountPtr &account);
} // namespace PostCopier
