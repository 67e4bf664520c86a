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
    void givesThePassesOfTheWholeBodyInPieces()
    {
        const TestEnvironment environment;
        for (const QString &stored : {u""_qs, u"one\n\ntwo"_qs, u"a\nb"_qs, u"<p>x</p>"_qs,
                 u"<h2>Top</h2>\none\n\n<ul><li>a</li></ul>\n\ntwo"_qs,
                 u"some <b>bold</b> text\nand <a href='x'>more</a>\n\nend"_qs,
                 u"<a href='x'><img src='y' /></a>\n\ntext"_qs, u"one\n\n<!--more-->\n\ntwo"_qs,
                 u"<img class=\"aligncenter\" src=\"a.png\" />"_qs,
                 u"\n<!-- wp:image {\"id\":5} -->\n<figure><img src=\"a.png\"/></figure>\n<!-- /wp:image -->\n"_qs,
                 u"<div><p>one\n\n<!-- wp:quote -->"_qs}) {
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

    void swapsCachedPictures()
    {
        const std::vector<std::pair<QString, QStringList>> bodies{
            {u"<img src=\"http://x.test/up/a.png\" />"_qs, {u"a.png"_qs}},
            {u"<a href='http://x.test/b.JPG'>b</a>"_qs, {u"b.JPG"_qs}},
            {u"<img src=\"http://x.test/%41.png\" />"_qs, {u"%41.png"_qs}}, // the name as it stands
            {u"<img src=\"https://x.test/a.png\" />"_qs, {}},
            {u"<img src=\"http://x.test/c.png\" />"_qs, {}}, // not cached
            {u"<a href='http://x.test/a.html'>a</a>"_qs, {}},
            {u"<img src=\"http://x.test/..\" /><img src=\"http://x.test/\" />"_qs, {}},
        };
        TestEnvironment environment;
        for (const QString &name : {u"a.png"_qs, u"b.JPG"_qs, u"%41.png"_qs})
            environment.addCachedFile(name, "x");
        for (const auto &[stored, swapped] : bodies) {
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
    }

    void isQuickWhateverTheBodyHolds()
    {
        const TestEnvironment environment;
        for (const QString &unit : {u" "_qs, u"\n"_qs, u"<p>Some words.</p>\n\n"_qs, u"Some words.\n\n"_qs,
                 u"[youtube x]\n"_qs, u"<img \n\n[youtube <a </b><h1>\n\n"_qs}) {
            const QString body = unit.repeated(1'000'000 / unit.size());
            const double seconds =
                processorSeconds([&] { ContentConversion::postContentForZalmoEditor(body, environment.files); });
            QVERIFY2(seconds < 3, qPrintable(unit + QString::number(seconds)));
        }
    }
};

static const RegisteredTest<ContentConversionTest> registered;
#include "ContentConversionTest.moc"
