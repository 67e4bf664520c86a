#include "support/TestClasses.h"
#include "support/TestEnvironment.h"
#include "wordpress/ZLDownloadManager.h"

#include <QFile>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

/// Remote files come into the cache folder.
class DownloadTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void savesAFileUnderItsName_data();
    void savesAFileUnderItsName();
    void tellsFailuresAndLeavesNothing_data();
    void tellsFailuresAndLeavesNothing();
    void refusesAddressesWithoutAFile_data();
    void refusesAddressesWithoutAFile();
    void startsATransferForEachCall();
    void mayEndInTheMiddle();
};

namespace {
class FileHost : public FakeHost {
public:
    FakeAnswer next{200, "bytes", "image/png", QNetworkReply::NoError, {}, false};
    int requests = 0;
    FakeAnswer answer(const FakeRequest &) override
    {
        ++requests;
        return next;
    }
};

struct DownloadFixture : ZLDownloadManagerDelegate {
    DownloadFixture()
        : manager(environment.network, environment.files)
    {
        environment.network.addHost(u"x.test"_s, host);
        manager.delegate = this;
    }

    TestEnvironment environment;
    FileHost host;
    ZLDownloadManager manager;
    QStringList journal;

    void downloadFromURLDidFinish(const QUrl &, const QString &destination, int action) override
    {
        journal.append(
            u"%1 for %2"_s.arg(QDir(environment.files.cacheFolder()).relativeFilePath(destination)).arg(action));
    }
    void downloadFromURLDidFail(const QUrl &url, const ZLError &error, int) override
    {
        journal.append(u"%1 failed: %2"_s.arg(url.toString()).arg(error.code));
    }
    QStringList files() const { return QDir(environment.files.cacheFolder()).entryList(QDir::Files); }
};
} // namespace

void DownloadTest::savesAFileUnderItsName_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << u"http://x.test/up/a.png"_s << u"a.png"_s;
    QTest::newRow("query") << u"http://x.test/a.png?size=5"_s << u"a.png"_s;
    QTest::newRow("encoded") << u"http://x.test/my%20photo.png"_s << u"my photo.png"_s;
}

void DownloadTest::savesAFileUnderItsName()
{
    QFETCH(QString, address);
    QFETCH(QString, name);
    DownloadFixture f;
    f.environment.addCachedFile(name, "an older file of that name");
    QVERIFY(f.manager.downloadFileFromURL(QUrl(address), 2));
    QTRY_COMPARE(f.journal, QStringList{name + u" for 2"_s});
    QFile file(f.environment.files.cacheFolder() + u'/' + name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("bytes"));
}

void DownloadTest::tellsFailuresAndLeavesNothing_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("networkError");
    QTest::addColumn<int>("code");
    QTest::newRow("status") << u"http://x.test/a.png"_s << 404 << 0 << 404;
    QTest::newRow("reset") << u"http://x.test/a.png"_s << 200 << int(QNetworkReply::RemoteHostClosedError) << -1005;
    QTest::newRow("no such host") << u"http://nowhere.test/a.png"_s << 200 << 0 << -1003;
    QTest::newRow("local file") << u"file:///etc/hostname"_s << 200 << 0 << -1002;
    QTest::newRow("another scheme") << u"gopher://x.test/a.png"_s << 200 << 0 << -1002;
}

void DownloadTest::tellsFailuresAndLeavesNothing()
{
    QFETCH(QString, address);
    QFETCH(int, status);
    QFETCH(int, networkError);
    QFETCH(int, code);
    DownloadFixture f;
    f.host.next.status = status;
    f.host.next.error = QNetworkReply::NetworkError(networkError);
    QVERIFY(f.manager.downloadFileFromURL(QUrl(address), 1));
    QTRY_COMPARE(f.journal, QStringList{u"%1 failed: %2"_s.arg(address).arg(code)});
    QTRY_COMPARE(f.files(), QStringList());
}

void DownloadTest::refusesAddressesWithoutAFile_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("none") << u""_s;
    QTest::newRow("folder") << u"http://x.test/up/"_s;
    QTest::newRow("up") << u"http://x.test/%2E%2E"_s;
}

void DownloadTest::refusesAddressesWithoutAFile()
{
    QFETCH(QString, address);
    DownloadFixture f;
    QVERIFY(!f.manager.downloadFileFromURL(QUrl(address), 1));
    QCOMPARE(f.host.requests, 0);
}

void DownloadTest::startsATransferForEachCall()
{
    DownloadFixture f;
    f.manager.downloadFileFromURL(QUrl(u"http://x.test/a.png"_s), 1);
    f.manager.downloadFileFromURL(QUrl(u"http://x.test/a.png"_s), 2);
    f.manager.cancelDownloadFromURL(QUrl(u"http://x.test/a.png"_s));
    QTRY_COMPARE(f.journal, (QStringList{u"a.png for 1"_s, u"a.png for 2"_s}));
    QCOMPARE(f.host.requests, 2);
}

void DownloadTest::mayEndInTheMiddle()
{
    DownloadFixture f;
    f.host.next.held = true;
    {
        ZLDownloadManager manager(f.environment.network, f.environment.files);
        manager.delegate = &f;
        QVERIFY(manager.downloadFileFromURL(QUrl(u"http://x.test/a.png"_s), 1));
    }
    f.environment.network.release();
    QTest::qWait(1);
    QCOMPARE(f.journal, QStringList());
    QCOMPARE(f.files(), QStringList());
}

static const RegisteredTest<DownloadTest> registered;
#include "DownloadTest.moc"
