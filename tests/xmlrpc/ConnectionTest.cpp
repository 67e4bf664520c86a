#include "support/ScriptedServer.h"
#include "support/TestClasses.h"
#include "xmlrpc/XMLRPCConnection.h"
#include "xmlrpc/XMLRPCConnectionManager.h"

#include <QNetworkProxy>
#include <QTcpServer>
#include <algorithm>
#include <memory>

namespace {
QByteArray replyWith(const QByteArray &value)
{
    return "<p><value>" + value + "</value></p>";
}

/// Writes down what it hears, and closes failed connections as the client of a blog does.
class Listener : public XMLRPCConnectionDelegate {
public:
    explicit Listener(XMLRPCConnectionManager &manager)
        : m_manager(manager)
    {
    }

    void didReceiveResponse(const RequestPtr &, const ResponsePtr &response) override { responses.append(response); }
    void didFailWithError(const RequestPtr &, const ZLError &error) override
    {
        errors.append(error);
        if (closesFailures)
            m_manager.closeConnectionForIdentifier(identifier);
    }
    void didSendBodyData(const RequestPtr &, float sent) override { progress.append(sent); }

    bool isCalled() const { return !responses.isEmpty() || !errors.isEmpty(); }
    QString failure() const
    {
        return errors.isEmpty() ? QString() : u"%1 %2"_qs.arg(errors[0].domain).arg(errors[0].code);
    }

    QString identifier;
    bool closesFailures = true;
    QList<ResponsePtr> responses;
    QList<ZLError> errors;
    QList<float> progress;

private:
    XMLRPCConnectionManager &m_manager;
};
} // namespace

class ConnectionTest : public QObject {
    Q_OBJECT

    struct Call {
        RequestPtr request;
        std::shared_ptr<Listener> listener;
    };

    Call call(const QUrl &url, XMLRPCArray parameters = {u"\u00fc"_qs}, double timeout = 60)
    {
        Call call{std::make_shared<XMLRPCRequest>(url), std::make_shared<Listener>(*m_manager)};
        call.request->setMethod(u"wp.getPosts"_qs, std::move(parameters));
        call.request->setTimeoutInterval(timeout);
        call.listener->identifier = m_manager->spawnConnectionWithXMLRPCRequest(call.request, call.listener);
        return call;
    }
    /// A call that has had this answer, or whatever end it leads to.
    Call answered(const ScriptedAnswer &answer)
    {
        m_server->willAnswer(answer);
        const Call call = this->call(m_server->url());
        [[maybe_unused]] const bool isOver = QTest::qWaitFor([&] { return call.listener->isCalled(); }, 30000);
        return call;
    }
    bool isRegistered(const Call &call) const { return m_manager->connectionForIdentifier(call.listener->identifier); }

    std::unique_ptr<QNetworkAccessManager> m_network;
    std::unique_ptr<XMLRPCConnectionManager> m_manager;
    std::unique_ptr<ScriptedServer> m_server;

private Q_SLOTS:
    void init()
    {
        m_network = std::make_unique<QNetworkAccessManager>();
        m_network->setProxy(QNetworkProxy::NoProxy);
        m_manager = std::make_unique<XMLRPCConnectionManager>(*m_network);
        m_server = std::make_unique<ScriptedServer>();
    }
    void cleanup()
    {
        m_manager.reset();
        m_network.reset();
        m_server.reset();
    }

    void deliversTheReply()
    {
        m_server->willAnswer({.body = replyWith("yes")});
        const Call call = this->call(m_server->url());
        const QByteArray document = call.request->body();
        QTRY_COMPARE(call.listener->responses.size(), 1);
        QCOMPARE(call.listener->responses[0]->object().string(), u"yes"_qs);
        QVERIFY(call.listener->errors.isEmpty());

        QCOMPARE(m_server->requests().size(), size_t(1));
        const auto &request = m_server->requests()[0];
        QCOMPARE(request.method, QByteArray("POST"));
        QCOMPARE(request.path, QByteArray("/xmlrpc.php"));
        QCOMPARE(request.body, document);
        QCOMPARE(request.headers["content-type"], QByteArray("text/xml"));
        QCOMPARE(request.headers["accept"], QByteArray("text/xml"));
        QCOMPARE(request.headers["user-agent"], QByteArray("Zalmo"));
        QCOMPARE(request.headers["content-length"], QByteArray::number(document.size()));
    }

