#include "store/StoreRows.h"

#include "store/StoreSchema.h"

#include <QHash>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

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
        m_query.prepare(statement);
        for (const QVariant &value : values)
            m_query.addBindValue(value);
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
    qint64 lastRowid() const { return m_query.lastInsertId().toLongLong(); }
    QString reason() const { return m_reason; }

private:
    QSqlQuery m_query;
    QString m_reason;
};

using Accounts = QHash<qint64, AccountPtr>;

QString dateText(const QDateTime &date)
{
    return date.isValid() ? date.toUTC().toString(Qt::ISODateWithMs) : QString();
}

/// The columns in the order in which they are read and written.
const QString preferencesColumns =
    QStringLiteral("account, allow_comments, allow_pingback, allow_notifications, default_article_type, "
                   "default_open_image_link, default_open_links, feature_image_width, feature_image_height, "
                   "thumb_image_width, thumb_image_height, full_image_as_default, recent_posts, use_feature_image, "
                   "login_automatically");

QVariant orNull(qint64 rowid)
{
    return rowid ? QVariant(rowid) : QVariant(QMetaType::fromType<qint64>());
}

std::shared_ptr<AccountPreferences> preferencesFrom(const QSqlQuery &row)
{
    auto found = std::make_shared<AccountPreferences>();
    found->allow_comments = row.value(1).toBool();
    found->allow_pingback = row.value(2).toBool();
    found->allow_notifications = row.value(3).toBool();
    found->default_article_type = row.value(4).toInt();
    found->default_open_image_link = row.value(5).toInt();
    found->default_open_links = row.value(6).toInt();
    found->feature_image_width = row.value(7).toInt();
    found->feature_image_height = row.value(8).toInt();
    found->thumb_image_width = row.value(9).toInt();
    found->thumb_image_height = row.value(10).toInt();
    found->full_image_as_default = row.value(11).toBool();
    found->recent_posts = row.value(12).toInt();
    found->use_feature_image = row.value(13).toBool();
    found->login_automatically.reset();
    if (!row.value(14).isNull())
        found->login_automatically = row.value(14).toBool();
    return found;
}

QVariantList valuesOf(const AccountPreferences &of, qint64 account)
{
    const QVariant automatically =
        of.login_automatically ? QVariant(int(*of.login_automatically)) : QVariant(QMetaType::fromType<int>());
    return {account, int(of.allow_comments), int(of.allow_pingback), int(of.allow_notifications),
        of.default_article_type, of.default_open_image_link, of.default_open_links, of.feature_image_width,
        of.feature_image_height, of.thumb_image_width, of.thumb_image_height, int(of.full_image_as_default),
        of.recent_posts, int(of.use_feature_image), automatically};
}

void readAccounts(Statements &sql, StoreRows::Objects &objects, Accounts &byRowid)
{
    sql.forEach(QStringLiteral("SELECT rowid, blog_name, name, type, url FROM Account ORDER BY position"),
        [&](const QSqlQuery &row) {
            auto account = std::make_shared<Account>();
            account->rowid = row.value(0).toLongLong();
            account->blog_name = row.value(1).toString();
            account->name = row.value(2).toString();
            account->type = row.value(3).toInt();
            account->url = row.value(4).toString();
            byRowid.insert(account->rowid, account);
            objects.accounts.append(account);
        });
}

void readBelongings(Statements &sql, const Accounts &accounts)
{
    sql.forEach(QStringLiteral("SELECT %1 FROM AccountPreferences").arg(preferencesColumns), [&](const QSqlQuery &row) {
        if (const AccountPtr account = accounts.value(row.value(0).toLongLong()))
            account->preferences = preferencesFrom(row);
    });
    sql.forEach(QStringLiteral("SELECT account, notebook_guid, last_synced FROM Evernote"), [&](const QSqlQuery &row) {
        if (const AccountPtr account = accounts.value(row.value(0).toLongLong()))
            account->evernote = std::make_shared<Evernote>(
                Evernote{row.value(1).toString(), QDateTime::fromString(row.value(2).toString(), Qt::ISODateWithMs)});
    });
    sql.forEach(
        QStringLiteral("SELECT account, name, taxonomy_id, taxonomy_type FROM Taxonomy ORDER BY account, position"),
        [&](const QSqlQuery &row) {
            if (const AccountPtr account = accounts.value(row.value(0).toLongLong()))
                account->taxonomies.append(std::make_shared<Taxonomy>(
                    Taxonomy{row.value(1).toString(), row.value(2).toString(), row.value(3).toInt()}));
        });
}

