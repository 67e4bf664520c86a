#include "store/ZLManagedObjectContext.h"

#include "platform/ZLAtomicFile.h"
#include "platform/ZLFileManager.h"
#include "platform/ZLLog.h"
#include "store/StoreSchema.h"

#include <QFileInfo>
#include <QHash>
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
    if (!ZLFileManager::makeFolder(directory))
        return failure(
            QStringLiteral("ZLStore"), 2, QStringLiteral("The folder “%1” could not be made.").arg(directory));
    return {};
}

Result<void> opened(QSqlDatabase &database, const QString &file)
{
    database.setDatabaseName(file);
    const QString what = QStringLiteral("The account store “%1” could not be opened").arg(file);
    ZLAtomicFile::makePrivate(file); // a failure shows in the next line
    if (!database.open())
        return StoreSchema::databaseFailure(what, database.lastError().text());
    QSqlQuery query(database);
    // Delete rules hold only where they are asked for, and what is deleted is not to stay readable in the file. A store
    // that is not whole is refused before anything is written.
    for (const QString &pragma :
        {QStringLiteral("PRAGMA foreign_keys = ON"), QStringLiteral("PRAGMA synchronous = FULL"),
            QStringLiteral("PRAGMA secure_delete = ON"), QStringLiteral("SELECT count(*) FROM sqlite_master")})
        if (!query.exec(pragma))
            return StoreSchema::databaseFailure(what, query.lastError().text());
    return {};
}

QString newConnectionName()
{
    return QStringLiteral("zalmo-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
}

/// On a thread of its own, and so over a connection of its own.
Result<void> writeApart(const QString &file, const StoreRows::Rows &before, const StoreRows::Rows &after)
{
    const QString name = newConnectionName();
    Result<void> written;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        written = opened(database, file);
        if (written)
            written = StoreRows::write(database, before, after);
    }
    QSqlDatabase::removeDatabase(name);
    return written;
}

template <class Value>
std::optional<Value> valueOf(const std::shared_ptr<Value> &pointer)
{
    return pointer ? std::optional(*pointer) : std::nullopt;
}

StoreRows::AccountRow rowOf(const Account &account, int position)
{
    StoreRows::AccountRow row{{account}, position, valueOf(account.preferences), valueOf(account.evernote), {}};
    (void)AddressLogin::takenFrom(row.url); // no password goes into the file, whoever put it there
    const qsizetype count = qMin(account.taxonomies.size(), StoreRows::mostTaxonomies);
    row.taxonomies.reserve(count);
    for (qsizetype at = 0; at < count; ++at)
        row.taxonomies.append(*account.taxonomies[at]);
    return row;
}

AccountPtr accountOf(const StoreRows::AccountRow &row)
{
    auto account = std::make_shared<Account>();
    static_cast<AccountFields &>(*account) = row;
    if (row.preferences)
        account->preferences = std::make_shared<AccountPreferences>(*row.preferences);
    if (row.evernote)
        account->evernote = std::make_shared<Evernote>(*row.evernote);
    for (const Taxonomy &taxonomy : row.taxonomies)
        account->taxonomies.append(std::make_shared<Taxonomy>(taxonomy));
    return account;
}

} // namespace

ZLManagedObjectContext::ZLManagedObjectContext(const QString &connectionName, const QString &file)
    : m_connectionName(connectionName)
    , m_file(file)
{
}

ZLManagedObjectContext::~ZLManagedObjectContext()
{
    while (m_written.valid())
        finishWriting();
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
    const QString name = newConnectionName();
    const QString file = directory + QStringLiteral("/Zalmo.storedata");
    std::unique_ptr<ZLManagedObjectContext> context(new ZLManagedObjectContext(name, file));
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
    if (const auto ready = opened(database, file); !ready)
        return failure(ready.error());
    if (const auto current = StoreSchema::migrate(database); !current)
        return failure(current.error());
    const Result<StoreRows::Rows> rows = StoreRows::read(database);
    if (!rows)
        return failure(rows.error());
    context->take(*rows);
    return context;
}

void ZLManagedObjectContext::take(const StoreRows::Rows &rows)
{
    QHash<qint64, AccountPtr> byRowid;
    for (const StoreRows::AccountRow &row : rows.accounts) {
        const AccountPtr account = accountOf(row);
        if (const std::optional<AddressLogin> login = AddressLogin::takenFrom(account->url))
            m_storedLogins.append({account, *login});
        byRowid.insert(row.rowid, account);
        m_accounts.append(account);
    }
    for (const StoreRows::SelectedRow &row : rows.selected)
        m_selected.append(std::make_shared<SelectedAccount>(SelectedAccount{row.date, byRowid.value(row.account)}));
    m_saved = rows;
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

StoreRows::Rows ZLManagedObjectContext::rows() const
{
    StoreRows::Rows rows;
    for (const AccountPtr &account : m_accounts)
        rows.accounts.append(rowOf(*account, int(rows.accounts.size())));
    for (const SelectedAccountPtr &selected : m_selected)
        rows.selected.append({selected->date, selected->account ? selected->account->rowid : 0});
    return rows;
}

StoreRows::Rows ZLManagedObjectContext::rowsToSave()
{
    qint64 highest = 0;
    for (const AccountPtr &account : m_accounts)
        highest = qMax(highest, account->rowid);
    for (const StoreRows::AccountRow &row : m_saved.accounts)
        highest = qMax(highest, row.rowid);
    for (const AccountPtr &account : m_accounts) {
        if (account->rowid == 0)
            account->rowid = ++highest;
        if (account->taxonomies.size() > StoreRows::mostTaxonomies)
            ZLLog(QStringLiteral("%1 has %2 categories and tags; only the first %3 are kept")
                      .arg(account->alias())
                      .arg(account->taxonomies.size())
                      .arg(StoreRows::mostTaxonomies));
    }
    return rows();
}

bool ZLManagedObjectContext::hasChanges() const
{
    return rows() != m_saved;
}

Result<void> ZLManagedObjectContext::save()
{
    m_writesAgain = false; // what is in memory now goes along
    if (m_written.valid())
        finishWriting();
    const StoreRows::Rows now = rowsToSave();
    const Result<void> written = StoreRows::write(database(), m_saved, now);
    if (written)
        m_saved = now;
    return written;
}

void ZLManagedObjectContext::saveSoon(const std::function<void(const ZLError &)> &didFail)
{
    m_didFail = didFail;
    m_writesAgain = true;
    if (!m_written.valid())
        startWriting();
}

void ZLManagedObjectContext::startWriting()
{
    m_writesAgain = false;
    m_writing = rowsToSave();
    m_written = std::async(
        std::launch::async, [this, before = m_saved, after = m_writing, file = m_file, number = ++m_writings] {
            Result<void> written = writeApart(file, before, after);
            QMetaObject::invokeMethod(
                &m_mainThread,
                [this, number] {
                    if (m_written.valid() && number == m_writings) // else somebody has waited for it
                        finishWriting();
                },
                Qt::QueuedConnection);
            return written;
        });
}

void ZLManagedObjectContext::finishWriting()
{
    const Result<void> written = m_written.get();
    if (written)
        m_saved = std::exchange(m_writing, {});
    else if (m_didFail)
        m_didFail(written.error());
    if (m_writesAgain)
        startWriting();
}