    void aDeliveredConnectionStaysRegistered()
    {
        m_server->willAnswer({.body = replyWith("yes")});
        const Call call = this->call(m_server->url(), {QByteArray(1000, 'x')});
        QTRY_VERIFY(call.listener->isCalled());
        QVERIFY(isRegistered(call));
        QCOMPARE(m_manager->activeConnectionIdentifiers(), QStringList(call.listener->identifier));
        QTRY_COMPARE(call.request.use_count(), 1); // neither the picture nor who waited for it is kept with it
        QCOMPARE(call.listener.use_count(), 1);
        m_manager->closeConnections();
        QCOMPARE(m_manager->numberOfActiveConnections(), 0);
        m_manager->closeConnectionForIdentifier(call.listener->identifier); // a second time does no harm
    }

    void sendsDataAndTellsProgress()
    {
        m_server->willAnswer({.body = replyWith("yes")});
        QByteArray picture;
        for (int i = 0; i < 3'000'000; ++i)
            picture.append(char(i * 7 + i / 251));
        const Call call = this->call(m_server->url(), {XMLRPCStruct{{u"bits"_qs, picture}}});
        const QByteArray document = call.request->body();
        QTRY_VERIFY_WITH_TIMEOUT(call.listener->isCalled(), 30000);
        QVERIFY(m_server->requests()[0].body == document);
        QVERIFY(call.listener->progress.size() >= 2);
        QVERIFY(std::is_sorted(call.listener->progress.begin(), call.listener->progress.end()));
        QCOMPARE(call.listener->progress.last(), 1.0f);
    }

    void failuresReachTheDelegateOnce_data()
    {
        const QByteArray body = replyWith("yes");
        const TestTable<ScriptedAnswer, QString, QString> row({"answer", "failure", "description"});
        row("server error with a body", {.status = 500, .reason = "Internal Server Error", .body = body}, "HTTP 500",
            "The blog answered with HTTP status 500 (Internal Server Error).");
        row("forbidden", {.status = 403, .reason = "Forbidden"}, "HTTP 403",
            "The blog answered with HTTP status 403 (Forbidden).");
        row("wants a log-in of its own",
            {.status = 401, .reason = "Unauthorized", .headers = {{"WWW-Authenticate", "Basic realm=\"x\""}}},
            "HTTP 401", "The blog answered with HTTP status 401 (Unauthorized).");
        row("no such page, no reason", {.status = 404, .reason = ""}, "HTTP 404",
            "The blog answered with HTTP status 404.");
        row("reset", {.resets = true}, "NSURLErrorDomain -1005", "");
        row("closed without a word", {.status = 200, .body = body, .cutAfter = 0, .claimedLength = 10},
            "NSURLErrorDomain -1005", "");
        row("cut", {.body = body, .cutAfter = 5}, "NSURLErrorDomain -1005", "");
        row("shorter than it says", {.body = body, .claimedLength = 100000}, "NSURLErrorDomain -1005", "");
        row("too large, says its head", {.body = body, .claimedLength = 200'000'000}, "NSURLErrorDomain -1103",
            "The blog's reply is too large: it has more than 64 MB.");
        row("too large", {.body = QByteArray(70'000'000, 'x'), .withoutLength = true}, "NSURLErrorDomain -1103",
            "The blog's reply is too large: it has more than 64 MB.");
    }
    void failuresReachTheDelegateOnce()
    {
        QFETCH(ScriptedAnswer, answer);
        QFETCH(QString, failure);
        QFETCH(QString, description);
        const Call call = answered(answer);
        QVERIFY(call.listener->isCalled());
        QCOMPARE(call.listener->failure(), failure);
        QVERIFY(!call.listener->errors[0].description.isEmpty());
        if (!description.isEmpty())
            QCOMPARE(call.listener->errors[0].description, description);
        QVERIFY(!isRegistered(call));
        // Another exchange takes its whole way, in which nothing more may come for this one.
        const Call next = answered({.body = replyWith("yes")});
        QVERIFY(next.listener->isCalled());
        QCOMPARE(call.listener->errors.size(), 1);
        QVERIFY(call.listener->responses.isEmpty());
    }

