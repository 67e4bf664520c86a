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

    void isQuickWhateverTheBodyHolds_data()
    {
        const TestTable<QString> row({"body"});
        constexpr int many = 1'000'000;
        row("blanks", QString(many, u' '));
        row("tabs", QString(many, u'\t'));
        row("line ends", QString(many, u'\n'));
        row("blanks behind words", (u'a' + QString(1000, u' ')).repeated(many / 1000));
        row("nested", u"<div>"_qs.repeated(100'000) + u"</div>"_qs.repeated(100'000));
        row("unclosed", u"<b>"_qs.repeated(200'000));
        row("paragraphs", u"<p>Some words.</p>\n\n"_qs.repeated(5 * many / 20));
        row("loose paragraphs", u"Some words.\n\n"_qs.repeated(many / 13));
        row("players", u"[youtube x]\n"_qs.repeated(many / 12));
        row("what begins and does not end", u"<img \n\n[youtube <a </b><h1>\n\n"_qs.repeated(30'000));
    }
    void isQuickWhateverTheBodyHolds()
    {
        QFETCH(QString, body);
        TestEnvironment environment;
        const double seconds =
            processorSeconds([&] { ContentConversion::postContentForZalmoEditor(body, environment.files); });
        QVERIFY2(seconds < 3, qPrintable(QString::number(seconds)));
    }
};

static const RegisteredTest<ContentConversionTest> registered;
#include "ContentConversionTest.moc"
