#pragma once

#include "platform/ZLError.h"
#include "store/Account.h"

#include <QSqlDatabase>

/// The rows of the account store as values, and the one place that speaks SQL for them.
namespace StoreRows {
/// More categories and tags than this are not kept of one account: they would hold up each start.
inline constexpr qsizetype mostTaxonomies = 50000;

struct AccountRow : AccountFields {
    int position = 0;
    std::optional<AccountPreferences> preferences;
    std::optional<Evernote> evernote;
    QList<Taxonomy> taxonomies;

    bool operator==(const AccountRow &) const = default;
};
struct SelectedRow {
    QDateTime date;
    qint64 account = 0; ///< 0 for none

    bool operator==(const SelectedRow &) const = default;
};
struct Rows {
    QList<AccountRow> accounts; ///< in their order
    QList<SelectedRow> selected;

    bool operator==(const Rows &) const = default;
};

[[nodiscard]] Result<Rows> read(const QSqlDatabase &database);
/// Brings the database from `before`, which it holds, to `after`, in one transaction; what is the same is not touched.
[[nodiscard]] Result<void> write(QSqlDatabase database, const Rows &before, const Rows &after);
} // namespace StoreRows
