#pragma once

#include "platform/ZLFileManager.h"
#include "store/Account.h"

/// Names of blogs name folders too, so that no two accounts may have the same.
namespace BlogNames {
/// The name without what could make it look like more than a name: line ends, control characters, and marks that change
/// the direction of writing.
QString oneLine(const QString &name);
/// A free name for the account: `wanted`, or with the blog's host behind it where another account files its posts under
/// `wanted` already; cut to what a folder can be called.
QString freeName(const QString &wanted, const AccountPtr &account, const QList<AccountPtr> &accounts);
/// Gives the later ones of accounts that share a name one of their own, and names that no folder can have a shorter
/// one. Answers whether any was changed.
bool separate(const QList<AccountPtr> &accounts);
} // namespace BlogNames
