#include "store/ZLManagedObjectContext.h"

#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

namespace {

std::unique_ptr<ZLManagedObjectContext> opened(const QString &directory)
{
    auto context = ZLManagedObjectContext::open(directory);
    return context ? std::move(*context) : nullptr;
}

/// An account with everything that the store can keep.
AccountPtr filled(ZLManagedObjectContext &context, const QString &name)
{
    const AccountPtr account = context.insertAccount();
    account->name = name;
    account->blog_name = name + QStringLiteral(" & Co");
    account->url = QStringLiteral("http://127.0.0.1/") + name;
    account->preferences = std::make_shared<AccountPreferences>();
    account->preferences->login_automatically = false;
    account->preferences->feature_image_width = 111;
    account->evernote = std::make_shared<Evernote>(Evernote{QStringLiteral("guid"), QDateTime::currentDateTimeUtc()});
    account->taxonomies = {std::make_shared<Taxonomy>(Taxonomy{QStringLiteral("R&D"), QStringLiteral("7"), 0}),
        std::make_shared<Taxonomy>(Taxonomy{QStringLiteral("new"), QString(), 1})};
    return account;
}

int rowsOf(const QString &directory, const QString &table)
{
    int count = -1;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("look"));
        database.setDatabaseName(directory + "/Zalmo.storedata");
        QSqlQuery query(database.open() ? database : QSqlDatabase());
        if (query.exec("SELECT count(*) FROM " + table) && query.next())
            count = query.value(0).toInt();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("look"));
    return count;
}

void run(const QString &directory, const QString &statement)
{
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("run"));
        database.setDatabaseName(directory + "/Zalmo.storedata");
        QVERIFY(database.open());
        QSqlQuery query(database);
        QVERIFY2(query.exec(statement), qPrintable(query.lastError().text()));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("run"));
}

} // namespace

class TestStore : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everythingComesBack()
    {
        QTemporaryDir home;
        const QString directory = home.path() + "/Zalmo.Zalmo";
        QDateTime synced;
        {
            auto context = opened(directory);
            QVERIFY(context);
            QVERIFY(!context->hasChanges());
            filled(*context, QStringLiteral("first"));
            const AccountPtr second = filled(*context, QStringLiteral("second"));
            second->blog_name = QString();
            synced = second->evernote->last_synced;
            const SelectedAccountPtr selected = context->insertSelectedAccount();
            selected->account = second;
            QVERIFY(context->hasChanges());
            QVERIFY(context->save());
            QVERIFY(!context->hasChanges());
            second->preferences->login_automatically.reset();
            QVERIFY(context->hasChanges());
            QVERIFY(context->save());
        }
        const auto context = opened(directory);
        QCOMPARE(context->accounts().size(), 2);
        const AccountPtr first = context->accounts()[0], second = context->accounts()[1];
        QCOMPARE(first->alias(), QStringLiteral("first & Co"));
        QVERIFY(second->blog_name.isNull());
        QCOMPARE(second->alias(), QStringLiteral("second"));
        QCOMPARE(first->preferences->login_automatically, std::optional<bool>(false));
        QVERIFY(!second->preferences->login_automatically.has_value());
        QCOMPARE(first->preferences->feature_image_width, 111);
        QCOMPARE(second->evernote->last_synced, synced);
        QCOMPARE(first->taxonomies[0]->name, QStringLiteral("R&D"));
        QCOMPARE(first->taxonomies[0]->taxonomy_id, QStringLiteral("7"));
        QVERIFY(first->taxonomies[1]->taxonomy_id.isNull());
        QCOMPARE(context->selectedAccounts().size(), 1);
        QCOMPARE(context->selectedAccounts()[0]->account, second);
    }

    void aDeletedAccountTakesWhatItOwnsAlong()
    {
        QTemporaryDir home;
        auto context = opened(home.path());
        const AccountPtr gone = filled(*context, QStringLiteral("gone"));
        filled(*context, QStringLiteral("kept"));
        const SelectedAccountPtr selected = context->insertSelectedAccount();
        selected->account = gone;
        QVERIFY(context->save());
        context->deleteAccount(gone);
        QVERIFY(context->save());
        QVERIFY(!selected->account);
        for (const QString &table :
            {QStringLiteral("Account"), QStringLiteral("AccountPreferences"), QStringLiteral("Evernote")})
            QCOMPARE(rowsOf(home.path(), table), 1);
        QCOMPARE(rowsOf(home.path(), QStringLiteral("Taxonomy")), 2);
    }

    void aFailedSaveKeepsMemoryAndFile()
    {
        QTemporaryDir home;
        auto context = opened(home.path());
        const AccountPtr account = filled(*context, QStringLiteral("a"));
        QVERIFY(context->save());
        // Another program's lock stands for every way in which the database refuses.
        run(home.path(),
            QStringLiteral(
                "CREATE TRIGGER refuse BEFORE INSERT ON Taxonomy BEGIN SELECT RAISE(ABORT, 'disk full'); END"));
        account->name = QStringLiteral("changed");
        const Result<void> refused = context->save();
        QVERIFY(!refused);
        QVERIFY2(
            refused.error().description.contains(QLatin1String("disk full")), qPrintable(refused.error().description));
        QCOMPARE(context->accounts()[0]->name, QStringLiteral("changed"));
        QVERIFY(context->hasChanges());
        QCOMPARE(opened(home.path())->accounts()[0]->name, QStringLiteral("a"));
        run(home.path(), QStringLiteral("DROP TRIGGER refuse"));
        QVERIFY(context->save());
        QCOMPARE(opened(home.path())->accounts()[0]->name, QStringLiteral("changed"));
    }

    void whatIsNoStoreIsRefusedAndLeftAlone()
    {
        QTemporaryDir home;
        const QString blocked = home.path() + "/file";
        QFile file(blocked);
        QVERIFY(file.open(QIODevice::WriteOnly));
        const auto noFolder = ZLManagedObjectContext::open(blocked);
        QVERIFY(!noFolder);
        QCOMPARE(noFolder.error().domain, QStringLiteral("YOUR_ERROR_DOMAIN"));
        QCOMPARE(noFolder.error().code, 101);
        QCOMPARE(noFolder.error().description,
            QStringLiteral("Expected a folder to store application data, found a file (%1).").arg(blocked));

        const QByteArray noise(4096, 'n');
        QFile store(home.path() + "/Zalmo.storedata");
        QVERIFY(store.open(QIODevice::ReadWrite) && store.write(noise) == noise.size() && store.flush());
        QVERIFY(!ZLManagedObjectContext::open(home.path()));
        store.seek(0);
        QCOMPARE(store.readAll(), noise);
    }

    void aStoreOfANewerProgramIsRefused()
    {
        QTemporaryDir home;
        filled(*opened(home.path()), QStringLiteral("a"));
        run(home.path(), QStringLiteral("PRAGMA user_version = 99"));
        const auto context = ZLManagedObjectContext::open(home.path());
        QVERIFY(!context);
        QVERIFY(context.error().description.contains(QLatin1String("newer")));
    }
};

QTEST_GUILESS_MAIN(TestStore)
#include "test_store.moc"
