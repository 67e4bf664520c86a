#include "text/LiteralReplacer.h"

#include "text/KeySearch.h"
#include "text/Rewriter.h"

#include <QHash>
#include <memory>
#include <unordered_map>

namespace {
constexpr qsizetype longestAnchor = 32;

/// Cuts `start` to what `text` begins with as well.
void cutToCommonStart(QStringView &start, QStringView text)
{
    const auto end = std::mismatch(start.begin(), start.end(), text.begin(), text.end()).first;
    start = start.first(end - start.begin());
}
} // namespace

LiteralReplacer::LiteralReplacer(const std::vector<Replacement> &replacements)
{
    std::vector<const Replacement *> byLength;
    for (const Replacement &one : replacements) {
        if (!one.key.isEmpty())
            byLength.push_back(&one);
    }
    if (byLength.empty())
        return;
    QStringView start = QStringView(byLength.front()->key).left(longestAnchor);
    for (const Replacement *one : byLength)
        cutToCommonStart(start, one->key);
    m_anchor = start.toString();
    std::stable_sort(byLength.begin(), byLength.end(),
        [](const Replacement *a, const Replacement *b) { return a->key.size() > b->key.size(); });
    for (const Replacement *one : byLength) {
        if (m_groups.empty() || m_groups.back().length != one->key.size())
            m_groups.push_back({one->key.size(), RollingHash::power(one->key.size()), {}, {}, {}});
        m_groups.back().keys.push_back(*one);
    }
    for (Group &group : m_groups)
        group.fillSlots();
}

LiteralReplacer::~LiteralReplacer() = default;

QString LiteralReplacer::replaced(const QString &text) const
{
    if (m_groups.empty())
        return text;
    const Occurrences occurrences(text, m_anchor);
    std::vector<Run> runs = runsOf(occurrences);
    if (runs.empty())
        return text;
    Watch watch{Beginnings(m_groups), 8 * text.size()};
    std::optional<QString> apart;
    if (standApart(occurrences, runs, watch))
        apart = runByRun(text, runs, watch);
    return apart ? *apart : *inTurn(text, nullptr);
}

std::vector<LiteralReplacer::Run> LiteralReplacer::runsOf(const Occurrences &text) const
{
    std::vector<Run> runs;
    for (const qsizetype at : text.anchors()) {
        for (const Group &group : m_groups) {
            const Replacement *one = text.keyAt(at, group);
            if (!one)
                continue;
            const qsizetype end = at + group.length;
            if (runs.empty() || at >= runs.back().to)
                runs.push_back({at, end, one});
            else
                runs.back() = {runs.back().from, std::max(runs.back().to, end), nullptr};
        }
    }
    return runs;
}

/// Whether no occurrence could come up that reaches beyond one run. It may say no too often. A run whose value holds
/// another key takes turns as well.
bool LiteralReplacer::standApart(const Occurrences &text, std::vector<Run> &runs, Watch &watch) const
{
    std::unordered_map<const Replacement *, bool> holdsOthers;
    for (Run &run : runs) {
        const QStringView before = text.text().first(run.from);
        if (run.only ? joinsToAnchor(before, run.only->value) : endsInAnchorStart(before))
            return false;
        if (!run.only)
            continue;
        const auto [known, isNew] = holdsOthers.try_emplace(run.only, false);
        if (isNew) {
            if (reachesOut(run.only->value, watch))
                return false;
            known->second = holdsOther(*run.only);
        }
        if (known->second)
            run.only = nullptr;
    }
    // an occurrence could begin in front of a run, perhaps in another one, and go on in it
    size_t next = 0;
    for (const qsizetype at : text.anchors()) {
        while (next < runs.size() && runs[next].from <= at)
            ++next;
        if (next == runs.size())
            break;
        const qsizetype distance = runs[next].from - at;
        if (distance < m_groups.front().length && watch.sees(text.text().sliced(at, distance)))
            return false;
    }
    return true;
}

/// Nothing where a run reaches beyond itself on the way.
std::optional<QString> LiteralReplacer::runByRun(const QString &text, const std::vector<Run> &runs, Watch &watch) const
{
    Rewriter out(text);
    QHash<QStringView, QString> known;
    for (const Run &run : runs) {
        if (run.only) {
            out.replace(run.from, run.to, run.only->value);
            continue;
        }
        const QStringView before = QStringView(text).sliced(run.from, run.to - run.from);
        auto after = known.constFind(before);
        if (after == known.constEnd()) {
            const std::optional<QString> turned = inTurn(before.toString(), &watch);
            if (!turned)
                return std::nullopt;
            after = known.insert(before, *turned);
        }
        out.replace(run.from, run.to, *after);
    }
    return out.result();
}

