#include "text/BlockNames.h"

#include "text/Scanning.h"

#include <array>

namespace {
// sorted by the first letter
constexpr std::array<std::u16string_view, 47> names{u"area", u"address", u"article", u"aside", u"blockquote",
    u"caption", u"col", u"colgroup", u"div", u"dl", u"dd", u"dt", u"details", u"form", u"fieldset", u"footer",
    u"figure", u"h1", u"h2", u"h3", u"h4", u"h5", u"h6", u"hr", u"hgroup", u"header", u"li", u"legend", u"map", u"math",
    u"menu", u"noscript", u"nav", u"ol", u"p", u"pre", u"style", u"section", u"summary", u"table", u"thead", u"tfoot",
    u"tbody", u"tr", u"td", u"th", u"ul"};

constexpr auto firstOf = [] {
    std::array<unsigned char, 27> first{};
    for (size_t letter = 0; letter <= 26; ++letter) {
        size_t i = 0;
        while (i < names.size() && size_t(names[i][0] - u'a') < letter)
            ++i;
        first[letter] = static_cast<unsigned char>(i);
    }
    return first;
}();

template <class Test>
bool anyName(QStringView text, qsizetype at, Test test)
{
    const char16_t initial = at < text.size() ? Scanning::folded(text.utf16()[at]) : u' ';
    if (initial < u'a' || initial > u'z')
        return false;
    for (size_t i = firstOf[initial - u'a']; i < firstOf[initial - u'a' + 1]; ++i) {
        if (test(names[i]))
            return true;
    }
    return false;
}
} // namespace

bool BlockNames::isName(QStringView name)
{
    return anyName(name, 0, [&](std::u16string_view block) { return name == QStringView(block); });
}

bool BlockNames::startsAt(QStringView text, qsizetype at)
{
    return anyName(text, at, [&](std::u16string_view name) { return Scanning::matches(text, at, name); });
}

qsizetype BlockNames::endOfClosing(QStringView text, qsizetype at)
{
    qsizetype end = -1;
    anyName(text, at, [&](std::u16string_view name) {
        const qsizetype behind = at + qsizetype(name.size());
        if (!Scanning::matches(text, at, name) || behind >= text.size() || text[behind] != u'>')
            return false;
        end = behind + 1;
        return true;
    });
    return end;
}
