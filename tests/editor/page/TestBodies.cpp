#include "PageFixture.h"
#include "engine/EditorScheme.h"
#include "support/Files.h"

#include <QDirIterator>
#include <QTcpServer>
#include <QTcpSocket>

/// What the writer has not touched goes back byte for byte. It never runs, and reaches nothing outside its place.
class TestBodies : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_page.start());
        m_page.evaluate(u"window.hits = 0"_qs); // what scripts would count up
    }

    void keepsTheBody_data()
    {
        QTest::addColumn<QString>("stored");
        QDirIterator files(BODIES, {u"*.html"_qs});
        while (files.hasNext()) {
            const QString path = files.next();
            QTest::newRow(qPrintable(files.fileName())) << QString(contentsOf(path));
        }
        QTest::newRow("empty") << QString();
        QTest::newRow("white space") << u" \n\n "_qs;
        QTest::newRow("one word") << u"word"_qs;
        QTest::newRow("the editor's own marks")
            << u"<a class='readmore' href='#' contentEditable=false draggable=true>Read More</a>\n\n"
               "<div class='heading-container'><img class='heading-box h2-selector'><h2 "
               "class='headingAlreadyInsideContainer'>x</h2></div>"_qs;
    }

    void keepsTheBody()
    {
        QFETCH(QString, stored);
        m_page.load(stored);
        QCOMPARE(m_page.body(), stored);

        // Neither does clicking about and looking count as a change.
        m_page.press(Qt::Key_Down, Qt::NoModifier, 3);
        m_page.press(Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(m_page.body(), stored);
        QVERIFY(m_page.reports.isEmpty());

        // And nothing in it runs.
        QTest::mouseClick(m_page.view->focusProxy(), Qt::LeftButton, {}, {200, 60});
        m_page.evaluate(u"for (const e of document.querySelectorAll('#content *')) {"
                        "  e.dispatchEvent(new Event('error')); e.dispatchEvent(new MouseEvent('click', "
                        "{bubbles: true, cancelable: true})); }"_qs);
        QCOMPARE(m_page.evaluate(u"new Promise(r => 0), window.hits"_qs).toInt(), 0);
        const QString active = u"document.querySelectorAll('#content :is(script, iframe, form, input, object, embed, "
                               "style, link, meta, base, svg, math, video, template, [onerror], [onclick], "
                               "[autofocus])').length"_qs;
        QCOMPARE(m_page.evaluate(active).toInt(), 0);
        QCOMPARE(m_page.body(), stored);
        QCOMPARE(m_page.view->url().adjusted(QUrl::RemoveFragment), EditorScheme::pageUrl());
    }

    void changesOneWordOnly_data()
    {
        const TestTable<QString, QString> row;
        const auto rows = [&row](const QString &file, const QStringList &words) {
            for (const QString &word : words)
                row(qPrintable(file + ": " + word), file + ".html", word);
        };
        rows("block-essay",
            {"lamplight", "what comes after", "never whistle", "low water", "smoked", "holds one", "print(",
                "last paragraph"});
        rows("block-layout", {"In the column", "Tides", "3.1", "a month", "[gallery ids"});
        rows("block-with-freeform", {"Written", "stray", "Old heading", "Tight"});
        rows("loose-classic",
            {"entity", "line break", "Quoted", "A heading", "right behind", "nested", "[gallery columns"});
        rows("loose-videos", {"Then text"});
        rows("loose-players",
            {"tell me", "Between", "in a sentence", "a last", "Under the", "keep", "and this", "a mark", "the picture",
                "Stray", "Right"});
        rows("loose-elements", {"Centred", "in a div", "its ", "End"});
        rows("loose-unicode", {"Zürich"});
        rows("messy-tags", {"unquoted", "many blank"});
        rows("messy-space", {"leading", "line ends"});
        rows("messy-unclosed", {"unclosed block"});
        rows("hostile-scripts", {"and after", "Handlers"});
        rows("hostile-block", {"Text"});
    }

    void changesOneWordOnly()
    {
        const auto [file, word] = testRow<QString, QString>();
        const QString stored = contentsOf(BODIES "/" + file);
        m_page.load(stored);
        m_page.putCursorBehind(word);
        m_page.type(u"XY"_qs);

        QString expected = stored;
        const qsizetype at = expected.indexOf(word);
        QVERIFY(at >= 0);
        expected.insert(at + word.size(), u"XY"_qs);
        QCOMPARE(m_page.body(), expected);
        QTRY_COMPARE(m_page.reports.isEmpty() ? QString() : m_page.reports.last(), expected);

        m_page.press(Qt::Key_Backspace, Qt::NoModifier, 2);
        QCOMPARE(m_page.body(), stored);
    }

    void keepsLocalPictures()
    {
        const QString local = m_page.copyPicture(u"sea side.png"_qs);
        m_page.copyPicture(u"cached.png"_qs);
        // The second is on the blog, and shown from the cache.
        const QString stored = u"One <img class=\"aligncenter\" src=\"%1\" alt=\"\" /> word.\n\n"
                               "<a href=\"http://blog.example/cached.png\"><img "
                               "src=\"http://blog.example/cached.png\" alt='x' /></a> caption"_qs.arg(local);
        m_page.load(stored);
        QCOMPARE(m_page.body(), stored);
        QTRY_COMPARE(m_page.evaluate(u"[...document.images].map(i => i.naturalWidth).join()"_qs).toString(), u"4,4"_qs);
        m_page.putCursorBehind(u"word"_qs);
        m_page.type(u"s"_qs);
        m_page.putCursorBehind(u"caption"_qs);
        m_page.type(u"s"_qs);
        QCOMPARE(m_page.body(), QString(stored).replace("word", "words").replace("caption", "captions"));
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

static const RegisteredTest<TestBodies> registered;

#include "TestBodies.moc"
