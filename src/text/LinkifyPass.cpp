#include "text/HTMLEntities.h"

#include "text/Rewriter.h"
#include "text/Scanning.h"

using namespace Scanning;

namespace {
/// One character of a text: its code and how many units it takes.
struct Character {
    char32_t code = 0;
    qsizetype units = 0;
};

Character characterAt(QStringView text, qsizetype at)
{
    const QChar c = text[at];
    if (c.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate())
        return {QChar::surrogateToUcs4(c, text[at + 1]), 2};
    return {c.unicode(), 1};
}

bool isWord(char32_t c)
{
    if (c < 0x80)
        return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z') || (c >= U'0' && c <= U'9') || c == U'_';
    return QChar::isLetter(c) || QChar::isMark(c) || QChar::category(c) == QChar::Number_DecimalDigit
        || QChar::category(c) == QChar::Number_Letter || QChar::category(c) == QChar::Punctuation_Connector
        || c == 0x200c || c == 0x200d;
}

bool isHost(char32_t c)
{
    return isWord(c) || c == U'-';
}

bool isOneOf(char32_t c, std::u32string_view set)
{
    return set.find(c) != std::u32string_view::npos;
}

template <class Test>
qsizetype skip(QStringView text, qsizetype at, Test test)
{
    while (at < text.size()) {
        const Character c = characterAt(text, at);
        if (!test(c.code))
            break;
        at += c.units;
    }
    return at;
}

/// The end of two or more labels with dots between, or -1.
qsizetype hostEnd(QStringView text, qsizetype at)
{
    qsizetype end = skip(text, at, isHost);
    if (end == at)
        return -1;
    int labels = 1;
    while (end + 1 < text.size() && text[end] == u'.') {
        const qsizetype next = skip(text, end + 1, isHost);
        if (next == end + 1)
            break;
        end = next;
        ++labels;
    }
    return labels > 1 ? end : -1;
}

/// Path and query behind the host. What closes a sentence, dot, comma and colon, does not belong to them at the end.
qsizetype pathEnd(QStringView text, qsizetype at)
{
    qsizetype end = at;
    for (qsizetype i = at; i < text.size();) {
        const Character c = characterAt(text, i);
        const bool closing = isHost(c.code) || isOneOf(c.code, U"@?^=%&;/~+#");
        if (!closing && !isOneOf(c.code, U".,:"))
            break;
        i += c.units;
        if (closing)
            end = i;
    }
    return end;
}

bool startsWord(QStringView text, qsizetype at)
{
    if (at == 0)
        return true;
    const QChar before = text[at - 1];
    const bool pair = before.isLowSurrogate() && at > 1 && text[at - 2].isHighSurrogate();
    return !isWord(pair ? QChar::surrogateToUcs4(text[at - 2], before) : char32_t(before.unicode()));
}

/// Where the scheme begins whose colon stands at `colon`: at a word's beginning, not in a quoted attribute; or -1.
qsizetype schemeBefore(QStringView text, qsizetype colon)
{
    for (const std::u16string_view scheme : {u"https", u"http"}) {
        const qsizetype at = colon - qsizetype(scheme.size());
        if (at >= 0 && matches(text, at, scheme) && startsWord(text, at))
            return at >= 2 && text.sliced(at - 2, 2) == u"=\"" ? -1 : at;
    }
    return -1;
}
} // namespace

QString HTMLEntities::stringByLinkifyingURLs(const QString &text)
{
    Rewriter out(text);
    for (qsizetype colon = indexOf(text, u':', 0); colon < text.size();) {
        const qsizetype start = matches(text, colon, u"://") ? schemeBefore(text, colon) : -1;
        const qsizetype host = start < 0 ? -1 : hostEnd(text, colon + 3);
        if (host < 0) {
            colon = indexOf(text, u':', colon + 1);
            continue;
        }
        const qsizetype end = pathEnd(text, host);
        const QStringView url = QStringView(text).sliced(start, end - start);
        out.replace(start, end, QStringView(u"<a href=\""), url, QStringView(u"\" class=\"linkified\">"), url,
            QStringView(u"</a>"));
        colon = indexOf(text, u':', end);
    }
    return out.result();
}
