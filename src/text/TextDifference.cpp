#include "text/TextDifference.h"

#include "text/BodyPieces.h"
#include "text/HTMLEntities.h"
#include "text/StoredText.h"

#include <QHash>
#include <algorithm>
#include <vector>

// Lines that both texts have just once are kept, as far as they stand in the same order; between two of them, what both
// begin or end with is kept as well.

namespace {
using TextDifference::Region;

/// A line that both have: its places.
struct Pair {
    qsizetype one;
    qsizetype other;
};

/// Where each line that comes only once stands; others have -1.
QHash<QString, qsizetype> placesOfSingles(const QStringList &lines)
{
    QHash<QString, qsizetype> places;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        auto known = places.find(lines[i]);
        if (known == places.end())
            places.insert(lines[i], i);
        else
            *known = -1;
    }
    return places;
}

std::vector<Pair> commonSingles(const QStringList &one, const QStringList &other)
{
    const QHash<QString, qsizetype> inOne = placesOfSingles(one);
    const QHash<QString, qsizetype> inOther = placesOfSingles(other);
    std::vector<Pair> pairs;
    for (qsizetype i = 0; i < one.size(); ++i) {
        const qsizetype place = inOther.value(one[i], -1);
        if (place >= 0 && inOne[one[i]] == i)
            pairs.push_back({i, place});
    }
    return pairs;
}

/// The longest run of pairs that rise on both sides; they rise on one already.
std::vector<Pair> inOrder(const std::vector<Pair> &pairs)
{
    std::vector<size_t> ends; // for each length, the pair at which a run of that length ends lowest
    std::vector<size_t> before(pairs.size());
    for (size_t i = 0; i < pairs.size(); ++i) {
        const auto place = std::lower_bound(
            ends.begin(), ends.end(), i, [&](size_t a, size_t b) { return pairs[a].other < pairs[b].other; });
        before[i] = place == ends.begin() ? pairs.size() : *std::prev(place);
        if (place == ends.end())
            ends.push_back(i);
        else
            *place = i;
    }
    std::vector<Pair> run;
    for (size_t i = ends.empty() ? pairs.size() : ends.back(); i < pairs.size(); i = before[i])
        run.push_back(pairs[i]);
    std::reverse(run.begin(), run.end());
    return run;
}

QList<Region> regions(const QStringList &one, const QStringList &other)
{
    std::vector<Pair> kept = inOrder(commonSingles(one, other));
    kept.push_back({one.size(), other.size()});
    QList<Region> list;
    Pair from{0, 0};
    for (const Pair &next : kept) {
        Pair to = next;
        while (from.one < to.one && from.other < to.other && one[from.one] == other[from.other])
            from = {from.one + 1, from.other + 1};
        while (from.one < to.one && from.other < to.other && one[to.one - 1] == other[to.other - 1])
            to = {to.one - 1, to.other - 1};
        if (from.one < to.one || from.other < to.other)
            list.append({one.sliced(from.one, to.one - from.one), other.sliced(from.other, to.other - from.other)});
        from = {next.one + 1, next.other + 1};
    }
    return list;
}

QStringList sourceLines(const QString &body)
{
    QStringList lines;
    for (const BodyPiece &piece : BodyPieces::split(body))
        lines.append(piece.stored().trimmed());
    return lines;
}
} // namespace

QStringList TextDifference::lines(const QString &body)
{
    QStringList lines;
    for (const BodyPiece &piece : BodyPieces::split(body)) {
        const QString words = HTMLEntities::stringByConvertingHTMLToPlainText(piece.core).trimmed();
        if (!words.isEmpty())
            lines.append(words);
    }
    return lines;
}

QList<TextDifference::Region> TextDifference::between(const QString &one, const QString &other)
{
    if (sameStoredText(one, other))
        return {};
    const QList<Region> words = regions(lines(one), lines(other));
    return words.isEmpty() ? regions(sourceLines(one), sourceLines(other)) : words;
}

QString TextDifference::excerpt(const QString &line, const QString &other, qsizetype length)
{
    constexpr qsizetype wordsBefore = 16;
    if (line.size() <= length)
        return line;
    const qsizetype differs = std::mismatch(line.begin(), line.end(), other.begin(), other.end()).first - line.begin();
    const qsizetype wanted = std::min(differs - wordsBefore, line.size() - length);
    const qsizetype start = wanted <= 0 ? 0 : line.indexOf(u' ', wanted) + 1; // 0 as well when no word begins behind
    const QString cut = line.mid(start, length);
    const QString before = start > 0 ? QStringLiteral("…") : QString();
    return start + cut.size() < line.size() ? before + cut + u'…' : before + cut;
}
