#include "PageFixture.h"
#include "support/TestClasses.h"

#include <QDirIterator>
#include <QTest>

namespace {
QString readBody(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString corpusBody(const QString &name)
{
    return readBody(QStringLiteral(BODIES "/") + name);
}
} // namespace

/// What the writer has not touched goes back byte for byte.
class TestRoundTrip : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QVERIFY(m_page.start()); }

    void keepsTheBody_data()
    {
        QTest::addColumn<QString>("stored");
        QDirIterator files(QStringLiteral(BODIES), {QStringLiteral("*.html")});
        while (files.hasNext()) {
            const QString path = files.next();
            QTest::newRow(qPrintable(files.fileName())) << readBody(path);
        }
        QTest::newRow("empty") << QString();
        QTest::newRow("white space") << QStringLiteral(" \n\n ");
        QTest::newRow("one word") << QStringLiteral("word");
        QTest::newRow("the editor's own marks")
            << QStringLiteral("<a class='readmore' href='#' contentEditable=false draggable=true>Read More</a>\n\n"
                              "<div class='heading-container'><img class='heading-box h2-selector'><h2 "
                              "class='headingAlreadyInsideContainer'>x</h2></div>");
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
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("word");
        const auto row = [](const char *file, const char *word) {
            QTest::addRow("%s: %s", file, word) << QString::fromLatin1(file) << QString::fromUtf8(word);
        };
        row("block-essay.html", "lamplight");
        row("block-essay.html", "what comes after");
        row("block-essay.html", "never whistle");
        row("block-essay.html", "low water");
        row("block-essay.html", "smoked");
        row("block-essay.html", "holds one");
        row("block-essay.html", "print(");
        row("block-essay.html", "last paragraph");
        row("block-layout.html", "In the column");
        row("block-layout.html", "Tides");
        row("block-layout.html", "3.1");
        row("block-layout.html", "a month");
        row("block-layout.html", "[gallery ids");
        row("block-with-freeform.html", "Written");
        row("block-with-freeform.html", "stray");
        row("block-with-freeform.html", "Old heading");
        row("block-with-freeform.html", "Tight");
        row("loose-classic.html", "entity");
        row("loose-classic.html", "line break");
        row("loose-classic.html", "Quoted");
        row("loose-classic.html", "A heading");
        row("loose-classic.html", "right behind");
        row("loose-classic.html", "nested");
        row("loose-classic.html", "[gallery columns");
        row("loose-videos.html", "Then text");
        row("loose-elements.html", "Centred");
        row("loose-elements.html", "in a div");
        row("loose-elements.html", "its ");
        row("loose-elements.html", "End");
        row("loose-unicode.html", "Zürich");
        row("messy-tags.html", "unquoted");
        row("messy-tags.html", "many blank");
        row("messy-space.html", "leading");
        row("messy-space.html", "line ends");
        row("messy-unclosed.html", "unclosed block");
        row("hostile-scripts.html", "and after");
        row("hostile-scripts.html", "Handlers");
        row("hostile-block.html", "Text");
    }

    void changesOneWordOnly()
    {
        QFETCH(QString, file);
        QFETCH(QString, word);
        const QString stored = corpusBody(file);
        m_page.load(stored);
        m_page.putCursorBehind(word);
        m_page.type(QStringLiteral("XY"));

        QString expected = stored;
        const qsizetype at = expected.indexOf(word);
        QVERIFY(at >= 0);
        expected.insert(at + word.size(), QStringLiteral("XY"));
        TRY_BODY(expected);
        QTRY_VERIFY(!m_page.reports.isEmpty());
        QCOMPARE(m_page.reports.last(), expected);

        m_page.press(Qt::Key_Backspace, Qt::NoModifier, 2);
        TRY_BODY(stored);
    }

    void keepsLocalPictures()
    {
        const QString local = m_page.copyPicture(QStringLiteral("sea side.png"));
        m_page.copyPicture(QStringLiteral("cached.png"));
        // The second is on the blog, and shown from the cache.
        const QString stored = QStringLiteral("One <img class=\"aligncenter\" src=\"%1\" alt=\"\" /> word.\n\n"
                                              "<a href=\"http://blog.example/cached.png\"><img "
                                              "src=\"http://blog.example/cached.png\" alt='x' /></a> caption")
                                   .arg(local);
        m_page.load(stored);
        QCOMPARE(m_page.body(), stored);
        QTRY_COMPARE(m_page.evaluate(QStringLiteral("[...document.images].map(i => i.naturalWidth).join()")).toString(),
            QStringLiteral("4,4"));
        m_page.putCursorBehind(QStringLiteral("word"));
        m_page.type(QStringLiteral("s"));
        m_page.putCursorBehind(QStringLiteral("caption"));
        m_page.type(QStringLiteral("s"));
        TRY_BODY(QString(stored).replace("word", "words").replace("caption", "captions"));
    }

private:
    PageFixture m_page;
};

static const RegisteredTest<TestRoundTrip> registered;

#include "TestRoundTrip.moc"
