#include "store/ZLManagedObjectContext.h"

#include <QFile>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>
#include <ctime>

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

/// Leaves a store with one account.
void keep(const QString &directory)
{
    const auto context = opened(directory);
    filled(*context, u"a"_qs);
    if (!context->save())
        qFatal("no store");
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
        account->taxonomies.append(std::make_shared<Taxonomy>(Taxonomy{u"more"_qs, {}, 0}));
        account->name = u"changed"_qs;
        const Result<void> refused = context->save();
        QVERIFY(!refused);
        QVERIFY2(
            refused.error().description.contains(QLatin1String("disk full")), qPrintable(refused.error().description));
        QCOMPARE(context->accounts()[0]->name, u"changed"_qs);
        QVERIFY(context->hasChanges());
        QCOMPARE(opened(home.path())->accounts()[0]->name, u"a"_qs);
        QStringList said;
        context->saveSoon([&](const ZLError &error) { said << error.description; });
        QTRY_COMPARE(said.size(), 1);
        QVERIFY(said.first().contains(QLatin1String("disk full")) && context->hasChanges());
        run(home.path(), u"DROP TRIGGER refuse"_qs);
        QVERIFY(context->save());
        QCOMPARE(opened(home.path())->accounts()[0]->name, u"changed"_qs);
    }

    void onlyWhatDiffersIsWritten()
    {
        QTemporaryDir home;
        auto context = opened(home.path());
        const AccountPtr one = filled(*context, u"one"_qs), other = filled(*context, u"other"_qs);
        QVERIFY(context->save());
        for (const QString &table : {u"Account"_qs, u"AccountPreferences"_qs, u"Evernote"_qs, u"Taxonomy"_qs})
            for (const QString &event : {u"INSERT"_qs, u"UPDATE"_qs, u"DELETE"_qs})
                run(home.path(),
                    u"CREATE TRIGGER %1%2 BEFORE %2 ON %1 WHEN %3.%4 != 2 BEGIN SELECT RAISE(ABORT, 'touched'); END"_qs
                        .arg(table, event, event == u"DELETE" ? u"OLD"_qs : u"NEW"_qs,
                            table == u"Account" ? u"rowid"_qs : u"account"_qs));
        other->taxonomies.removeFirst();
        other->preferences->recent_posts = 3;
        other->evernote.reset();
        QVERIFY(context->save());
        const auto again = opened(home.path());
        QCOMPARE(again->accounts()[1]->taxonomies.size(), 1);
        QCOMPARE(again->accounts()[1]->taxonomies[0]->name, u"new"_qs);
        QCOMPARE(again->accounts()[1]->preferences->recent_posts, 3);
        QVERIFY(!again->accounts()[1]->evernote && again->accounts()[0]->evernote);
        one->name = u"touched"_qs;
        QVERIFY(!context->save());
    }

    void longListsHoldNothingUp()
    {
        QTemporaryDir home;
        auto context = opened(home.path());
        const AccountPtr account = filled(*context, u"a"_qs);
        QVERIFY(context->save());
        for (int number = 0; number < 10000; ++number)
            account->taxonomies.append(std::make_shared<Taxonomy>(
                Taxonomy{u"A category with a name of some length, %1"_qs.arg(number), QString::number(number), 0}));
        const auto spent = [] { // of this thread alone, however busy the machine is
            timespec now{};
            clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
            return now.tv_sec * 1000 + now.tv_nsec / 1000000;
        };
        const auto before = spent();
        context->saveSoon([](const ZLError &error) { qFatal("%s", qPrintable(error.description)); });
        QVERIFY2(spent() - before <= 16, qPrintable(QString::number(spent() - before)));
        account->taxonomies.removeLast();
        context->saveSoon([](const ZLError &error) { qFatal("%s", qPrintable(error.description)); });
        QTRY_VERIFY(!context->hasChanges());
        QCOMPARE(run(home.path(), u"SELECT count(*) FROM Taxonomy"_qs), 10001);

        account->taxonomies.removeLast();
        context->saveSoon([](const ZLError &) {});
        account->name = u"changed"_qs;
        QVERIFY(context->save()); // waits for the other
        account->taxonomies.removeLast();
        context->saveSoon([](const ZLError &) {});
        context.reset(); // so does the end
        const auto again = opened(home.path());
        QCOMPARE(again->accounts()[0]->taxonomies.size(), 9999);
        QCOMPARE(again->accounts()[0]->name, u"changed"_qs);
    }

    void listsBeyondReasonAreCut()
    {
        QTemporaryDir home;
        auto context = opened(home.path());
        const AccountPtr account = filled(*context, u"a"_qs);
        const auto term = std::make_shared<Taxonomy>(Taxonomy{u"x"_qs, {}, 1});
        account->taxonomies = QList<TaxonomyPtr>(300000, term);
        QTest::ignoreMessage(QtInfoMsg, QRegularExpression(u"has 300000 categories and tags"_qs));
        QVERIFY(context->save());
        QVERIFY(!context->hasChanges());
        QCOMPARE(run(home.path(), u"SELECT count(*) FROM Taxonomy"_qs), int(StoreRows::mostTaxonomies));
    }

    void noLoginStaysInAnAddress()
    {
        for (const auto &[kept, address, login] :
            {std::tuple(u"https://blog.test/@ann"_qs, u"https://blog.test/@ann"_qs, QStringList()),
                {u"https://ann:s%40:cret@Blog.test:8080/x?y"_qs, u"https://Blog.test:8080/x?y"_qs,
                    {u"ann"_qs, u"s@:cret"_qs}},
                {u"http://ann@blog.test"_qs, u"http://blog.test"_qs, {u"ann"_qs, {}}},
                {u"ann:secret@blog.test/x"_qs, u"blog.test/x"_qs, {u"ann"_qs, u"secret"_qs}}}) {
            QTemporaryDir home;
            keep(home.path());
            run(home.path(), u"UPDATE Account SET url = '%1'"_qs.arg(kept));
            const auto context = opened(home.path());
            QCOMPARE(context->accounts()[0]->url, address);
            QStringList found;
            for (const auto &stored : context->takeStoredLogins())
                found << stored.login.user << stored.login.password;
            QCOMPARE(found, login);
            context->accounts()[0]->url = kept; // nor does one that somebody puts there
            QVERIFY(context->save());
            QFile store(home.path() + "/Zalmo.storedata");
            QVERIFY(store.open(QIODevice::ReadOnly));
            QCOMPARE(store.readAll().contains(kept.toUtf8()), login.isEmpty());
            QVERIFY(!(store.permissions() & QFile::Permissions(0x0077)));
            QCOMPARE(opened(home.path())->accounts()[0]->url, address);
        }
    }

    void aPreferenceThatIsNewGetsItsColumn()
    {
        QTemporaryDir home;
        keep(home.path());
        run(home.path(), u"ALTER TABLE AccountPreferences DROP COLUMN thumb_image_width"_qs);
        {
            const auto context = opened(home.path());
            QVERIFY(context);
            QCOMPARE(context->accounts()[0]->preferences->thumb_image_width, 300);
            QCOMPARE(context->accounts()[0]->preferences->feature_image_width, 111);
        }
        run(home.path(), u"PRAGMA user_version = 99"_qs);
        const auto newer = ZLManagedObjectContext::open(home.path());
        QVERIFY(!newer && newer.error().description.contains(QLatin1String("newer")));
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
};

QTEST_GUILESS_MAIN(TestStore)
#include "test_store.moc"