    void refusedConnection()
    {
        QTcpServer nobody;
        QVERIFY(nobody.listen(QHostAddress::LocalHost));
        const QUrl url(u"http://127.0.0.1:%1/"_qs.arg(nobody.serverPort()));
        nobody.close();
        const Call call = this->call(url);
        QTRY_VERIFY(call.listener->isCalled());
        QCOMPARE(call.listener->failure(), u"NSURLErrorDomain -1004"_qs);
        QVERIFY(!isRegistered(call));
    }

    void addressesOtherThanHttpAreRefused_data()
    {
        const TestTable<QUrl> row({"url"});
        row("file", QUrl(u"file:///tmp/x"_qs));
        row("ftp", QUrl(u"ftp://127.0.0.1/x"_qs));
        row("empty", QUrl());
    }
    void addressesOtherThanHttpAreRefused()
    {
        QFETCH(QUrl, url);
        const Call call = this->call(url);
        QVERIFY(!call.listener->isCalled()); // its owner has no identifier yet
        QTRY_VERIFY(call.listener->isCalled());
        QCOMPARE(call.listener->failure(), u"NSURLErrorDomain -1002"_qs);
        QVERIFY(!isRegistered(call));
    }

    void slowServerTimesOut()
    {
        m_server->willAnswer({.body = replyWith("late"), .held = true});
        const Call call = this->call(m_server->url(), {}, 0.001);
        QTRY_VERIFY_WITH_TIMEOUT(call.listener->isCalled(), 30000);
        QCOMPARE(call.listener->failure(), u"NSURLErrorDomain -1001"_qs);
        QCOMPARE(call.listener->errors[0].description, u"The request timed out."_qs);
        QVERIFY(!isRegistered(call));
    }

    void aFailedStatusThatNobodyClosesDeliversItsBodyAsWell()
    {
        m_server->willAnswer({.status = 500, .reason = "Oh", .body = replyWith("body")});
        const Call call = this->call(m_server->url());
        call.listener->closesFailures = false;
        QTRY_COMPARE(call.listener->responses.size(), 1);
        QCOMPARE(call.listener->failure(), u"HTTP 500"_qs);
        QCOMPARE(call.listener->responses[0]->object().string(), u"body"_qs);
    }

    void silentEnds_data()
    {
        const TestTable<ScriptedAnswer> row({"answer"});
        row("empty", ScriptedAnswer{});
        row("not modified", ScriptedAnswer{.status = 304, .reason = "Not Modified"});
    }
    void silentEnds()
    {
        QFETCH(ScriptedAnswer, answer);
        m_server->willAnswer(answer);
        const Call call = this->call(m_server->url());
        QVERIFY(isRegistered(call));
        QTRY_VERIFY(!isRegistered(call));
        QVERIFY(!call.listener->isCalled());
    }

    void readsAsItsHeadTells_data()
    {
        const TestTable<QByteArray, QByteArray, bool, QString> row({"contentType", "body", "isResponse", "text"});
        row("not XML", "text/html", "Hello", true, {});
        row("not UTF-8", "text/xml", replyWith("\xfc"), false, {});
        row("unknown character set", "text/xml; charset=x-none", replyWith("x"), false, {});
        row("character set", "text/xml; charset=ISO-8859-1", replyWith("caf\xe9"), true, u"caf\u00e9"_qs);
        row("quoted, in other case", "text/xml;x=y; Charset=\"iso-8859-1\"", replyWith("caf\xe9"), true,
            u"caf\u00e9"_qs);
    }
    void readsAsItsHeadTells()
    {
        QFETCH(QByteArray, contentType);
        QFETCH(QByteArray, body);
        QFETCH(bool, isResponse);
        QFETCH(QString, text);
        const Call call = answered({.headers = {{"Content-Type", contentType}}, .body = body});
        QVERIFY(call.listener->isCalled());
        QCOMPARE(call.listener->responses.size(), 1); // what cannot be read is delivered as well
        const ResponsePtr response = call.listener->responses[0];
        QCOMPARE(bool(response), isResponse);
        QVERIFY(!isResponse || response->object().isAbsent() == text.isNull());
        QCOMPARE(isResponse ? response->object().string() : QString(), text);
    }

