#pragma once

#include "platform/ZLError.h"
#include "store/Account.h"

#include <QSqlDatabase>

/// The rows of the account store: the one place that speaks SQL.
namespace StoreRows {
struct Objects {
    QList<AccountPtr> accounts;
    QList<SelectedAccountPtr> selected;
};

[[nodiscard]] Result<Objects> read(const QSqlDatabase &database);
/// Replaces all rows by these objects, in one transaction; sets the rowid of new ones.
[[nodiscard]] Result<void> write(QSqlDatabase database, const Objects &objects);
} // namespace StoreRows
