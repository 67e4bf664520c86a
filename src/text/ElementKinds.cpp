#include "text/ElementKinds.h"

#include "text/ElementLists.h"
#include "text/Scanning.h"

#include <algorithm>
#include <array>

namespace {
struct Element {
    std::u16string_view name;
    quint8 kinds = 0;
};

constexpr size_t slotCount = 512;

/// Names of elements know no other case than that of ASCII.
constexpr char16_t lower(char16_t c)
{
    return c >= u'A' && c <= u'Z' ? char16_t(c + (u'a' - u'A')) : c;
}

constexpr size_t slotOf(std::u16string_view name)
{
    quint32 hash = 0;
    for (const char16_t c : name)
        hash = hash * 131 + lower(c);
    return (hash ^ hash >> 9) % slotCount;
}

template <size_t Size>
constexpr void add(std::array<Element, slotCount> &table, const std::u16string_view (&names)[Size], quint8 kind)
{
    for (const std::u16string_view name : names) {
        size_t slot = slotOf(name);
        while (!table[slot].name.empty() && table[slot].name != name)
            slot = (slot + 1) % slotCount;
        table[slot].name = name;
        table[slot].kinds |= kind;
    }
}

/// All names by their hash; an empty name is an empty slot.
constexpr auto elements = [] {
    std::array<Element, slotCount> table{};
    add(table, voidElements, ElementKinds::Void);
    add(table, blockElements, ElementKinds::Block);
    add(table, closesParagraphElements, ElementKinds::ClosesParagraph);
    add(table, rawTextElements, ElementKinds::RawText);
    add(table, escapableRawTextElements, ElementKinds::RawText);
    add(table, keepsSpaceElements, ElementKinds::KeepsSpace);
    add(table, optionalEndElements, ElementKinds::OptionalEnd);
    add(table, withinWordsElements, ElementKinds::WithinWords);
    return table;
}();

/// Where in the sorted list the names begin that have one first letter, and at 26 its end.
constexpr auto firstOf = [] {
    std::array<unsigned char, 27> first{};
    for (size_t letter = 0; letter <= 26; ++letter) {
        size_t i = 0;
        while (i < std::size(endsParagraphElements) && size_t(endsParagraphElements[i][0] - u'a') < letter)
            ++i;
        first[letter] = static_cast<unsigned char>(i);
    }
    return first;
}();

template <class Test>
bool anyParagraphEnder(QStringView text, qsizetype at, Test test)
{
    const char16_t initial = at < text.size() ? Scanning::folded(text.utf16()[at]) : u' ';
    if (initial < u'a' || initial > u'z')
        return false;
    for (size_t i = firstOf[initial - u'a']; i < firstOf[initial - u'a' + 1]; ++i) {
        if (Scanning::matches(text, at, endsParagraphElements[i]) && test(endsParagraphElements[i]))
            return true;
    }
    return false;
}
} // namespace

quint8 ElementKinds::of(QStringView name)
{
    const std::u16string_view wanted(name.utf16(), size_t(name.size()));
    for (size_t slot = slotOf(wanted); !elements[slot].name.empty(); slot = (slot + 1) % slotCount) {
        const std::u16string_view known = elements[slot].name;
        if (std::equal(known.begin(), known.end(), wanted.begin(), wanted.end(),
                [](char16_t a, char16_t b) { return a == lower(b); }))
            return elements[slot].kinds;
    }
    return 0;
}

bool ElementKinds::endsParagraphAt(QStringView text, qsizetype at)
{
    return anyParagraphEnder(text, at, [](std::u16string_view) { return true; });
}

qsizetype ElementKinds::endOfParagraphEnder(QStringView text, qsizetype at)
{
    qsizetype end = -1;
    anyParagraphEnder(text, at, [&](std::u16string_view name) {
        const qsizetype behind = at + qsizetype(name.size());
        if (behind >= text.size() || text[behind] != u'>')
            return false;
        end = behind + 1;
        return true;
    });
    return end;
}