void readSelected(Statements &sql, StoreRows::Objects &objects, const Accounts &accounts)
{
    sql.forEach(
        QStringLiteral("SELECT rowid, date, account FROM SelectedAccount ORDER BY rowid"), [&](const QSqlQuery &row) {
            objects.selected.append(std::make_shared<SelectedAccount>(SelectedAccount{row.value(0).toLongLong(),
                QDateTime::fromString(row.value(1).toString(), Qt::ISODateWithMs),
                accounts.value(row.value(2).toLongLong())}));
        });
}

void writeBelongings(Statements &sql, const Account &account, qint64 rowid)
{
    if (account.preferences)
        sql.run(
            QStringLiteral("INSERT INTO AccountPreferences (%1) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
                .arg(preferencesColumns),
            valuesOf(*account.preferences, rowid));
    if (account.evernote)
        sql.run(QStringLiteral("INSERT INTO Evernote (account, notebook_guid, last_synced) VALUES (?, ?, ?)"),
            {rowid, account.evernote->notebook_guid, dateText(account.evernote->last_synced)});
    int position = 0;
    for (const TaxonomyPtr &taxonomy : account.taxonomies)
        sql.run(QStringLiteral("INSERT INTO Taxonomy (account, position, name, taxonomy_id, taxonomy_type) "
                               "VALUES (?, ?, ?, ?, ?)"),
            {rowid, position++, taxonomy->name, taxonomy->taxonomy_id, taxonomy->taxonomy_type});
}

} // namespace

Result<StoreRows::Objects> StoreRows::read(const QSqlDatabase &database)
{
    Statements sql(database);
    Objects objects;
    Accounts byRowid;
    readAccounts(sql, objects, byRowid);
    readBelongings(sql, byRowid);
    readSelected(sql, objects, byRowid);
    if (!sql.reason().isNull())
        return StoreSchema::databaseFailure(QStringLiteral("The account store could not be read"), sql.reason());
    return objects;
}

Result<void> StoreRows::write(QSqlDatabase database, const Objects &objects)
{
    const QString what = QStringLiteral("The account store could not be saved");
    if (!database.transaction())
        return StoreSchema::databaseFailure(what, database.lastError().text());
    Statements sql(database);
    QHash<const Account *, qint64> rowids;
    QList<qint64> selectedRowids;
    // The delete rules take what belongs to an account along.
    sql.run(QStringLiteral("DELETE FROM SelectedAccount"));
    sql.run(QStringLiteral("DELETE FROM Account"));
    int position = 0;
    for (const AccountPtr &account : objects.accounts) {
        sql.run(QStringLiteral(
                    "INSERT INTO Account (rowid, position, blog_name, name, type, url) VALUES (?, ?, ?, ?, ?, ?)"),
            {orNull(account->rowid), position++, account->blog_name, account->name, account->type, account->url});
        rowids.insert(account.get(), sql.lastRowid());
        writeBelongings(sql, *account, rowids.value(account.get()));
    }
    for (const SelectedAccountPtr &selected : objects.selected) {
        sql.run(QStringLiteral("INSERT INTO SelectedAccount (rowid, date, account) VALUES (?, ?, ?)"),
            {orNull(selected->rowid), dateText(selected->date), orNull(rowids.value(selected->account.get()))});
        selectedRowids.append(sql.lastRowid());
    }
    if (!sql.reason().isNull() || !database.commit()) {
        const QString reason = sql.reason().isNull() ? database.lastError().text() : sql.reason();
        database.rollback();
        return StoreSchema::databaseFailure(what, reason);
    }
    for (const AccountPtr &account : objects.accounts)
        account->rowid = rowids.value(account.get());
    for (qsizetype i = 0; i < selectedRowids.size(); ++i)
        objects.selected[i]->rowid = selectedRowids[i];
    return {};
}
