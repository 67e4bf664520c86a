#pragma once

#include "platform/ZLError.h"

#include <QSqlDatabase>

/// The tables of the account store and their versions.
namespace StoreSchema {
inline constexpr int currentVersion = 1;

/// Makes the tables of a new store, or carries an older one over, in one transaction for each step. Fails for a store
/// that a newer program has written.
[[nodiscard]] Result<void> migrate(QSqlDatabase &database);

/// What the database says of its last failure.
[[nodiscard]] tl::unexpected<ZLError> databaseFailure(const QString &what, const QString &reason);
} // namespace StoreSchema
