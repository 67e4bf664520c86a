#include "wordpress/ContentConversion.h"
#include "support/ProcessorTime.h"
#include "support/TestClasses.h"
#include "support/TestEnvironment.h"
#include "text/ContentPasses.h"

#include <QRegularExpression>

/// From a stored body to the editor's form.
class ContentConversionTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void givesThePassesOfTheWholeBodyInPieces_data()
    {
        const TestTable<QString> row({"stored"});
        row("empty", u""_qs);
        row("two paragraphs", u"one\n\ntwo"_qs);
        row("one break", u"a\nb"_qs);
        row("an element", u"<p>x</p>"_qs);
        row("elements and text", u"<h2>Top</h2>\none\n\n<ul><li>a</li></ul>\n\ntwo"_qs);
        row("inline elements", u"some <b>bold</b> text\nand <a href='x'>more</a>\n\nend"_qs);
        row("linked picture", u"<a href='x'><img src='y' /></a>\n\ntext"_qs);
        row("read more", u"one\n\n<!--more-->\n\ntwo"_qs);
        row("picture class", u"<img class=\"aligncenter\" src=\"a.png\" />"_qs);
        row("blocks",
            u"\n<!-- wp:image {\"id\":5} -->\n<figure><img src=\"a.png\"/></figure>\n<!-- /wp:image -->\n"_qs);
        row("unclosed block", u"<div><p>one\n\n<!-- wp:quote -->"_qs);
    }

    void givesThePassesOfTheWholeBodyInPieces()
    {
        QFETCH(QString, stored);
        TestEnvironment environment;
        const EditorBody body = ContentConversion::postContentForZalmoEditor(stored, environment.files);
        QCOMPARE(body.isBlockEditor, stored.contains(u"<!-- wp:"));
        QString storedAgain;
        QString html;
        for (const BodyPiece &piece : body.pieces) {
            storedAgain += piece.stored();
            html += piece.html;
        }
        QCOMPARE(storedAgain, stored);
        html.remove(QRegularExpression(u" data-zalmo-stored='[^']*'"_qs));
        if (!body.isBlockEditor)
            QCOMPARE(html, ContentPasses::contentForEditor(stored));
    }

    void showsATooLargeBodyAsItsSource()
    {
        TestEnvironment environment;
        const QString stored = u"<div>"_qs.repeated(5'000);
        const EditorBody body = ContentConversion::postContentForZalmoEditor(stored, environment.files);
        QVERIFY(body.isTooLarge);
        QCOMPARE(body.pieces.size(), 1);
        QCOMPARE(body.pieces[0].core, stored);
        QVERIFY(body.pieces[0].html.isEmpty());
    }

    void leavesParagraphsOfBlocksAlone()
    {
        TestEnvironment environment;
        const QString stored = u"<!-- wp:paragraph -->\n<p>one</p>\n<!-- /wp:paragraph -->\n\n"
                               "<!-- wp:heading -->\n<h2>Top</h2>\n<!-- /wp:heading -->\n\nloose text"_qs;
        const EditorBody body = ContentConversion::postContentForZalmoEditor(stored, environment.files);
        QVERIFY(body.isBlockEditor);
        QCOMPARE(body.pieces.size(), 3);
        QCOMPARE(body.pieces[0].html, u"<p>one</p>"_qs);
        QCOMPARE(body.pieces[1].html, u"<h2>Top</h2>"_qs);
        QCOMPARE(body.pieces[2].html, u"loose text"_qs);
    }

    void swapsCachedPictures_data()
    {
        QTest::addColumn<QString>("stored"); // cached: a.png, b.JPG, %41.png
        QTest::addColumn<QStringList>("swapped"); // names
        QTest::newRow("picture") << u"<img src=\"http://x.test/up/a.png\" />"_qs << QStringList{u"a.png"_qs};
        QTest::newRow("link to a picture") << u"<a href='http://x.test/b.JPG'>b</a>"_qs << QStringList{u"b.JPG"_qs};
        QTest::newRow("https stays") << u"<img src=\"https://x.test/a.png\" />"_qs << QStringList();
        QTest::newRow("not cached") << u"<img src=\"http://x.test/c.png\" />"_qs << QStringList();
        QTest::newRow("link to something else") << u"<a href='http://x.test/a.html'>a</a>"_qs << QStringList();
        QTest::newRow("up") << u"<img src=\"http://x.test/..\" />"_qs << QStringList();
        QTest::newRow("nothing behind the slash") << u"<img src=\"http://x.test/\" />"_qs << QStringList();
        QTest::newRow("name as it stands") << u"<img src=\"http://x.test/%41.png\" />"_qs << QStringList{u"%41.png"_qs};
    }

    void swapsCachedPictures()
    {
        QFETCH(QString, stored);
        QFETCH(QStringList, swapped);
        TestEnvironment environment;
        for (const QString &name : {u"a.png"_qs, u"b.JPG"_qs, u"%41.png"_qs})
            environment.addCachedFile(name, "x");
        QHash<QString, QString> images;
        QString html = ContentConversion::postContentWithLocalImagesURL(stored, environment.files, images);
        QCOMPARE(images.size(), swapped.size());
        for (auto image = images.cbegin(); image != images.cend(); ++image) {
            QVERIFY(swapped.contains(image.key().section(u'/', -1)));
            QVERIFY(html.contains(image.key()));
            html.replace(image.key(), image.value());
        }
        QCOMPARE(html, stored);
    }

    void isLinear()
    {
        TestEnvironment environment;
        const auto seconds = [&](int repeats) {
            const QString hostile = u"<img \n\n[youtube <a </b><h1>\n\n"_qs.repeated(repeats);
            return processorSeconds([&] { ContentConversion::postContentForZalmoEditor(hostile, environment.files); });
        };
        const double small = seconds(2000);
        // Quadratic work would take a hundred times as long.
        QVERIFY2(seconds(20000) < 30 * qMax(small, 0.02), qPrintable(QString::number(small)));
    }
};

static const RegisteredTest<ContentConversionTest> registered;
#include "ContentConversionTest.moc"