    void redirectsKeepThePost_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {301, 302, 303, 307, 308})
            QTest::addRow("%d", status) << status;
    }
    void redirectsKeepThePost()
    {
        QFETCH(int, status);
        ScriptedServer target;
        target.willAnswer({.body = replyWith("there")});
        m_server->willAnswer(
            {.status = status, .reason = "Moved", .headers = {{"Location", "/second"}}, .body = "moved"});
        const Call call =
            answered({.status = status, .reason = "Moved", .headers = {{"Location", target.url().toEncoded()}}});
        QVERIFY(call.listener->isCalled());
        QCOMPARE(call.listener->failure(), QString());
        QCOMPARE(call.listener->responses[0]->object().string(), u"there"_qs);
        QCOMPARE(m_server->requests().size(), size_t(2));
        QCOMPARE(m_server->requests()[1].path, QByteArray("/second"));
        const auto &first = m_server->requests()[0];
        const auto &last = target.requests().at(0);
        QCOMPARE(last.method, QByteArray("POST"));
        QCOMPARE(last.body, first.body);
        for (const char *name : {"content-type", "content-length", "accept", "user-agent"})
            QCOMPARE(last.headers[name], first.headers[name]);
    }

    void redirectsStayOnAnEncryptedRoad()
    {
        const QUrl plain(u"http://b/"_qs), encrypted(u"https://b/"_qs);
        QVERIFY(XMLRPCConnection::mayRedirect(plain, encrypted));
        QVERIFY(XMLRPCConnection::mayRedirect(encrypted, encrypted));
        QVERIFY(!XMLRPCConnection::mayRedirect(encrypted, plain));
    }

    void redirectsEnd_data()
    {
        const TestTable<QByteArray, QString> row({"location", "failure"});
        row("in a circle", "/xmlrpc.php", u"NSURLErrorDomain -1007"_qs);
        row("at a file", "file:///etc/passwd", u"NSURLErrorDomain -1002"_qs);
    }
    void redirectsEnd()
    {
        QFETCH(QByteArray, location);
        QFETCH(QString, failure);
        const Call call = answered({.status = 302, .reason = "Found", .headers = {{"Location", location}}});
        QVERIFY(call.listener->isCalled());
        QCOMPARE(call.listener->failure(), failure);
        QVERIFY(m_server->requests().size() <= size_t(1 + XMLRPCConnection::MaximumRedirects));
    }

    void nothingArrivesAfterClosing_data()
    {
        const TestTable<bool> row({"withData"});
        row("while waiting for the head", false);
        row("while encoding", true);
    }
    void nothingArrivesAfterClosing()
    {
        QFETCH(bool, withData);
        m_server->willAnswer({.body = replyWith("late"), .held = true});
        m_server->willAnswer({.body = replyWith("next")});
        const Call call =
            this->call(m_server->url(), withData ? XMLRPCArray{QByteArray(5'000'000, 'x')} : XMLRPCArray());
        if (!withData)
            QTRY_COMPARE(m_server->requests().size(), size_t(1));
        m_manager->closeConnectionForIdentifier(call.listener->identifier);
        m_server->release();
        const Call next =
            this->call(m_server->url(), {QByteArray("x")}); // takes its turn behind the first in the queue
        if (withData)
            QTRY_VERIFY((m_server->release(), next.listener->isCalled()));
        else
            QTRY_VERIFY(next.listener->isCalled());
        QVERIFY(!call.listener->isCalled());
    }

    void manyAtOnce()
    {
        m_server->willAnswer({.body = replyWith(QByteArray(200'000, 'x'))});
        QList<Call> calls;
        for (int i = 0; i < 40; ++i)
            calls.append(call(m_server->url(), {i % 2 ? XMLRPCValue(QByteArray(20'000, 'y')) : XMLRPCValue(i)}));
        const auto isDone = [](const Call &call) { return call.listener->responses.size() == 1; };
        QTRY_VERIFY_WITH_TIMEOUT(std::all_of(calls.begin(), calls.end(), isDone), 30000);
    }

    void endsWhileJobsRun()
    {
        m_server->willAnswer({.body = replyWith("x")});
        const Call call = this->call(m_server->url(), {QByteArray(5'000'000, 'x')});
        m_manager.reset();
        QVERIFY(!call.listener->isCalled());
    }
};

static const RegisteredTest<ConnectionTest> registered;
#include "ConnectionTest.moc"
