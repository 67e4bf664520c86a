#include "PageFixture.h"
#include "support/Files.h"

#include <QDirIterator>

/// What the writer has not touched goes back byte for byte.
class TestRoundTrip : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QVERIFY(m_page.start()); }

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
    }

    void changesOneWordOnly_data()
    {
        addColumns<QString, QString>({"file", "word"});
        const auto rows = [](const QString &file, const QStringList &words) {
            for (const QString &word : words)
                QTest::addRow("%s: %s", qPrintable(file), qPrintable(word)) << file + ".html" << word;
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
        QFETCH(QString, file);
        QFETCH(QString, word);
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

private:
    PageFixture m_page;
};

static const RegisteredTest<TestRoundTrip> registered;

#include "TestRoundTrip.moc"
