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
    void postFoldersStayInside()
    {
        QTemporaryDir home;
        const ZLFileManager files(home.path() + "/data", home.path() + "/cache");
        const auto refuses = [&files](const QString &alias, const QString &id) {
            return files.postPathForBlogURL(alias, id).isNull();
        };
        for (const QString &alias : {QString(), u".."_qs, u"."_qs, u"nul"_qs + QChar(u'\0'), QString(300, u'x')})
            QVERIFY2(refuses(alias, u"1"_qs), qPrintable(alias));
        for (const QString &id : {u"1/2"_qs, u"/../../x"_qs, QString(), u".."_qs, u"1"_qs + QChar(u'\0') + u"2"_qs})
            QVERIFY2(refuses(u"b"_qs, id), qPrintable(id));
        QVERIFY(!QFile::exists(home.path() + "/data"));

        const auto folder = [&](const QString &alias, const QString &id) {
            return files.postPathForBlogURL(alias, id).remove(home.path() + "/data/zalmo/accounts/");
        };
        QCOMPARE(folder(u"My Blog"_qs, u"en-0b1c"_qs), u"My Blog/posts/pen-0b1c"_qs);
        QCOMPARE(folder(u"a/b"_qs, u"1"_qs), u"a-b/posts/p1"_qs);
        QCOMPARE(folder(u"other/posts/p101"_qs, u"1"_qs), u"other-posts-p101/posts/p1"_qs);
        QCOMPARE(folder(u"../x"_qs, u"1"_qs), u"..-x/posts/p1"_qs);
        QCOMPARE(folder(u"/etc"_qs, u"1"_qs), u"-etc/posts/p1"_qs);
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
        writeFile(path + ".tmp", "cut off"); // a kill left it
        QVERIFY(ZLAtomicFile::write(path, "old"));
        // A folder of the name that the rename wants to replace stands for any refusal of the file system.
        QVERIFY(QDir(home.path()).mkdir(u"taken"_qs));
        const Result<void> refused = ZLAtomicFile::write(home.path() + "/taken", "new");
        QVERIFY(!refused);
        QVERIFY(refused.error().description.contains(QLatin1String("/taken")));
        QVERIFY(!ZLAtomicFile::write(home.path() + "/missing/post.zalmo", "new"));
        QCOMPARE(ZLAtomicFile::read(path).value(), QByteArray("old"));
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

    void oneProgramForEachFolder()
    {
        // nothing, the lock of a program that crashed, and one cut short
        for (const QByteArray left : {"", "2147483646\nzalmo\n\n", "12"}) {
            QTemporaryDir home, otherHome;
            if (!left.isEmpty()) {
                writeFile(home.path() + "/zalmo.lock", left);
                writeFile(home.path() + "/zalmo.socket");
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

    void loadingPutsNothingOverWhatIsNewer()
    {
        const QString account = u"a"_qs;
        for (const QString &newer : {u"new"_qs, QString()}) { // set or deleted meanwhile
            auto backend = std::make_unique<FakeKeychain>(
                std::make_shared<FakeKeychain::Items>(FakeKeychain::Items{{{service, account}, u"old"_qs}}));
            backend->isLocked = true;
            ZLKeychain keychain(std::move(backend));
            QCoro::Task<void> loading = keychain.load(service, {account});
            QVERIFY(newer.isEmpty() ? keychain.deletePasswordForService(service, account)
                                    : keychain.setPassword(newer, service, account));
            QCoro::waitFor(std::move(loading));
            QCOMPARE(keychain.passwordForService(service, account), newer);
        }
    }

    void anItemThatFailsDoesNotStopTheOthers()
    {
        auto backend = std::make_unique<FakeKeychain>(
            std::make_shared<FakeKeychain::Items>(FakeKeychain::Items{{{service, u"fine"_qs}, u"secret"_qs}}));
        backend->damaged = u"damaged"_qs;
        ZLKeychain keychain(std::move(backend));
        QSignalSpy said(&keychain, &ZLKeychain::becameUnavailable);
        QCoro::waitFor(keychain.load(service, {u"damaged"_qs, u"fine"_qs}));
        QCOMPARE(keychain.passwordForService(service, u"fine"_qs), u"secret"_qs);
        QCOMPARE(said.size(), 1);
    }

    void loopbackCountsAsOnline()
    {
        FakeReachability reachability;
        reachability.reachable = false;
        for (const QString &url : {u"http://127.0.0.1:8080/blog"_qs, u"http://localhost"_qs, u"http://[::1]/"_qs})
            QVERIFY2(reachability.isReachable(QUrl(url)), qPrintable(url));
        for (const QString &url : {u"http://192.168.0.1"_qs, u"https://localhost.example.com"_qs})
            QVERIFY2(!reachability.isReachable(QUrl(url)), qPrintable(url));
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
        QCOMPARE(ZLTelemetry(defaults, network).userProperty(u"RunCount"_qs).toInt(), 1); // at the next start
        QTRY_VERIFY(collector.hasPendingConnections());
        QTcpSocket *only = collector.nextPendingConnection();
        QTRY_VERIFY(only->peek(4096).contains("RunCount"));
        QVERIFY(!collector.hasPendingConnections());
    }
};

static const RegisteredTest<TestPlatform> registered;
#include "test_platform.moc"
