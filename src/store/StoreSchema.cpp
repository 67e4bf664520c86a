#include "store/StoreSchema.h"

#include "store/PreferenceFields.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>
#include <QVariant>
#include <array>

namespace {

/// The statements that lead from version n to n + 1 stand at index n. Never change one that was shipped: add a step.
const std::array<QStringList, StoreSchema::currentVersion> &steps()
{
    static const std::array<QStringList, StoreSchema::currentVersion> all = {QStringList{
        QStringLiteral("CREATE TABLE Account (rowid INTEGER PRIMARY KEY, position INTEGER NOT NULL, blog_name TEXT, "
                       "name TEXT, type INTEGER NOT NULL DEFAULT 0, url TEXT)"),
        QStringLiteral("CREATE TABLE AccountPreferences ("
                       "account INTEGER PRIMARY KEY REFERENCES Account (rowid) ON DELETE CASCADE, "
                       "allow_comments INTEGER NOT NULL, allow_pingback INTEGER NOT NULL, "
                       "allow_notifications INTEGER NOT NULL, default_article_type INTEGER NOT NULL, "
                       "default_open_image_link INTEGER NOT NULL, default_open_links INTEGER NOT NULL, "
                       "feature_image_width INTEGER NOT NULL, feature_image_height INTEGER NOT NULL, "
                       "thumb_image_width INTEGER NOT NULL, thumb_image_height INTEGER NOT NULL, "
                       "full_image_as_default INTEGER NOT NULL, recent_posts INTEGER NOT NULL, "
                       "use_feature_image INTEGER NOT NULL, login_automatically INTEGER)"),
        QStringLiteral(
            "CREATE TABLE Evernote (account INTEGER PRIMARY KEY REFERENCES Account (rowid) ON DELETE CASCADE, "
            "notebook_guid TEXT, last_synced TEXT)"),
        QStringLiteral("CREATE TABLE Taxonomy (account INTEGER NOT NULL REFERENCES Account (rowid) ON DELETE CASCADE, "
                       "position INTEGER NOT NULL, name TEXT, taxonomy_id TEXT, taxonomy_type INTEGER NOT NULL, "
                       "PRIMARY KEY (account, position)) WITHOUT ROWID"),
        QStringLiteral("CREATE TABLE SelectedAccount (rowid INTEGER PRIMARY KEY, date TEXT, "
                       "account INTEGER REFERENCES Account (rowid) ON DELETE SET NULL)"),
    }};
    return all;
}

Result<void> runStep(QSqlDatabase &database, int version)
{
    const QString what = QStringLiteral("The account store could not be brought up to date");
    QSqlQuery query(database);
    bool good = database.transaction();
    for (const QString &statement : steps().at(size_t(version)))
        good = good && query.exec(statement);
    good = good && query.exec(QStringLiteral("PRAGMA user_version = %1").arg(version + 1));
    if (good && database.commit())
        return {};
    const QString reason = good ? database.lastError().text() : query.lastError().text();
    database.rollback();
    return StoreSchema::databaseFailure(what, reason);
}

/// A preference that is newer than the store gets its column, with its starting value for the accounts that are there.
Result<void> addMissingPreferences(QSqlDatabase &database)
{
    const QString table = QStringLiteral("AccountPreferences");
    const QSqlRecord columns = database.record(table);
    QSqlQuery query(database);
    for (const PreferenceField &field : preferenceFields()) {
        const QVariant start = field.startingValue();
        const QString value = start.isNull() ? QStringLiteral("NULL") : start.toString();
        const QString add =
            QStringLiteral("ALTER TABLE %1 ADD COLUMN %2 INTEGER DEFAULT %3").arg(table, field.name, value);
        if (!columns.contains(field.name) && !query.exec(add))
            return StoreSchema::databaseFailure(
                QStringLiteral("The account store could not be brought up to date"), query.lastError().text());
    }
    return {};
}

} // namespace

tl::unexpected<ZLError> StoreSchema::databaseFailure(const QString &what, const QString &reason)
{
    return failure(QStringLiteral("ZLStore"), 1, QStringLiteral("%1: %2").arg(what, reason.simplified()));
}

Result<void> StoreSchema::migrate(QSqlDatabase &database)
{
    QSqlQuery query(database);
    if (!query.exec(QStringLiteral("PRAGMA user_version")) || !query.next())
        return databaseFailure(QStringLiteral("The account store could not be read"), query.lastError().text());
    const int found = query.value(0).toInt();
    query.finish();
    if (found > currentVersion)
        return databaseFailure(QStringLiteral("The account store could not be read"),
            QStringLiteral("it was written by a newer version of Zalmo"));
    for (int version = found; version < currentVersion; ++version)
        if (const auto step = runStep(database, version); !step)
            return step;
    return addMissingPreferences(database);
}
