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
    account->blog_name = name + u" & Co"_qs;
    account->url = u"http://127.0.0.1/"_qs + name;
    account->preferences = std::make_shared<AccountPreferences>();
    account->preferences->login_automatically = false;
    account->preferences->feature_image_width = 111;
    account->evernote = std::make_shared<Evernote>(Evernote{u"guid"_qs, QDateTime::currentDateTimeUtc()});
    account->taxonomies = {std::make_shared<Taxonomy>(Taxonomy{u"R&D"_qs, u"7"_qs, 0}),
        std::make_shared<Taxonomy>(Taxonomy{u"new"_qs, QString(), 1})};
    return account;
}

/// Runs a statement beside the store's own connection; gives the number that it selects.
int run(const QString &directory, const QString &statement)
{
    int number = 0;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_qs, u"beside"_qs);
        database.setDatabaseName(directory + "/Zalmo.storedata");
        QSqlQuery query(database.open() ? database : QSqlDatabase());
        if (!query.exec(statement))
            qFatal("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
        if (query.next())
            number = query.value(0).toInt();
    }
    QSqlDatabase::removeDatabase(u"beside"_qs);
    return number;
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
            filled(*context, u"first"_qs);
            const AccountPtr second = filled(*context, u"second"_qs);
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
        QCOMPARE(first->alias(), u"first & Co"_qs);
        QVERIFY(second->blog_name.isNull());
        QCOMPARE(second->alias(), u"second"_qs);
        QCOMPARE(first->preferences->login_automatically, std::optional<bool>(false));
        QVERIFY(!second->preferences->login_automatically.has_value());
        QCOMPARE(first->preferences->feature_image_width, 111);
        QCOMPARE(second->evernote->last_synced, synced);
        QCOMPARE(first->taxonomies[0]->name, u"R&D"_qs);
        QCOMPARE(first->taxonomies[0]->taxonomy_id, u"7"_qs);
        QVERIFY(first->taxonomies[1]->taxonomy_id.isNull());
        QCOMPARE(context->selectedAccounts().size(), 1);
        QCOMPARE(context->selectedAccounts()[0]->account, second);
    }

    void aDeletedAccountTakesWhatItOwnsAlong()
    {
        QTemporaryDir home;
        auto context = opened(home.path());
        const AccountPtr gone = filled(*context, u"gone"_qs);
        filled(*context, u"kept"_qs);
        const SelectedAccountPtr selected = context->insertSelectedAccount();
        selected->account = gone;
        QVERIFY(context->save());
        context->deleteAccount(gone);
        QVERIFY(context->save());
        QVERIFY(!selected->account);
        for (const QString &table : {u"Account"_qs, u"AccountPreferences"_qs, u"Evernote"_qs})
            QCOMPARE(run(home.path(), u"SELECT count(*) FROM "_qs + table), 1);
        QCOMPARE(run(home.path(), u"SELECT count(*) FROM Taxonomy"_qs), 2);
    }

    void aFailedSaveKeepsMemoryAndFile()
    {
        QTemporaryDir home;
        auto context = opened(home.path());
        const AccountPtr account = filled(*context, u"a"_qs);
        QVERIFY(context->save());
        // Another program's lock stands for every way in which the database refuses.
        run(home.path(),
            u"CREATE TRIGGER refuse BEFORE INSERT ON Taxonomy BEGIN SELECT RAISE(ABORT, 'disk full'); END"_qs);
        account->name = u"changed"_qs;
        const Result<void> refused = context->save();
        QVERIFY(!refused);
        QVERIFY2(
            refused.error().description.contains(QLatin1String("disk full")), qPrintable(refused.error().description));
        QCOMPARE(context->accounts()[0]->name, u"changed"_qs);
        QVERIFY(context->hasChanges());
        QCOMPARE(opened(home.path())->accounts()[0]->name, u"a"_qs);
        run(home.path(), u"DROP TRIGGER refuse"_qs);
        QVERIFY(context->save());
        QCOMPARE(opened(home.path())->accounts()[0]->name, u"changed"_qs);
    }

    void whatIsNoStoreIsRefusedAndLeftAlone()
    {
        QTemporaryDir home;
        const QString blocked = home.path() + "/file";
        QFile file(blocked);
        QVERIFY(file.open(QIODevice::WriteOnly));
        const auto noFolder = ZLManagedObjectContext::open(blocked);
        QVERIFY(!noFolder);
        QCOMPARE(noFolder.error().domain, u"YOUR_ERROR_DOMAIN"_qs);
        QCOMPARE(noFolder.error().code, 101);
        QCOMPARE(noFolder.error().description,
            u"Expected a folder to store application data, found a file (%1)."_qs.arg(blocked));

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
        filled(*opened(home.path()), u"a"_qs);
        run(home.path(), u"PRAGMA user_version = 99"_qs);
        const auto context = ZLManagedObjectContext::open(home.path());
        QVERIFY(!context);
        QVERIFY(context.error().description.contains(QLatin1String("newer")));
    }
};

QTEST_GUILESS_MAIN(TestStore)
#include "test_store.moc"
