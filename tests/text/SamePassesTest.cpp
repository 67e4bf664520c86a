#include "ReferencePasses.h"
#include "support/TestClasses.h"
#include "text/ContentPasses.h"
#include "text/HTMLEntities.h"

#include <QTest>
#include <random>

namespace Reference = ReferencePasses;

// The scanners against the patterns they stand for, on many small bodies made of what the patterns look for.

namespace {
/// Bodies out of fragments; the same for the same seed.
class RandomBodies {
public:
    RandomBodies(unsigned seed, QStringList fragments)
        : m_random(seed)
        , m_fragments(std::move(fragments))
    {
    }
    QString next(int most)
    {
        QString body;
        for (int n = below(most) + 1; n > 0; --n) {
            m_recent.append(below(3) == 0 && !m_recent.isEmpty() ? m_recent[below(int(m_recent.size()))]
                                                                 : m_fragments[below(int(m_fragments.size()))]);
            if (m_recent.size() > 5)
                m_recent.removeFirst(); // fragments come back soon, so that equal matches are met
            body += m_recent.last();
        }
        return body;
    }

private:
    int below(int limit) { return int(m_random() % unsigned(limit)); }
    std::mt19937 m_random;
    QStringList m_fragments;
    QStringList m_recent;
};

const QStringList common{QStringLiteral(" "), QStringLiteral("\n"), QStringLiteral("\r"), QStringLiteral("\t"),
    QStringLiteral("\u00a0"), QStringLiteral("\u2028"), QStringLiteral("\v"), QStringLiteral("\u0085"),
    QStringLiteral(">"), QStringLiteral("<"), QStringLiteral("/"), QStringLiteral("/>"), QStringLiteral("'"),
    QStringLiteral("\""), QStringLiteral("="), QStringLiteral("x"), QStringLiteral("word"), QStringLiteral("ſ"),
    QStringLiteral("\U0001F600")};

QStringList with(std::initializer_list<const char16_t *> more)
{
    QStringList fragments = common;
    for (const char16_t *one : more) {
        fragments.append(QString::fromUtf16(one));
        fragments.append(QString::fromUtf16(one)); // twice as often as the rest
    }
    return fragments;
}

using Pass = QString (*)(const QString &);
using Steps = Reference::Replacements (*)(const QString &);

struct TwoSteps {
    const char *name;
    Pass pass;
    Steps steps;
    QStringList fragments;
};

const QList<TwoSteps> &twoStepPasses()
{
    using namespace ContentPasses;
    static const QList<TwoSteps> passes{
        {"image classes", contentReplacingImageClasses, Reference::imageClasses,
            with({u"<img ", u"<IMG", u"class='", u"class=\"", u"claſſ='", u"aligncenter", u"' />", u"\" />", u"//>",
                u"<img class='a' />", u"<img  class=\"a\" />", u"<img class='", u" alt=\"a\""})},
        {"shortcodes", postContentWithShortCodeTags, Reference::shortCodeTags,
            with({u"[youtube", u"[YouTube=", u"[vimeo ", u"]", u"[", u" 12]", u"[youtube x]", u"[vimeo 1]",
                u"<div draggable='true' class='youtube'>", u"</div>"})},
        {"video addresses", postContentWithVideoURLTags, Reference::videoURLTags,
            with({u" http://www.youtube.com/watch?v=", u"https://www.youtube.com/watch?v=a ", u"httpſ://www.",
                u"\nhttp://www.youtube.com/watch?v=b", u"HTTP://WWW.YouTube.com/watch?v=a", u"youtube.com/watch?v=",
                u"a", u"b ", u"http", u"://"})},
        {"headings", postContentWithHeadings, Reference::headings,
            with({u"<h1>", u"<h2", u"< h3 ", u"</h1>", u"</h2>", u"< / h3 >", u"</H2>", u"h1", u"</ h6", u"<h2>a</h2>",
                u" class='headingAlreadyInsideContainer'", u"<h2 class = \" headingAlreadyInsideContainer '>"})},
        {"embeds", replaceEmbedTags, Reference::embedTags,
            with({u"<div ", u"<DIV\n", u"class='embed'>", u"class=\"youtube'>", u"claSS='videolog'>", u"</div>",
                u"[youtube=x]", u"<div class='vimeo'>", u"<div class='vimeo'>a</div>", u"</DIV>"})},
    };
    return passes;
}

struct OneStep {
    const char *name;
    Pass pass;
    std::function<QString(const QString &)> reference;
    QStringList fragments;
};

QString sourcesOf(const QString &content)
{
    return ContentPasses::imageSources(content, QString()).join(u'|');
}

const QList<OneStep> &oneStepPasses()
{
    using namespace ContentPasses;
    using namespace HTMLEntities;
    static const QStringList blocks = with({u"<p>", u"</p>", u"<p class='a'>", u"<P>", u"<div", u"</div>", u"</DIV >",
        u"<BLOCKquote>", u"<bloc\u212aquote>", u"<h", u"1>", u"<param>", u"<a href='x'>", u"<a", u"<img src='y' />",
        u"<img", u"\n\n", u"</a>", u"<ſtyle>", u"</summary>", u"\n \n", u"<hr />", u"one", u"<!-- x -->"});
    static const QStringList images = with({u"<img ", u"<IMG\n", u"<img", u"src", u"ſrc =", u"data-youtube = '",
        u"src='http://a/b.jpg'", u"data-youtube=\"abc\"", u"SRC=\""});
    static const QStringList entities = with({u"&", u"&amp;", u"amp;", u"lt;", u"&lt;", u"&#", u"65;", u"&#x41;",
        u"#X4g;", u"&nbsp;", u"&thetasym;", u"&bogus;", u";", u"&#65534;", u"&#65535;", u"&#x0;", u"&#59;"});
    static const QStringList urls = with({u"http://", u"https://", u"HTTP://", u"=\"", u"a.b", u".", u"a", u"-", u"_",
        u"é.c", u"?q=1&amp;", u"#", u":", u",", u"\U00020000", u"e\u0301", u"%", u"example.com/"});
    static const QList<OneStep> passes{
        {"empty paragraphs", removeEmptyParagraphs, Reference::removeEmptyParagraphs,
            with({u"<p>", u"</p>", u"<P>", u"<p >", u"</p"})},
        {"paragraphs", contentReplacingDoubleSpaceForParagraphs, Reference::paragraphs, blocks},
        {"video placeholders", replaceYouTubeTags, Reference::replaceYouTubeTags, images},
        {"image sources", sourcesOf, [](const QString &content) { return Reference::imageSources(content).join(u'|'); },
            images},
        {"extract", removeHTMLFromString, Reference::removeHTMLFromString,
            with({u"<br>", u"&nbsp;", u"<>", u"<b>", u"<a href='x",
                u"ten letters here, and some more words to fill it"})},
        {"links", stringByLinkifyingURLs, Reference::linkified, urls},
        {"entities", stringByDecodingHTMLEntities, Reference::entitiesDecoded, entities},
        {"plain text", stringByConvertingHTMLToPlainText, Reference::plainText,
            with({u"<b>", u"</b>", u"</p>", u"<p", u"</ ", u"<!--", u"-->", u"&amp;", u"lt;", u"  ",
                u"eight words or"})},
        {"stripped tags", stringByStrippingTags, Reference::strippedTags,
            with({u"<a>", u"</a>", u"<em>", u"<b", u"</span>", u"<a href='x'>", u"<em"})},
    };
    return passes;
}

QByteArray shown(const QString &text)
{
    return text.toUtf8().toPercentEncoding(" <>/='\"[]&;:#?!\\|");
}
} // namespace

class SamePassesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void twoSteps_data()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < twoStepPasses().size(); ++i)
            QTest::newRow(twoStepPasses()[i].name) << i;
    }

    void twoSteps()
    {
        QFETCH(int, index);
        const TwoSteps &one = twoStepPasses()[index];
        RandomBodies bodies(20141021u + unsigned(index), one.fragments);
        int changed = 0;
        for (int i = 0; i < rounds; ++i) {
            const QString body = bodies.next(i % 3 == 0 ? 30 : 12);
            const QString result = one.pass(body);
            const auto replacements = one.steps(body);
            changed += result != body;
            if (!Reference::isResultOf(replacements, body, result)) {
                QFAIL(qPrintable(QStringLiteral("body %1 of %2\nfound    %3\nexpected %4")
                                     .arg(i)
                                     .arg(QLatin1String(shown(body)), QLatin1String(shown(result)),
                                         QLatin1String(shown(Reference::longestFirst(replacements, body))))));
            }
        }
        QVERIFY2(changed > rounds / 50, "the bodies hardly ever hold a match");
    }

    void oneStep_data()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < oneStepPasses().size(); ++i)
            QTest::newRow(oneStepPasses()[i].name) << i;
    }

    void oneStep()
    {
        QFETCH(int, index);
        const OneStep &one = oneStepPasses()[index];
        RandomBodies bodies(20141021u + unsigned(index), one.fragments);
        int changed = 0;
        for (int i = 0; i < rounds; ++i) {
            const QString body = bodies.next(i % 3 == 0 ? 40 : 12);
            const QString result = one.pass(body);
            changed += result != body;
            QCOMPARE(shown(result), shown(one.reference(body)));
        }
        QVERIFY2(changed > rounds / 50, "the bodies hardly ever hold a match");
    }

private:
    const int rounds = qEnvironmentVariableIsSet("ZALMO_ROUNDS") ? qEnvironmentVariableIntValue("ZALMO_ROUNDS") : 3000;
};

static const RegisteredTest<SamePassesTest> registered;
#include "SamePassesTest.moc"
