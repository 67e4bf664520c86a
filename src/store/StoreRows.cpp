#include "store/StoreRows.h"

#include "store/PreferenceFields.h"
#include "store/StoreSchema.h"

#include <QHash>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

using StoreRows::AccountRow;
using StoreRows::SelectedRow;

namespace {

/// Runs prepared statements one after another and remembers the first failure, so that a tale of many statements can
/// be read without a test after each.
class Statements {
public:
    explicit Statements(const QSqlDatabase &database)
        : m_query(database)
    {
    }

    bool run(const QString &statement, const QVariantList &values = {})
    {
        if (!m_reason.isNull())
            return false;
        if (statement != m_prepared)
            m_query.prepare(statement);
        m_prepared = statement;
        for (qsizetype at = 0; at < values.size(); ++at)
            m_query.bindValue(int(at), values[at]);
        if (!m_query.exec())
            m_reason = m_query.lastError().text();
        return m_reason.isNull();
    }
    template <class Row>
    void forEach(const QString &statement, Row row)
    {
        for (bool more = run(statement) && m_query.next(); more; more = m_query.next())
            row(m_query);
    }
    QString reason() const { return m_reason; }

private:
    QSqlQuery m_query;
    QString m_prepared;
    QString m_reason;
};

QString dateText(const QDateTime &date)
{
    return date.isValid() ? date.toUTC().toString(Qt::ISODateWithMs) : QString();
}

QDateTime dateFrom(const QVariant &value)
{
    return QDateTime::fromString(value.toString(), Qt::ISODateWithMs);
}

/// Of the account and its preferences, in the order in which they are read and written.
QString preferencesColumns()
{
    QStringList columns{QStringLiteral("account")};
    for (const PreferenceField &field : preferenceFields())
        columns << field.name;
    return columns.join(QStringLiteral(", "));
}

AccountPreferences preferencesFrom(const QSqlQuery &row)
{
    AccountPreferences found;
    int column = 0;
    for (const PreferenceField &field : preferenceFields())
        field.set(found, row.value(++column));
    return found;
}

void readAccounts(Statements &sql, QList<AccountRow> &accounts)
{
    sql.forEach(QStringLiteral("SELECT rowid, blog_name, name, type, url FROM Account ORDER BY position"),
        [&](const QSqlQuery &row) {
            AccountRow account;
            account.rowid = row.value(0).toLongLong();
            account.position = int(accounts.size());
            account.blog_name = row.value(1).toString();
            account.name = row.value(2).toString();
            account.type = row.value(3).toInt();
            account.url = row.value(4).toString();
            accounts.append(account);
        });
}

void readBelongings(Statements &sql, QList<AccountRow> &accounts)
{
    QHash<qint64, AccountRow *> byRowid;
    for (AccountRow &account : accounts)
        byRowid.insert(account.rowid, &account);
    const auto forEachOfAccount = [&](const QString &statement, auto take) {
        sql.forEach(statement, [&](const QSqlQuery &row) {
            if (AccountRow *account = byRowid.value(row.value(0).toLongLong()))
                take(*account, row);
        });
    };
    forEachOfAccount(QStringLiteral("SELECT %1 FROM AccountPreferences").arg(preferencesColumns()),
        [](AccountRow &account, const QSqlQuery &row) { account.preferences = preferencesFrom(row); });
    forEachOfAccount(QStringLiteral("SELECT account, notebook_guid, last_synced FROM Evernote"),
        [](AccountRow &account, const QSqlQuery &row) {
            account.evernote = Evernote{row.value(1).toString(), dateFrom(row.value(2))};
        });
    forEachOfAccount(
        QStringLiteral("SELECT account, name, taxonomy_id, taxonomy_type FROM Taxonomy ORDER BY account, position"),
        [](AccountRow &account, const QSqlQuery &row) {
            account.taxonomies.append({row.value(1).toString(), row.value(2).toString(), row.value(3).toInt()});
        });
}

void readSelected(Statements &sql, QList<SelectedRow> &selected)
{
    sql.forEach(QStringLiteral("SELECT date, account FROM SelectedAccount ORDER BY rowid"), [&](const QSqlQuery &row) {
        selected.append({dateFrom(row.value(0)), row.value(1).toLongLong()});
    });
}

void writePreferences(Statements &sql, const AccountRow &account)
{
    if (!account.preferences) {
        sql.run(QStringLiteral("DELETE FROM AccountPreferences WHERE account = ?"), {account.rowid});
        return;
    }
    QVariantList values{account.rowid};
    for (const PreferenceField &field : preferenceFields())
        values << field.of(*account.preferences);
    const QString places = QStringLiteral("?") + QStringLiteral(", ?").repeated(values.size() - 1);
    sql.run(
        QStringLiteral("INSERT OR REPLACE INTO AccountPreferences (%1) VALUES (%2)").arg(preferencesColumns(), places),
        values);
}

void writeEvernote(Statements &sql, const AccountRow &account)
{
    if (!account.evernote) {
        sql.run(QStringLiteral("DELETE FROM Evernote WHERE account = ?"), {account.rowid});
        return;
    }
    sql.run(QStringLiteral("INSERT OR REPLACE INTO Evernote (account, notebook_guid, last_synced) VALUES (?, ?, ?)"),
        {account.rowid, account.evernote->notebook_guid, dateText(account.evernote->last_synced)});
}

void writeTaxonomies(Statements &sql, const AccountRow &account, const QList<Taxonomy> &before)
{
    const QString replace = QStringLiteral("INSERT OR REPLACE INTO Taxonomy (account, position, name, taxonomy_id, "
                                           "taxonomy_type) VALUES (?, ?, ?, ?, ?)");
    for (qsizetype at = 0; at < account.taxonomies.size(); ++at) {
        const Taxonomy &taxonomy = account.taxonomies[at];
        if (at >= before.size() || before[at] != taxonomy)
            sql.run(replace, {account.rowid, at, taxonomy.name, taxonomy.taxonomy_id, taxonomy.taxonomy_type});
    }
    if (account.taxonomies.size() < before.size())
        sql.run(QStringLiteral("DELETE FROM Taxonomy WHERE account = ? AND position >= ?"),
            {account.rowid, account.taxonomies.size()});
}

void writeAccount(Statements &sql, const AccountRow &account, const AccountRow &before)
{
    if (account == before)
        return;
    sql.run(
        QStringLiteral("INSERT INTO Account (rowid, position, blog_name, name, type, url) VALUES (?, ?, ?, ?, ?, ?) "
                       "ON CONFLICT (rowid) DO UPDATE SET position = excluded.position, "
                       "blog_name = excluded.blog_name, name = excluded.name, type = excluded.type, "
                       "url = excluded.url"),
        {account.rowid, account.position, account.blog_name, account.name, account.type, account.url});
    if (account.preferences != before.preferences)
        writePreferences(sql, account);
    if (account.evernote != before.evernote)
        writeEvernote(sql, account);
    writeTaxonomies(sql, account, before.taxonomies);
}

void writeAccounts(Statements &sql, const QList<AccountRow> &before, const QList<AccountRow> &after)
{
    QHash<qint64, AccountRow> gone;
    for (const AccountRow &account : before)
        gone.insert(account.rowid, account);
    QList<AccountRow> known;
    for (const AccountRow &account : after)
        known << gone.take(account.rowid);
    for (auto account = gone.keyBegin(); account != gone.keyEnd(); ++account)
        sql.run(QStringLiteral("DELETE FROM Account WHERE rowid = ?"), {*account}); // and what belongs to it
    for (qsizetype at = 0; at < after.size(); ++at)
        writeAccount(sql, after[at], known[at]);
}

void writeSelected(Statements &sql, const QList<SelectedRow> &selected)
{
    sql.run(QStringLiteral("DELETE FROM SelectedAccount"));
    for (const SelectedRow &row : selected)
        sql.run(QStringLiteral("INSERT INTO SelectedAccount (date, account) VALUES (?, ?)"),
            {dateText(row.date), row.account ? QVariant(row.account) : QVariant(QMetaType::fromType<qint64>())});
}

} // namespace

Result<StoreRows::Rows> StoreRows::read(const QSqlDatabase &database)
{
    Statements sql(database);
    Rows rows;
    readAccounts(sql, rows.accounts);
    readBelongings(sql, rows.accounts);
    readSelected(sql, rows.selected);
    if (!sql.reason().isNull())
        return StoreSchema::databaseFailure(QStringLiteral("The account store could not be read"), sql.reason());
    return rows;
}

Result<void> StoreRows::write(QSqlDatabase database, const Rows &before, const Rows &after)
{
    const QString what = QStringLiteral("The account store could not be saved");
    if (before == after)
        return {};
    if (!database.transaction())
        return StoreSchema::databaseFailure(what, database.lastError().text());
    Statements sql(database);
    writeAccounts(sql, before.accounts, after.accounts);
    if (before.selected != after.selected)
        writeSelected(sql, after.selected);
    if (sql.reason().isNull() && database.commit())
        return {};
    const QString reason = sql.reason().isNull() ? database.lastError().text() : sql.reason();
    database.rollback();
    return StoreSchema::databaseFailure(what, reason);
}
