#include "wordpress/ContentConversion.h"
#include "support/TestClasses.h"
#include "support/TestEnvironment.h"
#include "text/ContentPasses.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

/// From a stored body to the editor's form.
class ContentConversionTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void givesThePassesOfTheWholeBody_data();
    void givesThePassesOfTheWholeBody();
    void leavesParagraphsOfBlocksAlone();
    void remembersEveryPiece_data();
    void remembersEveryPiece();
    void swapsCachedPictures_data();
    void swapsCachedPictures();
    void isLinear();
};

void ContentConversionTest::givesThePassesOfTheWholeBody_data()
{
    QTest::addColumn<QString>("stored");
    QTest::newRow("empty") << u""_s;
    QTest::newRow("two paragraphs") << u"one\n\ntwo"_s;
    QTest::newRow("one break") << u"a\nb"_s;
    QTest::newRow("an element") << u"<p>x</p>"_s;
    QTest::newRow("elements and text") << u"<h2>Top</h2>\none\n\n<ul><li>a</li></ul>\n\ntwo"_s;
    QTest::newRow("inline elements") << u"some <b>bold</b> text\nand <a href='x'>more</a>\n\nend"_s;
    QTest::newRow("linked picture") << u"<a href='x'><img src='y' /></a>\n\ntext"_s;
    QTest::newRow("read more") << u"one\n\n<!--more-->\n\ntwo"_s;
    QTest::newRow("picture class") << u"<img class=\"aligncenter\" src=\"a.png\" />"_s;
    QTest::newRow("shortcode") << u"one\n\n[youtube=abc]\n\ntwo"_s;
}

void ContentConversionTest::givesThePassesOfTheWholeBody()
{
    QFETCH(QString, stored);
    TestEnvironment environment;
    const EditorBody body = ContentConversion::postContentForZalmoEditor(stored, environment.files);
    const QString whole = ContentPasses::postContentWithHeadings(ContentPasses::postContentWithVideoURLTags(
        ContentPasses::postContentWithShortCodeTags(ContentPasses::contentForEditor(stored))));
    QCOMPARE(body.html, whole);
    QVERIFY(!body.isBlockEditor);
}

void ContentConversionTest::leavesParagraphsOfBlocksAlone()
{
    TestEnvironment environment;
    const QString stored = u"<!-- wp:paragraph -->\n<p>one</p>\n<!-- /wp:paragraph -->\n\n"
                           "<!-- wp:heading -->\n<h2>Top</h2>\n<!-- /wp:heading -->\n\nloose text"_s;
    const EditorBody body = ContentConversion::postContentForZalmoEditor(stored, environment.files);
    QVERIFY(body.isBlockEditor);
    QCOMPARE(body.pieces.size(), 3);
    QCOMPARE(body.pieces[0].html, u"<p>one</p>"_s);
    QCOMPARE(body.pieces[1].html,
        u"<div class='heading-container'><img class='heading-box h2-selector'><h2 "
        "class='headingAlreadyInsideContainer'>Top</h2 class='headingAlreadyInsideContainer'></div>"_s);
    QCOMPARE(body.pieces[2].html, u"loose text"_s);
}

void ContentConversionTest::remembersEveryPiece_data()
{
    givesThePassesOfTheWholeBody_data();
    QTest::newRow("blocks")
        << u"\n<!-- wp:image {\"id\":5} -->\n<figure><img src=\"a.png\"/></figure>\n<!-- /wp:image -->\n"_s;
    QTest::newRow("unclosed") << u"<div><p>one\n\n<!-- wp:quote -->"_s;
}

void ContentConversionTest::remembersEveryPiece()
{
    QFETCH(QString, stored);
    TestEnvironment environment;
    const EditorBody body = ContentConversion::postContentForZalmoEditor(stored, environment.files);
    QString storedAgain;
    QString html;
    for (const BodyPiece &piece : body.pieces) {
        storedAgain += piece.stored;
        html += piece.html;
    }
    QCOMPARE(storedAgain, stored);
    QCOMPARE(html, body.html);
}

void ContentConversionTest::swapsCachedPictures_data()
{
    QTest::addColumn<QString>("stored"); // cached: a.png, b.JPG, %41.png
    QTest::addColumn<QStringList>("swapped"); // names
    QTest::newRow("picture") << u"<img src=\"http://x.test/up/a.png\" />"_s << QStringList{u"a.png"_s};
    QTest::newRow("link to a picture") << u"<a href='http://x.test/b.JPG'>b</a>"_s << QStringList{u"b.JPG"_s};
    QTest::newRow("https stays") << u"<img src=\"https://x.test/a.png\" />"_s << QStringList();
    QTest::newRow("not cached") << u"<img src=\"http://x.test/c.png\" />"_s << QStringList();
    QTest::newRow("link to something else") << u"<a href='http://x.test/a.html'>a</a>"_s << QStringList();
    QTest::newRow("up") << u"<img src=\"http://x.test/..\" />"_s << QStringList();
    QTest::newRow("nothing behind the slash") << u"<img src=\"http://x.test/\" />"_s << QStringList();
    QTest::newRow("name as it stands") << u"<img src=\"http://x.test/%41.png\" />"_s << QStringList{u"%41.png"_s};
}

void ContentConversionTest::swapsCachedPictures()
{
    QFETCH(QString, stored);
    QFETCH(QStringList, swapped);
    TestEnvironment environment;
    for (const QString &name : {u"a.png"_s, u"b.JPG"_s, u"%41.png"_s})
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

void ContentConversionTest::isLinear()
{
    TestEnvironment environment;
    const auto milliseconds = [&](int repeats) {
        const QString hostile = u"<img \n\n[youtube <a <h1>\n\n"_s.repeated(repeats);
        QElapsedTimer timer;
        timer.start();
        ContentConversion::postContentForZalmoEditor(hostile, environment.files);
        return timer.elapsed();
    };
    milliseconds(100);
    const qint64 small = milliseconds(2000);
    // Quadratic work would take a hundred times as long.
    QVERIFY2(milliseconds(20000) < 30 * qMax<qint64>(small, 20), qPrintable(QString::number(small)));
}

static const RegisteredTest<ContentConversionTest> registered;
#include "ContentConversionTest.moc"
