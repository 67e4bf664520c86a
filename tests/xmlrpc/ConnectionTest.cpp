#include "platform/NetworkAccess.h"
#include "support/ScriptedServer.h"
#include "support/TestClasses.h"
#include "xmlrpc/TransferErrors.h"
#include "xmlrpc/XMLRPCConnection.h"

#include <QTcpServer>
#include <algorithm>
#include <memory>

namespace {
QByteArray replyWith(const QByteArray &value)
{
    return "<p><value>" + value + "</value></p>";
}

/// Writes down what it hears.
class Listener : public XMLRPCConnectionDelegate {
public:
    void didReceiveResponse(const RequestPtr &, const ResponsePtr &response) override { responses.append(response); }
    void didFailWithError(const RequestPtr &, const ZLError &error) override { errors.append(error); }
    void didSendBodyData(const RequestPtr &, float sent) override { progress.append(sent); }

    bool isCalled() const { return !responses.isEmpty() || !errors.isEmpty(); }
    QString failure() const
    {
        return errors.isEmpty() ? QString() : u"%1 %2"_qs.arg(errors[0].domain).arg(errors[0].code);
    }

    QString identifier;
    QList<ResponsePtr> responses;
    QList<ZLError> errors;
    QList<float> progress;
};
} // namespace

class ConnectionTest : public QObject {
    Q_OBJECT

    struct Call {
        RequestPtr request;
        std::shared_ptr<Listener> listener;
    };

