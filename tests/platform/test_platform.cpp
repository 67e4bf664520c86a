#include "platform/ZLAtomicFile.h"
#include "platform/ZLDefaults.h"
#include "platform/ZLFileManager.h"
#include "platform/ZLKeychain.h"
#include "platform/ZLTelemetry.h"
#include "support/FakeKeychain.h"
#include "support/FakeReachability.h"
#include "support/TestClasses.h"

#include <QFile>
#include <QNetworkAccessManager>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

static const QString service = QStringLiteral("com.zalmo.Zalmo");

class TestPlatform : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void postFoldersStayInside_data()
    {
        QTest::addColumn<QString>("alias");
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("folder"); // below the data directory; null: refused
        const QString accounts = QStringLiteral("/zalmo/accounts/");
        QTest::newRow("plain") << "My Blog"
                               << "42" << accounts + "My Blog/posts/p42";
        QTest::newRow("note") << "b"
                              << "en-0b1c" << accounts + "b/posts/pen-0b1c";
        QTest::newRow("alias with a separator") << "a/b"
                                                << "1" << accounts + "a/b/posts/p1";
        QTest::newRow("no alias") << ""
                                  << "1" << QString();
        for (const QString &alias : {QStringLiteral(".."), QStringLiteral("../x"), QStringLiteral("x/../../y"),
                 QStringLiteral("/etc"), QStringLiteral("."), QStringLiteral("nul") + QChar(u'\0'), QString(300, u'x')})
            QTest::addRow("alias %s", qPrintable(alias.left(9))) << alias << "1" << QString();
        for (const QString &id : {QStringLiteral("1/2"), QStringLiteral("/../../x"), QString(), QStringLiteral(".."),
                 QStringLiteral("1") + QChar(u'\0') + QStringLiteral("2")})
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

    void aFolderThatCannotBeMadeIsNull()
    {
        QTemporaryDir home;
        QFile(home.path() + "/data").open(QIODevice::WriteOnly);
        const ZLFileManager files(home.path() + "/data", home.path() + "/cache");
        QVERIFY(files.applicationSupportDirectory().isNull());
        QVERIFY(files.postPathForBlogURL(QStringLiteral("b"), QStringLiteral("1")).isNull());
        QVERIFY(files.cacheFolder().endsWith(QLatin1String("/cache/com.zalmo.Zalmo")));
    }

    void aFailedWriteKeepsTheOldFile()
    {
        QTemporaryDir home;
        const QString path = home.path() + "/post.zalmo";
        QVERIFY(ZLAtomicFile::write(path, "old"));
        // A folder of the name that the rename wants to replace stands for any refusal of the file system.
        QVERIFY(QDir(home.path()).mkdir(QStringLiteral("taken")));
        const Result<void> refused = ZLAtomicFile::write(home.path() + "/taken", "new");
        QVERIFY(!refused);
        QVERIFY(refused.error().description.contains(QLatin1String("/taken")));
        QVERIFY(!ZLAtomicFile::write(home.path() + "/missing/post.zalmo", "new"));
        QCOMPARE(ZLAtomicFile::read(path).value(), QByteArray("old"));
        QCOMPARE(QDir(home.path()).entryList(QDir::Files), QStringList{QStringLiteral("post.zalmo")});
    }

    void fileDatesAreThoseAskedFor()
    {
        QTemporaryDir home;
        const QDateTime date = QDateTime::fromString(QStringLiteral("2014-10-21T09:30:00Z"), Qt::ISODate);
        QVERIFY(ZLAtomicFile::write(home.path() + "/f", "x", date));
        QCOMPARE(QFileInfo(home.path() + "/f").lastModified().toUTC(), date);
        QVERIFY(!ZLAtomicFile::read(home.path() + "/f", 0));
        QVERIFY(!ZLAtomicFile::read(home.path()));
    }

    void defaultsReadThroughToWhatIsRegistered()
    {
        QTemporaryDir home;
        const QString file = home.path() + "/deep/preferences.ini", key = QStringLiteral("notifyPublish");
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
            FakeKeychain::Items{{{service, QStringLiteral("ann::http://b")}, QStringLiteral("secret")},
                {{service, QStringLiteral("e")}, {}}});
        ZLKeychain keychain(std::make_unique<FakeKeychain>(items));
        QCoro::waitFor(keychain.load(service, {QStringLiteral("ann::http://b"), QStringLiteral("e")}));
        QCOMPARE(keychain.passwordForService(service, QStringLiteral("ann::http://b")), QStringLiteral("secret"));
        QVERIFY(keychain.passwordForService(service, QStringLiteral("e")).isNull());
        QCOMPARE(keychain.setPassword(QStringLiteral("x"), service, {}).error().code, -1001);
        QVERIFY(keychain.setPassword(QStringLiteral("new"), service, QStringLiteral("e")));
        QCOMPARE(items->value({service, QStringLiteral("e")}), QStringLiteral("new"));
        QVERIFY(keychain.deletePasswordForService(service, QStringLiteral("e")));
        QVERIFY(!items->contains({service, QStringLiteral("e")}));
        QVERIFY(keychain.passwordForService(service, QStringLiteral("e")).isNull());
    }

    void withoutASecretServicePasswordsLastForTheSession()
    {
        auto backend = std::make_unique<FakeKeychain>();
        backend->isUnavailable = true;
        ZLKeychain keychain(std::move(backend));
        QSignalSpy said(&keychain, &ZLKeychain::becameUnavailable);
        QCoro::waitFor(keychain.load(service, {QStringLiteral("a")}));
        QVERIFY(keychain.setPassword(QStringLiteral("p"), service, QStringLiteral("a")));
        QCOMPARE(keychain.passwordForService(service, QStringLiteral("a")), QStringLiteral("p"));
        QCOMPARE(said.size(), 1);
    }

    void loopbackCountsAsOnline_data()
    {
        QTest::addColumn<bool>("online");
        QTest::newRow("http://127.0.0.1:8080/blog") << true;
        QTest::newRow("http://localhost") << true;
        QTest::newRow("http://[::1]/") << true;
        QTest::newRow("http://192.168.0.1") << false;
        QTest::newRow("https://localhost.example.com") << false;
    }
    void loopbackCountsAsOnline()
    {
        QFETCH(bool, online);
        FakeReachability reachability;
        reachability.reachable = false;
        QCOMPARE(reachability.isReachable(QUrl(QString::fromUtf8(QTest::currentDataTag()))), online);
    }

    void telemetryWritesNowhereWithoutACollector()
    {
        QTemporaryDir home;
        ZLDefaults defaults(home.path() + "/preferences.ini");
        QNetworkAccessManager network;
        QTcpServer collector;
        QVERIFY(collector.listen(QHostAddress::LocalHost));
        QVERIFY(ZLTelemetry::configuredCollector().isEmpty());
        ZLTelemetry quiet(defaults, network);
        QVERIFY(!quiet.isEnabled());
        quiet.trackEvent(QStringLiteral("publish"));
        ZLTelemetry told(defaults, network, QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(collector.serverPort())));
        told.incrementUserProperty(QStringLiteral("RunCount"));
        QCOMPARE(told.userProperty(QStringLiteral("RunCount")).toInt(), 1);
        QTRY_VERIFY(collector.hasPendingConnections());
        QTcpSocket *only = collector.nextPendingConnection();
        QTRY_VERIFY(only->peek(4096).contains("RunCount"));
        QVERIFY(!collector.hasPendingConnections());
    }
};

static const RegisteredTest<TestPlatform> registered;
#include "test_platform.moc"
