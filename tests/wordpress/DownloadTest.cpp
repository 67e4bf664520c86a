#include "platform/NetworkAccess.h"
#include "support/Files.h"
#include "support/ScriptedServer.h"
#include "support/TestClasses.h"
#include "support/TestEnvironment.h"
#include "wordpress/ZLDownloadManager.h"

namespace {
struct DownloadFixture : ZLDownloadManagerDelegate {
    DownloadFixture()
        : manager(environment.network, environment.files)
    {
        environment.network.addHost(u"x.test"_qs, host);
        manager.delegate = this;
    }

    TestEnvironment environment;
    FixedHost host{{200, "bytes"}};
    ZLDownloadManager manager;
    QStringList journal;

    void downloadFromURLDidFinish(const QUrl &, const QString &destination, int action) override
    {
        journal.append(
            u"%1 for %2"_qs.arg(QDir(environment.files.cacheFolder()).relativeFilePath(destination)).arg(action));
    }
    void downloadFromURLDidFail(const QUrl &url, const ZLError &error, int) override
    {
        journal.append(u"%1 failed: %2"_qs.arg(url.toString()).arg(error.code));
    }
    QStringList files() const { return filesBelow(environment.files.cacheFolder()); }
};
} // namespace

/// Remote files come into the cache folder.
class DownloadTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void savesAFileUnderItsName()
    {
        for (const auto &[address, name] : {std::pair(u"up/a.png"_qs, u"a.png"_qs),
                 std::pair(u"a.png?size=5"_qs, u"a.png"_qs), std::pair(u"my%20photo.png"_qs, u"my photo.png"_qs)}) {
            DownloadFixture f;
            f.environment.addCachedFile(name, "an older file of that name");
            QVERIFY(f.manager.downloadFileFromURL(QUrl(u"http://x.test/"_qs + address), 2));
            QTRY_COMPARE(f.journal, QStringList{name + u" for 2"_qs});
            QCOMPARE(contentsOf(f.environment.files.cacheFolder() + u'/' + name), QByteArray("bytes"));
        }
    }

    void tellsFailuresAndLeavesNothing()
    {
        for (const auto &[address, code] : {std::pair(u"http://nowhere.test/a.png"_qs, -1003),
                 std::pair(u"file:///etc/hostname"_qs, -1002), std::pair(u"gopher://x.test/a.png"_qs, -1002)}) {
            DownloadFixture f;
            QVERIFY(f.manager.downloadFileFromURL(QUrl(address), 1));
            QTRY_COMPARE(f.journal, QStringList{u"%1 failed: %2"_qs.arg(address).arg(code)});
            QTRY_COMPARE(f.files(), QStringList());
        }
    }

    void endsWhateverTheHostDoes_data()
    {
        const TestTable<ScriptedAnswer, FileTransfer::Limits, int> row({"answer", "limits", "code"});
        using namespace std::chrono_literals;
        const FileTransfer::Limits small{1'000'000, 30s, 60s};
        const QByteArray endless(100'000, 'x');
        row("without an end", {.withoutLength = true, .endless = endless}, small, -1103);
        row("as large as it says", {.claimedLength = 100'000'000}, small, -1103);
        row("trickling", {.withoutLength = true, .endless = endless}, {1'000'000'000'000, 30s, 50ms}, -1001);
        row("silent", {.held = true}, {1'000'000, 50ms, 60s}, -1001);
        row("cut", {.body = "x", .claimedLength = 10}, small, -1005);
        row("empty", {}, small, -1017);
        row("no such picture, in many words", {.status = 404, .withoutLength = true, .endless = endless}, small, 404);
        row("to a file", {.status = 302, .headers = {{"Location", "file:///etc/hostname"}}}, small, -1002);
    }

    void endsWhateverTheHostDoes()
    {
        QFETCH(ScriptedAnswer, answer);
        QFETCH(FileTransfer::Limits, limits);
        QFETCH(int, code);
        DownloadFixture f;
        ScriptedServer server;
        server.willAnswer(answer);
        NetworkAccess network;
        ZLDownloadManager manager(network, f.environment.files, limits);
        manager.delegate = &f;
        const QUrl url = server.url(u"/a.png"_qs);
        QVERIFY(manager.downloadFileFromURL(url, 1));
        QTRY_COMPARE(f.journal, QStringList{u"%1 failed: %2"_qs.arg(url.toString()).arg(code)});
        QTRY_COMPARE(server.openConnections(), 0);
        QCOMPARE(f.files(), QStringList());
    }

    void followsRedirects()
    {
        DownloadFixture f;
        ScriptedServer server;
        server.willAnswer({.status = 302, .headers = {{"Location", "/other.png"}}, .body = "elsewhere"});
        server.willAnswer({.body = "bytes"});
        NetworkAccess network;
        ZLDownloadManager manager(network, f.environment.files);
        manager.delegate = &f;
        QVERIFY(manager.downloadFileFromURL(server.url(u"/a.png"_qs), 1));
        QTRY_COMPARE(f.journal, QStringList{u"a.png for 1"_qs});
        QCOMPARE(contentsOf(f.environment.files.cacheFolder() + u"/a.png"_qs), QByteArray("bytes"));
    }

    void removesWhatAnEarlierStartLeft()
    {
        DownloadFixture f;
        const QString unfinished = f.environment.files.cacheFolder() + u"/downloads/"_qs;
        QVERIFY(QDir().mkpath(unfinished));
        for (const int minutes : {1, 11}) {
            QFile file(unfinished + QString::number(minutes));
            QVERIFY(file.open(QIODevice::WriteOnly));
            QVERIFY(file.setFileTime(
                QDateTime::currentDateTime().addSecs(-60 * minutes), QFileDevice::FileModificationTime));
        }
        const ZLDownloadManager manager(f.environment.network, f.environment.files);
        QCOMPARE(f.files(), QStringList{u"downloads/1"_qs});
    }

    void refusesAddressesWithoutAFile()
    {
        DownloadFixture f;
        for (const QString &address : {u""_qs, u"http://x.test/up/"_qs, u"http://x.test/%2E%2E"_qs})
            QVERIFY(!f.manager.downloadFileFromURL(QUrl(address), 1));
        QCOMPARE(f.host.asked.size(), 0);
    }

    void startsATransferForEachCall()
    {
        DownloadFixture f;
        f.manager.downloadFileFromURL(QUrl(u"http://x.test/a.png"_qs), 1);
        f.manager.downloadFileFromURL(QUrl(u"http://x.test/a.png"_qs), 2);
        f.manager.cancelDownloadFromURL(QUrl(u"http://x.test/a.png"_qs));
        QTRY_COMPARE(f.journal, (QStringList{u"a.png for 1"_qs, u"a.png for 2"_qs}));
        QCOMPARE(f.host.asked.size(), 2);
    }

    void mayEndInTheMiddle()
    {
        DownloadFixture f;
        f.host.next.held = true;
        {
            ZLDownloadManager manager(f.environment.network, f.environment.files);
            manager.delegate = &f;
            QVERIFY(manager.downloadFileFromURL(QUrl(u"http://x.test/a.png"_qs), 1));
        }
        f.environment.network.release();
        QTest::qWait(1);
        QCOMPARE(f.journal, QStringList());
        QCOMPARE(f.files(), QStringList());
    }
};

static const RegisteredTest<DownloadTest> registered;
#include "DownloadTest.moc"
