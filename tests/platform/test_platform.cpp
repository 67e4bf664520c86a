#include "platform/SingleInstance.h"
#include "platform/ZLAtomicFile.h"
#include "platform/ZLDefaults.h"
#include "platform/ZLFileManager.h"
#include "platform/ZLKeychain.h"
#include "platform/ZLTelemetry.h"
#include "support/FakeKeychain.h"
#include "support/FakeReachability.h"
#include "support/Files.h"
#include "support/TestClasses.h"

#include <QFile>
#include <QNetworkAccessManager>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

static const QString service = u"com.zalmo.Zalmo"_qs;

class TestPlatform : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void postFoldersStayInside_data()
    {
        addColumns<QString, QString>({"alias", "id"});
        QTest::addColumn<QString>("folder"); // below the data directory; null: refused
        const QString accounts = u"/zalmo/accounts/"_qs;
        const auto row = [](const QString &alias, const QString &id, const QString &folder) {
            QTest::addRow("%s %s", qPrintable(alias), qPrintable(id)) << alias << id << folder;
        };
        row("My Blog", "42", accounts + "My Blog/posts/p42");
        row("b", "en-0b1c", accounts + "b/posts/pen-0b1c");
        row("a/b", "1", accounts + "a-b/posts/p1");
        row("other/posts/p101", "1", accounts + "other-posts-p101/posts/p1");
        row("../x", "1", accounts + "..-x/posts/p1");
        row("/etc", "1", accounts + "-etc/posts/p1");
        row("", "1", {});
        for (const QString &alias : {u".."_qs, u"."_qs, u"nul"_qs + QChar(u'\0'), QString(300, u'x')})
            QTest::addRow("alias %s", qPrintable(alias.left(9))) << alias << "1" << QString();
        for (const QString &id : {u"1/2"_qs, u"/../../x"_qs, QString(), u".."_qs, u"1"_qs + QChar(u'\0') + u"2"_qs})
            QTest::addRow("id %s", qPrintable(id)) << "b" << id << QString();
    }
    void postFoldersStayInside()
    {
        QFETCH(QString, alias);
        QFETCH(QString, id);
        QFETCH(QString, folder);
        QTemporaryDir home;
        const ZLFileManager files(home.path() + "/data", home.path() + "/cache");
        const QString path = files.postPathForBlogURL(alias, id);
        QCOMPARE(path, folder.isNull() ? QString() : home.path() + "/data" + folder);
        QCOMPARE(QFile::exists(home.path() + "/data"), !folder.isNull());
    }

    void aDeeperFolderWithPostsStays()
    {
        QTemporaryDir home;
        const ZLFileManager files(home.path() + "/data", home.path() + "/cache");
        const QString accounts = home.path() + "/data/zalmo/accounts/";
        QVERIFY(QDir().mkpath(accounts + "news/daily/posts/p1"));
        QCOMPARE(files.blogPath(u"news/daily"_qs), accounts + "news/daily");
        // The folder of another blog's post is none of this name's.
        QCOMPARE(files.blogPath(u"news/daily/posts/p1"_qs), accounts + "news-daily-posts-p1");
        QVERIFY(QDir().mkpath(home.path() + "/data/posts"));
        QCOMPARE(files.blogPath(u"../.."_qs), accounts + "..-..");
    }

    void whatIsMadeIsTheUsersAlone()
    {
        QTemporaryDir home;
        QVERIFY(QDir().mkpath(home.path() + "/data/zalmo"));
        QVERIFY(QFile::setPermissions(home.path() + "/data/zalmo", QFile::Permissions(0x7755)));
        const ZLFileManager files(home.path() + "/data", home.path() + "/cache");
        const QString folder = files.postPathForBlogURL(u"b"_qs, u"1"_qs);
        const QString settings = home.path() + "/settings/preferences.ini";
        QVERIFY(ZLAtomicFile::write(folder + "/post.zalmo", "x"));
        ZLDefaults(settings).setObjectForKey(true, u"notifyPublish"_qs);
        const QFile::Permissions foreign(0x0077);
        for (const QString &path : {files.applicationSupportDirectory(), files.cacheFolder(), files.blogPath(u"b"_qs),
                 folder, folder + "/post.zalmo", home.path() + "/settings", settings})
            QVERIFY2(!(QFile::permissions(path) & foreign), qPrintable(path));
    }

    void aFolderThatCannotBeMadeIsNull()
    {
        QTemporaryDir home;
        QFile(home.path() + "/data").open(QIODevice::WriteOnly);
        const ZLFileManager files(home.path() + "/data", home.path() + "/cache");
        QVERIFY(files.applicationSupportDirectory().isNull());
        QVERIFY(files.postPathForBlogURL(u"b"_qs, u"1"_qs).isNull());
        QVERIFY(files.cacheFolder().endsWith(QLatin1String("/cache/com.zalmo.Zalmo")));
    }

    void aFailedWriteKeepsTheOldFile()
    {
        QTemporaryDir home;
        const QString path = home.path() + "/post.zalmo";
        QVERIFY(ZLAtomicFile::write(path, "old"));
        // A folder of the name that the rename wants to replace stands for any refusal of the file system.
        QVERIFY(QDir(home.path()).mkdir(u"taken"_qs));
        const Result<void> refused = ZLAtomicFile::write(home.path() + "/taken", "new");
        QVERIFY(!refused);
        QVERIFY(refused.error().description.contains(QLatin1String("/taken")));
        QVERIFY(!ZLAtomicFile::write(home.path() + "/missing/post.zalmo", "new"));
        QCOMPARE(ZLAtomicFile::read(path).value(), QByteArray("old"));
        QCOMPARE(QDir(home.path()).entryList(QDir::Files), QStringList{u"post.zalmo"_qs});
    }

    void whatAKillLeavesGoesWithTheNextWrite()
    {
        QTemporaryDir home;
        const QString path = home.path() + "/post.zalmo";
        writeFile(path + ".tmp", "cut off");
        QVERIFY(ZLAtomicFile::write(path, "new"));
        QCOMPARE(ZLAtomicFile::read(path).value(), QByteArray("new"));
        QCOMPARE(QDir(home.path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"post.zalmo"_qs});
    }

    void fileDatesAreThoseAskedFor()
    {
        QTemporaryDir home;
        const QDateTime date = QDateTime::fromString(u"2014-10-21T09:30:00Z"_qs, Qt::ISODate);
        QVERIFY(ZLAtomicFile::write(home.path() + "/f", "x", date));
        QCOMPARE(QFileInfo(home.path() + "/f").lastModified().toUTC(), date);
        QVERIFY(!ZLAtomicFile::read(home.path() + "/f", 0));
        QVERIFY(!ZLAtomicFile::read(home.path()));
    }

    void oneProgramForEachFolder_data()
    {
        QTest::addColumn<QByteArray>("left"); // the lock that is there before
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("the lock of a program that crashed") << QByteArray("2147483646\nzalmo\n\n");
        QTest::newRow("a lock cut short") << QByteArray("12");
    }
    void oneProgramForEachFolder()
    {
        QFETCH(QByteArray, left);
        QTemporaryDir home, otherHome;
        if (!left.isNull()) {
            QVERIFY(ZLAtomicFile::write(home.path() + "/zalmo.lock", left));
            QVERIFY(ZLAtomicFile::write(home.path() + "/zalmo.socket", {}));
        }
        auto first = std::make_unique<SingleInstance>(home.path());
        QSignalSpy asked(first.get(), &SingleInstance::wasAskedToComeToFront);
        QVERIFY(first->acquire());
        QVERIFY(SingleInstance(otherHome.path()).acquire());
        QVERIFY(!SingleInstance(home.path()).acquire());
        QTRY_COMPARE(asked.size(), 1);
        first.reset();
        QVERIFY(SingleInstance(home.path()).acquire());
    }

    void defaultsReadThroughToWhatIsRegistered()
    {
        QTemporaryDir home;
        const QString file = home.path() + "/deep/preferences.ini", key = u"notifyPublish"_qs;
        {
            ZLDefaults defaults(file);
            QVERIFY(!defaults.boolForKey(key));
            defaults.registerDefaults({{key, true}});
            QSignalSpy changes(&defaults, &ZLDefaults::didChange);
            QVERIFY(defaults.boolForKey(key));
            defaults.setObjectForKey(false, key);
            QCOMPARE(changes.size(), 1);
        }
        ZLDefaults again(file);
        again.registerDefaults({{key, true}});
        QVERIFY(!again.boolForKey(key)); // what the user chose, as text in the file, still reads as false
    }

    void passwordsOutliveTheSessionInTheBackendOnly()
    {
        const auto items = std::make_shared<FakeKeychain::Items>(
            FakeKeychain::Items{{{service, u"ann::http://b"_qs}, u"secret"_qs}, {{service, u"e"_qs}, {}}});
        ZLKeychain keychain(std::make_unique<FakeKeychain>(items));
        QCoro::waitFor(keychain.load(service, {u"ann::http://b"_qs, u"e"_qs}));
        QCOMPARE(keychain.passwordForService(service, u"ann::http://b"_qs), u"secret"_qs);
        QVERIFY(keychain.passwordForService(service, u"e"_qs).isNull());
        QCOMPARE(keychain.setPassword(u"x"_qs, service, {}).error().code, -1001);
        QVERIFY(keychain.setPassword(u"new"_qs, service, u"e"_qs));
        QCOMPARE(items->value({service, u"e"_qs}), u"new"_qs);
        QVERIFY(keychain.deletePasswordForService(service, u"e"_qs));
        QVERIFY(!items->contains({service, u"e"_qs}));
        QVERIFY(keychain.passwordForService(service, u"e"_qs).isNull());
    }

    void withoutASecretServicePasswordsLastForTheSession()
    {
        auto backend = std::make_unique<FakeKeychain>();
        backend->isUnavailable = true;
        ZLKeychain keychain(std::move(backend));
        QSignalSpy said(&keychain, &ZLKeychain::becameUnavailable);
        QCoro::waitFor(keychain.load(service, {u"a"_qs}));
        QVERIFY(keychain.setPassword(u"p"_qs, service, u"a"_qs));
        QCOMPARE(keychain.passwordForService(service, u"a"_qs), u"p"_qs);
        QCOMPARE(said.size(), 1);
    }

    void loadingPutsNothingOverWhatIsNewer_data()
    {
        const TestTable<QString> row({"newer"});
        row("set meanwhile", QStringLiteral("new"));
        row("deleted meanwhile", {});
    }
    void loadingPutsNothingOverWhatIsNewer()
    {
        QFETCH(QString, newer);
        const QString account = QStringLiteral("a");
        auto backend = std::make_unique<FakeKeychain>(
            std::make_shared<FakeKeychain::Items>(FakeKeychain::Items{{{service, account}, QStringLiteral("old")}}));
        backend->isLocked = true;
        ZLKeychain keychain(std::move(backend));
        QCoro::Task<void> loading = keychain.load(service, {account});
        QVERIFY(newer.isEmpty() ? keychain.deletePasswordForService(service, account)
                                : keychain.setPassword(newer, service, account));
        QCoro::waitFor(std::move(loading));
        QCOMPARE(keychain.passwordForService(service, account), newer);
    }

    void anItemThatFailsDoesNotStopTheOthers()
    {
        const QStringList accounts = {QStringLiteral("damaged"), QStringLiteral("fine")};
        auto backend = std::make_unique<FakeKeychain>(std::make_shared<FakeKeychain::Items>(
            FakeKeychain::Items{{{service, accounts[1]}, QStringLiteral("secret")}}));
        backend->damaged = accounts[0];
        ZLKeychain keychain(std::move(backend));
        QSignalSpy said(&keychain, &ZLKeychain::becameUnavailable);
        QCoro::waitFor(keychain.load(service, accounts));
        QCOMPARE(keychain.passwordForService(service, accounts[1]), QStringLiteral("secret"));
        QCOMPARE(said.size(), 1);
    }

    void loopbackCountsAsOnline_data()
    {
        const TestTable<bool> row({"online"});
        row("http://127.0.0.1:8080/blog", true);
        row("http://localhost", true);
        row("http://[::1]/", true);
        row("http://192.168.0.1", false);
        row("https://localhost.example.com", false);
    }
    void loopbackCountsAsOnline()
    {
        FakeReachability reachability;
        reachability.reachable = false;
        QTEST(reachability.isReachable(QUrl(QString::fromUtf8(QTest::currentDataTag()))), "online");
    }

    void telemetryCountsFromOneStartToTheNext()
    {
        QTemporaryDir home;
        QNetworkAccessManager network;
        for (int start = 1; start <= 2; ++start) {
            ZLDefaults defaults(home.path() + "/preferences.ini");
            defaults.setObjectForKey(true, QStringLiteral("sendAnonymousData"));
            ZLTelemetry telemetry(defaults, network);
            telemetry.incrementUserProperty(QStringLiteral("RunCount"));
            QCOMPARE(telemetry.userProperty(QStringLiteral("RunCount")).toInt(), start);
        }
    }

    void telemetryWritesNowhereUnlessWanted()
    {
        QTemporaryDir home;
        ZLDefaults defaults(home.path() + "/preferences.ini");
        QNetworkAccessManager network;
        QTcpServer collector;
        QVERIFY(collector.listen(QHostAddress::LocalHost));
        const QUrl address(u"http://127.0.0.1:%1/"_qs.arg(collector.serverPort()));
        ZLTelemetry off(defaults, network, address); // as long as nobody switches it on
        off.trackEvent(u"publish"_qs);
        off.incrementUserProperty(u"RunCount"_qs);
        QVERIFY(!off.userProperty(u"RunCount"_qs).isValid());

        defaults.setObjectForKey(true, u"sendAnonymousData"_qs);
        QVERIFY(ZLTelemetry::configuredCollector().isEmpty());
        ZLTelemetry(defaults, network).trackEvent(u"publish"_qs);
        ZLTelemetry told(defaults, network, address);
        told.incrementUserProperty(u"RunCount"_qs);
        QCOMPARE(told.userProperty(u"RunCount"_qs).toInt(), 1);
        QTRY_VERIFY(collector.hasPendingConnections());
        QTcpSocket *only = collector.nextPendingConnection();
        QTRY_VERIFY(only->peek(4096).contains("RunCount"));
        QVERIFY(!collector.hasPendingConnections());
    }
};

static const RegisteredTest<TestPlatform> registered;
#include "test_platform.moc"
