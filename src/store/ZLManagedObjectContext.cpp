#include "store/ZLManagedObjectContext.h"

#include "store/StoreRows.h"
#include "store/StoreSchema.h"

#include <QDataStream>
#include <QDir>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>

namespace {

Result<void> madeFolder(const QString &directory)
{
    const QFileInfo info(directory);
    if (info.exists() && !info.isDir())
        return failure(QStringLiteral("YOUR_ERROR_DOMAIN"), 101,
            QStringLiteral("Expected a folder to store application data, found a file (%1).").arg(directory));
    if (!QDir().mkpath(directory))
        return failure(
            QStringLiteral("ZLStore"), 2, QStringLiteral("The folder “%1” could not be made.").arg(directory));
    return {};
}

Result<void> prepared(QSqlDatabase &database, const QString &file)
{
    database.setDatabaseName(file);
    const QString what = QStringLiteral("The account store “%1” could not be opened").arg(file);
    if (!database.open())
        return StoreSchema::databaseFailure(what, database.lastError().text());
    QSqlQuery query(database);
    // Delete rules hold only where they are asked for. A store that is not whole is refused before anything is written.
    for (const QString &pragma : {QStringLiteral("PRAGMA foreign_keys = ON"),
             QStringLiteral("PRAGMA synchronous = FULL"), QStringLiteral("SELECT count(*) FROM sqlite_master")})
        if (!query.exec(pragma))
            return StoreSchema::databaseFailure(what, query.lastError().text());
    query.finish();
    return StoreSchema::migrate(database);
}

void write(QDataStream &out, const AccountPreferences &of)
{
    out << of.allow_comments << of.allow_pingback << of.allow_notifications << of.default_article_type
        << of.default_open_image_link << of.default_open_links << of.feature_image_width << of.feature_image_height
        << of.thumb_image_width << of.thumb_image_height << of.full_image_as_default << of.recent_posts
        << of.use_feature_image << of.login_automatically.has_value() << of.login_automatically.value_or(false);
}

void write(QDataStream &out, const Account &account)
{
    out << account.blog_name << account.name << account.type << account.url << bool(account.preferences);
    if (account.preferences)
        write(out, *account.preferences);
    out << bool(account.evernote);
    if (account.evernote)
        out << account.evernote->notebook_guid << account.evernote->last_synced;
    out << account.taxonomies.size();
    for (const TaxonomyPtr &taxonomy : account.taxonomies)
        out << taxonomy->name << taxonomy->taxonomy_id << taxonomy->taxonomy_type;
}

} // namespace

ZLManagedObjectContext::ZLManagedObjectContext(const QString &connectionName)
    : m_connectionName(connectionName)
{
}

ZLManagedObjectContext::~ZLManagedObjectContext()
{
    QSqlDatabase::removeDatabase(m_connectionName);
}

QSqlDatabase ZLManagedObjectContext::database() const
{
    return QSqlDatabase::database(m_connectionName, false);
}

Result<std::unique_ptr<ZLManagedObjectContext>> ZLManagedObjectContext::open(const QString &directory)
{
    if (const auto folder = madeFolder(directory); !folder)
        return failure(folder.error());
    const QString name = QStringLiteral("zalmo-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    std::unique_ptr<ZLManagedObjectContext> context(new ZLManagedObjectContext(name));
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
    if (const auto ready = prepared(database, directory + QStringLiteral("/Zalmo.storedata")); !ready)
        return failure(ready.error());
    Result<StoreRows::Objects> objects = StoreRows::read(database);
    if (!objects)
        return failure(objects.error());
    context->m_accounts = objects->accounts;
    context->m_selected = objects->selected;
    context->m_saved = context->snapshot();
    return context;
}

AccountPtr ZLManagedObjectContext::insertAccount()
{
    m_accounts.append(std::make_shared<Account>());
    return m_accounts.last();
}

void ZLManagedObjectContext::deleteAccount(const AccountPtr &account)
{
    m_accounts.removeAll(account);
    for (const SelectedAccountPtr &selected : m_selected)
        if (selected->account == account)
            selected->account.reset();
}

SelectedAccountPtr ZLManagedObjectContext::insertSelectedAccount()
{
    m_selected.append(std::make_shared<SelectedAccount>());
    return m_selected.last();
}

void ZLManagedObjectContext::deleteSelectedAccount(const SelectedAccountPtr &selected)
{
    m_selected.removeAll(selected);
}

QByteArray ZLManagedObjectContext::snapshot() const
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    for (const AccountPtr &account : m_accounts)
        write(out, *account);
    for (const SelectedAccountPtr &selected : m_selected)
        out << selected->date << m_accounts.indexOf(selected->account);
    return bytes;
}

bool ZLManagedObjectContext::hasChanges() const
{
    return snapshot() != m_saved;
}

Result<void> ZLManagedObjectContext::save()
{
    const Result<void> written = StoreRows::write(database(), {m_accounts, m_selected});
    if (written)
        m_saved = snapshot();
    return written;
}