    Call call(const QUrl &url, XMLRPCArray parameters = {u"\u00fc"_qs}, double timeout = 60,
        const QString &method = u"wp.getPosts"_qs)
    {
        Call call{std::make_shared<XMLRPCRequest>(url), std::make_shared<Listener>()};
        call.request->setMethod(method, std::move(parameters));
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
    bool isRegistered(const Call &call) const
    {
        return m_manager->activeConnectionIdentifiers().contains(call.listener->identifier);
    }

    std::unique_ptr<NetworkAccess> m_network;
    std::unique_ptr<XMLRPCConnectionManager> m_manager;
    std::unique_ptr<ScriptedServer> m_server;

private Q_SLOTS:
    void init()
    {
        m_network = std::make_unique<NetworkAccess>();
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

    void sendsDataAndTellsProgress()
    {
        m_server->willAnswer({.body = replyWith("yes")});
        QByteArray picture;
        for (int i = 0; i < 3'000'000; ++i)
            picture.append(char(i * 7 + i / 251));
        const Call call =
            this->call(m_server->url(), {XMLRPCStruct{{u"bits"_qs, picture}}}, 60, u"wp.newMediaObject"_qs);
        QVERIFY(isRegistered(call));
        const QByteArray document = call.request->body();
        QTRY_VERIFY_WITH_TIMEOUT(call.listener->isCalled(), 30000);
        QVERIFY(m_server->requests()[0].body == document);
        QVERIFY(call.listener->progress.size() >= 2);
        QVERIFY(std::is_sorted(call.listener->progress.begin(), call.listener->progress.end()));
        QCOMPARE(call.listener->progress.last(), 1.0f);
        QVERIFY(!isRegistered(call));
        QTRY_COMPARE(call.request.use_count(), 1); // neither the picture nor who waited for it is kept with it
        QCOMPARE(call.listener.use_count(), 1);
        m_manager->closeConnectionForIdentifier(call.listener->identifier); // a second time does no harm
    }

    void failuresReachTheDelegateOnce_data()
    {
        const QByteArray body = replyWith("yes");
        const TestTable<ScriptedAnswer, QString, bool> row({"answer", "failure", "mayHaveHappened"});
        const QString lost = u"NSURLErrorDomain -1005"_qs, unreadable = u"NSURLErrorDomain -1017"_qs,
                      tooLarge = u"NSURLErrorDomain -1103"_qs;
        row("server error with a body", {.status = 500, .reason = "Oh", .body = body}, "HTTP 500", true);
        row("forbidden", {.status = 403, .reason = "Forbidden"}, "HTTP 403", false);
        row("no such page, no reason", {.status = 404, .reason = ""}, "HTTP 404", false);
        for (const QByteArray method : {"Basic realm=\"x\"", "NTLM", "Negotiate", "Digest realm=\"x\", nonce=\"y\""})
            row("wants a login of its own: " + method,
                {.status = 401, .reason = "Unauthorized", .headers = {{"WWW-Authenticate", method}}}, "HTTP 401",
                false);
        row("reset", {.resets = true}, lost, true);
        row("cut", {.body = body, .cutAfter = 5}, lost, true);
        row("empty", {}, unreadable, true);
        row("no content", {.status = 204, .reason = "No Content", .withoutLength = true}, unreadable, true);
        row("not modified", {.status = 304, .reason = "Not Modified"}, unreadable, true);
        row("no value", {.body = "<p></p>"}, unreadable, true);
        row("not UTF-8", {.body = replyWith("\xfc")}, unreadable, true);
        row("no HTTP", {.raw = "SSH-2.0-OpenSSH\r\n\r\n"}, lost, true);
        row("badly packed", {.headers = {{"Content-Encoding", "gzip"}}, .body = body}, unreadable, true);
        row("too large, says its head", {.body = body, .claimedLength = 200'000'000}, tooLarge, true);
        row("too large", {.body = QByteArray(70'000'000, 'x'), .withoutLength = true}, tooLarge, true);
    }
    void failuresReachTheDelegateOnce()
    {
        QFETCH(ScriptedAnswer, answer);
        QFETCH(QString, failure);
        const Call call = answered(answer);
        QVERIFY(call.listener->isCalled());
        QCOMPARE(call.listener->failure(), failure);
        QVERIFY(call.listener->errors[0].description.contains(u"127.0.0.1"));
        QTEST(TransferErrors::mayHaveHappened(call.listener->errors[0]), "mayHaveHappened");
        QVERIFY(!isRegistered(call));
        QVERIFY(!m_server->requests()[0].headers.contains("authorization"));
        // Another exchange takes its whole way, in which nothing more may come for this one.
        const Call next = answered({.body = replyWith("yes")});
        QVERIFY(next.listener->isCalled());
        QCOMPARE(call.listener->errors.size(), 1);
        QVERIFY(call.listener->responses.isEmpty());
    }

    void failsWithoutAServer_data()
    {
        QTcpServer nobody;
        QVERIFY(nobody.listen(QHostAddress::LocalHost));
        const TestTable<QUrl, QString> row({"url", "failure"});
        row("nobody listens", QUrl(u"http://127.0.0.1:%1/"_qs.arg(nobody.serverPort())), u"NSURLErrorDomain -1004"_qs);
        row("file", QUrl(u"file:///tmp/x"_qs), u"NSURLErrorDomain -1002"_qs);
        row("empty", QUrl(), u"NSURLErrorDomain -1002"_qs);
    }
    void failsWithoutAServer()
    {
        QFETCH(QUrl, url);
        const Call call = this->call(url);
        QVERIFY(!call.listener->isCalled()); // its owner has no identifier yet
        QTRY_VERIFY(call.listener->isCalled());
        QTEST(call.listener->failure(), "failure");
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

    void floodsEnd_data()
    {
        const TestTable<QByteArray, QByteArray> row({"begin", "endless"});
        row("of fields", "HTTP/1.1 200 OK\r\n", QByteArray("X-Field: yes\r\n").repeated(1000));
        row("in one field", "HTTP/1.1 200 OK\r\nX: ", QByteArray(10'000, 'x'));
        row("of interim answers", "", QByteArray("HTTP/1.1 100 Continue\r\n\r\n").repeated(1000));
        row("in the length of a chunk", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n",
            QByteArray(10'000, '0'));
        row("behind a redirect", "HTTP/1.1 302 Found\r\nLocation: /second\r\n\r\n", QByteArray(10'000, 'x'));
    }
    void floodsEnd()
    {
        QFETCH(QByteArray, begin);
        QFETCH(QByteArray, endless);
        m_server->willAnswer({.raw = begin, .endless = endless});
        m_server->willAnswer({.held = true});
        const Call call = this->call(m_server->url(), {}, 0.3);
        QTRY_VERIFY(call.listener->isCalled());
        QCOMPARE(call.listener->failure(), u"NSURLErrorDomain -1001"_qs);
        QTRY_COMPARE(m_server->openConnections(), 0); // and nothing is left of it but the message
    }

    void aFloodDoesNotFillTheMemory()
    {
        m_manager.reset();
        m_network = std::make_unique<NetworkAccess>(2'000'000);
        m_manager = std::make_unique<XMLRPCConnectionManager>(*m_network);
        const Call call = answered({.raw = "HTTP/1.1 200 OK\r\nX: ", .endless = QByteArray(10'000, 'x')});
        QVERIFY(call.listener->isCalled());
        QCOMPARE(call.listener->failure(), u"NSURLErrorDomain -1005"_qs);
        QTRY_COMPARE(m_server->openConnections(), 0);
    }

    void sendsOnceWhatWouldBeDoneTwice_data()
    {
        const TestTable<QString, size_t, QString> row({"method", "requests", "failure"});
        for (const char *method : {"wp.newPost", "metaWeblog.newMediaObject", "wp.newComment", "wp.deletePost"})
            row(method, QString::fromLatin1(method), 2, u"NSURLErrorDomain -1021"_qs);
        row("wp.getPosts", u"wp.getPosts"_qs, 3, {});
    }
    void sendsOnceWhatWouldBeDoneTwice()
    {
        QFETCH(QString, method);
        QFETCH(QString, failure);
        m_server->willAnswer({.body = replyWith("first"), .keepsOpen = true});
        m_server->willAnswer({.raw = ""}); // reads it, and closes the connection that it had kept
        m_server->willAnswer({.body = replyWith("third")});
        const Call first = call(m_server->url());
        QTRY_COMPARE(first.listener->responses.size(), 1);
        const Call second = call(m_server->url(), {u"text"_qs}, 60, method);
        QTRY_VERIFY(second.listener->isCalled());
        QCOMPARE(second.listener->failure(), failure);
        QVERIFY(failure.isNull() || TransferErrors::mayHaveHappened(second.listener->errors[0]));
        QTEST(m_server->requests().size(), "requests");
        QCOMPARE(m_server->requests()[1].body, second.request->body());
    }

    void readsAsItsHeadTells()
    {
        const Call call = answered(
            {.headers = {{"Content-Type", "text/xml;x=y; Charset=\"iso-8859-1\""}}, .body = replyWith("caf\xe9")});
        QCOMPARE(call.listener->responses.size(), 1);
        QCOMPARE(call.listener->responses[0]->object().string(), u"caf\u00e9"_qs);
    }

    void redirectsKeepThePost_data()
    {
        const TestTable<int> row({"status"});
        for (const int status : {301, 302, 303, 307, 308})
            row(QByteArray::number(status), status);
    }
    void redirectsKeepThePost()
    {
        QFETCH(int, status);
        m_server->willAnswer(
            {.status = status, .reason = "Moved", .headers = {{"Location", "/second"}}, .body = "moved"});
        const Call call = answered({.body = replyWith("there")});
        QVERIFY(call.listener->isCalled());
        QCOMPARE(call.listener->failure(), QString());
        QCOMPARE(call.listener->responses[0]->object().string(), u"there"_qs);
        QCOMPARE(m_server->requests().size(), size_t(2));
        QCOMPARE(m_server->requests()[1].path, QByteArray("/second"));
        const auto &first = m_server->requests()[0];
        const auto &last = m_server->requests()[1];
        QCOMPARE(last.method, QByteArray("POST"));
        QCOMPARE(last.body, first.body);
        for (const char *name : {"content-type", "content-length", "accept", "user-agent"})
            QCOMPARE(last.headers[name], first.headers[name]);
    }

    void redirectsKeepThePasswordAtHome()
    {
        const auto objection = [](const QString &from, const QString &target) {
            const std::optional<ZLError> error = XMLRPCConnection::objectionToRedirect(QUrl(from), QUrl(target));
            return error && TransferErrors::mayHaveHappened(*error) ? u"may have happened"_qs
                : error                                             ? error->description
                                                                    : QString();
        };
        QCOMPARE(objection(u"http://b.test/"_qs, u"https://b.test/"_qs), QString());
        QCOMPARE(objection(u"https://b.test/"_qs, u"https://B.TEST/second"_qs), QString());
        QCOMPARE(objection(u"https://b.test/"_qs, u"http://b.test/"_qs),
            u"b.test leads from its secure address to one that is not. Your password was not sent there."_qs);
        QVERIFY(objection(u"http://b.test/"_qs, u"http://b.test:81/"_qs).contains(u"another host, b.test:81."));
        QCOMPARE(objection(u"http://b.test/"_qs, u"https://www.b.test/"_qs),
            u"b.test leads to another host, www.b.test. Your password was not sent there. If the blog has moved, "
            "connect it with its new address."_qs);
    }

    void redirectsEnd_data()
    {
        const TestTable<QByteArray, QString> row({"location", "failure"});
        row("in a circle", "/xmlrpc.php", u"NSURLErrorDomain -1007"_qs);
        row("at a file", "file:///etc/passwd", u"NSURLErrorDomain -1002"_qs);
        row("at another host", "http://localhost:1/xmlrpc.php", u"NSURLErrorDomain -1010"_qs);
    }
    void redirectsEnd()
    {
        QFETCH(QByteArray, location);
        const Call call = answered({.status = 302, .reason = "Found", .headers = {{"Location", location}}});
        QVERIFY(call.listener->isCalled());
        QTEST(call.listener->failure(), "failure");
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
