#include "text/BodyPieces.h"
#include "text/MarkupScanner.h"

#include <QHash>

namespace {
// What the web engine shows within a few seconds. It flattens what is nested deeper than about five hundred elements.
constexpr qsizetype mostCharacters = 3'000'000;
constexpr int mostTags = 100'000;
constexpr int mostOpen = 400;
} // namespace

/// Elements whose end tag may be left out close one another, so that they count for no depth.
bool BodyPieces::isTooLarge(const QString &stored)
{
    if (stored.size() > mostCharacters)
        return true;
    QHash<QString, int> open;
    int depth = 0;
    int tags = 0;
    MarkupScanner scanner(stored);
    while (const auto token = scanner.next()) {
        if (++tags > mostTags)
            return true;
        const bool isStart = token->isStart();
        if (token->kind == MarkupToken::Comment
            || (token->kinds() & (ElementKinds::Void | ElementKinds::RawText | ElementKinds::OptionalEnd)))
            continue;
        int &ofName = open[token->name.toString().toLower()];
        if (!isStart && ofName == 0)
            continue;
        ofName += isStart ? 1 : -1;
        depth += isStart ? 1 : -1;
        if (depth > mostOpen)
            return true;
    }
    return false;
}
