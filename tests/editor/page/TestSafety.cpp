#include "PageFixture.h"
#include "engine/EditorScheme.h"
#include "support/Files.h"

#include <QDirIterator>
#include <QTcpServer>
#include <QTcpSocket>

/// What a body holds never runs, and reaches nothing outside its place.
class TestSafety : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_page.start());
        m_page.evaluate(u"window.hits = 0"_qs);
    }

    void hostileBodiesAreInert_data()
    {
        QTest::addColumn<QString>("stored");
        QDirIterator files(BODIES, {u"hostile-*.html"_qs});
        while (files.hasNext()) {
            const QString path = files.next();
            QTest::newRow(qPrintable(files.fileName())) << QString(contentsOf(path));
        }
    }

    void hostileBodiesAreInert()
    {
        QFETCH(QString, stored);
        m_page.load(stored);
        QTest::mouseClick(m_page.view->focusProxy(), Qt::LeftButton, {}, {200, 60});
        m_page.evaluate(u"for (const e of document.querySelectorAll('#content *')) {"
                        "  e.dispatchEvent(new Event('error')); e.dispatchEvent(new MouseEvent('click', "
                        "{bubbles: true, cancelable: true})); }"_qs);
        QCOMPARE(m_page.evaluate(u"new Promise(r => 0), window.hits"_qs).toInt(), 0);
        QCOMPARE(m_page
                     .evaluate(
                         u"document.querySelectorAll('#content :is(script, iframe, form, input, object, embed, style, "
                         "link, meta, base, svg, math, video, template, [onerror], [onclick], [autofocus])').length"_qs)
                     .toInt(),
            0);
        QCOMPARE(m_page.body(), stored);
        QVERIFY(!m_page.reports.contains(u"owned"_qs));
        QCOMPARE(m_page.view->url().adjusted(QUrl::RemoveFragment), EditorScheme::pageUrl());
    }

    void servesNoFileButAllowedPictures()
    {
        const QString allowed = m_page.copyPicture(u"in cache.png"_qs);
        const QString outside = m_page.home.filePath(u"outside.png"_qs);
        QVERIFY(QFile::copy(m_page.files.cacheFolder() + u"/in cache.png"_qs, outside));
        const QString climbing = QString(allowed).replace(u"in%20cache"_qs, u"..%2f..%2foutside"_qs);
        m_page.load(u"<img src='%1'><img src='file://localhost%2'><img src='%3'><img src='file:///etc/passwd'>"
                    "<img src='zalmo://media/etc/hostname'>"_qs.arg(allowed, outside, climbing));
        QTRY_COMPARE(
            m_page.evaluate(u"[...document.images].map(i => i.complete && i.naturalWidth).join()"_qs).toString(),
            u"4,0,0,0,0"_qs);
    }

    void doesNotNavigate()
    {
        m_page.load(u"a <a href=\"https://example.com/\" target=_blank>link</a>"_qs);
        m_page.evaluate(u"document.querySelector('#content a').click(); location.href = 'https://example.com/';"
                        "location.reload(); window.open('https://example.com/')"_qs);
        QCOMPARE(m_page.body(), u"a <a href=\"https://example.com/\" target=_blank>link</a>"_qs);
        QCOMPARE(m_page.view->url().adjusted(QUrl::RemoveFragment), EditorScheme::pageUrl());
    }

    void picturesTellNothing()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        QByteArray asked;
        connect(&server, &QTcpServer::newConnection, this, [&] {
            QTcpSocket *socket = server.nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [&asked, socket] {
                asked += socket->readAll().toLower();
                socket->write(
                    "HTTP/1.1 200 OK\r\nSet-Cookie: id=1\r\nContent-Type: image/svg+xml\r\nContent-Length: 0\r\n"
                    "Connection: close\r\n\r\n");
                socket->disconnectFromHost();
            });
        });
        const QUrl blog(u"http://127.0.0.1:%1/"_qs.arg(server.serverPort()));
        const QString stored =
            u"<p>a <img src='%1p1'> <img src='%1p2' crossorigin> <img src='%1p3' referrerpolicy='unsafe-url'>"
            "<b style='background:url(%1p4)'>b</b> <b style='mask-image:url(%1c1);shape-outside:url(%1c2)'>c</b>"
            "<b style='--x:url(%1c3);mask-image:var(--x)'>d</b></p>"_qs.arg(blog.toString());
        m_page.load(stored); // nobody's blog is there
        m_page.page.setBlogURL(QUrl(u"http://localhost:1/"_qs));
        m_page.load(QString(stored).replace(u"127.0.0.1"_qs, u"localhost"_qs));
        m_page.load(QString(stored).replace(u"127.0.0.1"_qs, u"[::ffff:7f00:1]"_qs));
        QCOMPARE(asked, QByteArray());
        m_page.page.setBlogURL(blog);
        m_page.load(stored);
        for (const char *picture : {"/p1 ", "/p2 ", "/p3 ", "/p4 "})
            QTRY_VERIFY2(asked.contains(picture), picture);
        for (const char *trace : {"/c1", "/c2", "/c3", "origin:", "referer:", "cookie:", "zalmo"})
            QVERIFY2(!asked.contains(trace), asked.constData());
        QCOMPARE(m_page.body(), stored);
        m_page.page.setBlogURL({});
    }

    void aBodyStaysInItsPlace()
    {
        m_page.load(
            u"<div style='position:fixed;left:-500px;top:-500px;width:5000px;height:5000px;background:red;z-index:9'>"
            "over</div>text"_qs);
        m_page.view->resize(1600, 700);
        QTRY_COMPARE(m_page.evaluate(u"document.documentElement.clientWidth > 1500 && "
                                     "!document.elementFromPoint(20, 100).closest('#content')"_qs),
            QVariant(true));
        m_page.view->resize(900, 700);
    }

private:
    PageFixture m_page;
};

static const RegisteredTest<TestSafety> registered;

#include "TestSafety.moc"