/// Whether the beginning of all keys could stand across the place where a value begins.
bool LiteralReplacer::joinsToAnchor(QStringView before, QStringView value) const
{
    const QStringView anchor = m_anchor;
    for (qsizetype length = std::min(before.size(), anchor.size() - 1); length > 0; --length) {
        const QStringView rest = anchor.sliced(length);
        if (before.endsWith(anchor.first(length)) && (value.startsWith(rest) || rest.startsWith(value)))
            return true;
    }
    return false;
}

/// Whether the beginning of all keys could begin at the text's end.
bool LiteralReplacer::endsInAnchorStart(QStringView text) const
{
    for (qsizetype length = std::min(text.size(), m_anchor.size() - 1); length > 0; --length) {
        if (text.endsWith(QStringView(m_anchor).first(length)))
            return true;
    }
    return false;
}

/// Whether an occurrence of a key could begin inside the text and go on behind it.
bool LiteralReplacer::reachesOut(QStringView text, Watch &watch) const
{
    if (endsInAnchorStart(text))
        return true;
    const Occurrences inside(text, m_anchor);
    return std::any_of(
        inside.anchors().begin(), inside.anchors().end(), [&](qsizetype at) { return watch.sees(text.sliced(at)); });
}

/// Whether the value holds another key. Longer keys have had their turn before.
bool LiteralReplacer::holdsOther(const Replacement &own) const
{
    const Occurrences inside(own.value, m_anchor);
    for (const qsizetype at : inside.anchors()) {
        for (const Group &group : m_groups) {
            const Replacement *other = group.length <= own.key.size() ? inside.keyAt(at, group) : nullptr;
            if (other && other != &own)
                return true;
        }
    }
    return false;
}

/// With a watch: nothing where the text could join to what stands behind it on the way.
std::optional<QString> LiteralReplacer::inTurn(QString text, Watch *watch) const
{
    if (watch && reachesOut(text, *watch))
        return std::nullopt;
    auto occurrences = std::make_unique<Occurrences>(text, m_anchor);
    for (const Group &group : m_groups) {
        const std::vector<Hit> hits = hitsOf(*occurrences, group);
        if (hits.empty())
            continue;
        const bool overlap = overlapping(*occurrences, group);
        QString after = spliced(text, hits);
        auto occurrencesAfter = std::make_unique<Occurrences>(after, m_anchor);
        if (overlap || bringsForth(*occurrencesAfter, group, hits)) {
            const std::optional<QString> turned = oneByOne(text, group, watch);
            if (!turned)
                return std::nullopt;
            after = *turned;
            occurrencesAfter = std::make_unique<Occurrences>(after, m_anchor);
        } else if (watch && reachesOut(after, *watch)) {
            return std::nullopt;
        }
        text = std::move(after);
        occurrences = std::move(occurrencesAfter);
    }
    return text;
}

QString LiteralReplacer::spliced(const QString &text, const std::vector<Hit> &hits)
{
    Rewriter out(text);
    for (const Hit &hit : hits)
        out.replace(hit.at, hit.end(), hit.replacement->value);
    return out.result();
}

std::vector<LiteralReplacer::Hit> LiteralReplacer::hitsOf(const Occurrences &text, const Group &group)
{
    std::vector<Hit> hits;
    for (const qsizetype at : text.anchors()) {
        if (!hits.empty() && at < hits.back().end())
            continue;
        if (const Replacement *key = text.keyAt(at, group))
            hits.push_back({at, key});
    }
    return hits;
}

/// Whether two different keys of the group share a character of the text.
bool LiteralReplacer::overlapping(const Occurrences &text, const Group &group)
{
    Hit last{-group.length, nullptr};
    for (const qsizetype at : text.anchors()) {
        const Replacement *key = text.keyAt(at, group);
        if (!key)
            continue;
        if (last.replacement && last.replacement != key && at < last.end())
            return true;
        last = {at, key};
    }
    return false;
}

/// Whether another key of the group shows up in a value that was put in for one of `hits`.
bool LiteralReplacer::bringsForth(const Occurrences &after, const Group &group, const std::vector<Hit> &hits)
{
    qsizetype grown = 0;
    auto anchor = after.anchors().cbegin();
    for (const Hit &hit : hits) {
        const qsizetype begin = hit.at + grown;
        const qsizetype end = begin + hit.replacement->value.size();
        grown += hit.replacement->value.size() - group.length;
        while (anchor != after.anchors().cend() && *anchor <= begin - group.length)
            ++anchor;
        for (auto it = anchor; it != after.anchors().cend() && *it < end; ++it) {
            const Replacement *key = after.keyAt(*it, group);
            if (key && key != hit.replacement)
                return true;
        }
    }
    return false;
}

/// Keys of one length that take each other's place.
std::optional<QString> LiteralReplacer::oneByOne(QString text, const Group &group, Watch *watch) const
{
    for (const Replacement &one : group.keys) {
        text.replace(one.key, one.value);
        if (watch && reachesOut(text, *watch))
            return std::nullopt;
    }
    return text;
}
