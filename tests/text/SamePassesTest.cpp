#include "ReferencePasses.h"
#include "support/TestClasses.h"
#include "text/ContentPasses.h"
#include "text/HTMLEntities.h"

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

const QStringList common{u" "_qs, u"\n"_qs, u"\r"_qs, u"\t"_qs, u"\u00a0"_qs, u"\u2028"_qs, u"\v"_qs, u"\u0085"_qs,
    u">"_qs, u"<"_qs, u"/"_qs, u"/>"_qs, u"'"_qs, u"\""_qs, u"="_qs, u"x"_qs, u"word"_qs, u"ſ"_qs, u"\U0001F600"_qs};

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
struct ComparedPass {
    const char *name;
    Pass pass;
    QString (*reference)(const QString &);
    QStringList fragments;
};

const QList<ComparedPass> &comparedPasses()
{
    using namespace ContentPasses;
    using namespace HTMLEntities;
    static const QStringList blocks = with({u"<p>", u"</p>", u"<p class='a'>", u"<P>", u"<div", u"</div>", u"</DIV >",
        u"<BLOCKquote>", u"<bloc\u212aquote>", u"<h", u"1>", u"<param>", u"<a href='x'>", u"<a", u"<img src='y' />",
        u"<img", u"\n\n", u"</a>", u"</summary>", u"\n \n", u"<hr />", u"one", u"<!-- x -->"});
    static const QStringList entities = with({u"&", u"&amp;", u"amp;", u"lt;", u"&lt;", u"&#", u"65;", u"&#x41;",
        u"#X4g;", u"&nbsp;", u"&thetasym;", u"&bogus;", u";", u"&#65534;", u"&#65535;", u"&#x0;", u"&#59;"});
    static const QList<ComparedPass> passes{
        {"empty paragraphs", removeEmptyParagraphs,
            [](const QString &body) { return Reference::removeEmptyParagraphs(body); },
            with({u"<p>", u"</p>", u"<P>", u"<p >", u"</p"})},
        {"paragraphs", contentReplacingDoubleSpaceForParagraphs, Reference::paragraphs, blocks},
        {"entities", stringByDecodingHTMLEntities, Reference::entitiesDecoded, entities},
        {"plain text", stringByConvertingHTMLToPlainText, Reference::plainText,
            with({u"<b>", u"</b>", u"</p>", u"<p", u"</ ", u"<!--", u"-->", u"&amp;", u"lt;", u"  ",
                u"eight words or"})},
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
    void agreesWithTheReference_data()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < comparedPasses().size(); ++i)
            QTest::newRow(comparedPasses()[i].name) << i;
    }

    void agreesWithTheReference()
    {
        QFETCH(int, index);
        const ComparedPass &one = comparedPasses()[index];
        RandomBodies bodies(20141021u + unsigned(index), one.fragments);
        int changed = 0;
        for (int i = 0; i < rounds; ++i) {
            const QString body = bodies.next(i % 3 == 0 ? 40 : 12);
            const QString result = one.pass(body);
            changed += result != body;
            const QString expected = one.reference(body);
            QVERIFY2(result == expected, shown(body) + "\nfound    " + shown(result) + "\nexpected " + shown(expected));
        }
        QVERIFY2(changed > rounds / 50, "the bodies hardly ever hold a match");
    }

private:
    const int rounds = qEnvironmentVariableIsSet("ZALMO_ROUNDS") ? qEnvironmentVariableIntValue("ZALMO_ROUNDS") : 3000;
};

static const RegisteredTest<SamePassesTest> registered;
#include "SamePassesTest.moc"
