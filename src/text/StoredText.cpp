#include "text/StoredText.h"

#include <QRegularExpression>
#include <QStringView>

namespace {
/// The text's units from left to right, with one kind of line end.
class Units {
public:
    explicit Units(const QString &text)
        : m_text(QStringView(text).trimmed())
    {
    }
    bool atEnd() const { return m_at == m_text.size(); }
    QChar next()
    {
        const QChar c = m_text[m_at++];
        if (c != u'\r')
            return c;
        if (!atEnd() && m_text[m_at] == u'\n')
            ++m_at;
        return u'\n';
    }

private:
    QStringView m_text;
    qsizetype m_at = 0;
};

QString withoutNoopener(QString text)
{
    static const QRegularExpression words(
        QStringLiteral(R"( rel="noopener(?: noreferrer)?"| noopener(?: noreferrer)?(?="))"));
    return text.remove(words);
}
} // namespace

bool sameStoredText(const QString &one, const QString &other)
{
    const QString left = withoutNoopener(one);
    const QString right = withoutNoopener(other);
    Units a(left);
    Units b(right);
    while (!a.atEnd() && !b.atEnd()) {
        if (a.next() != b.next())
            return false;
    }
    return a.atEnd() && b.atEnd();
}
