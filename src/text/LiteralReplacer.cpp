#include "text/LiteralReplacer.h"

#include "text/Rewriter.h"
#include "text/Scanning.h"

#include <algorithm>
#include <bit>
#include <memory>
#include <unordered_set>

using namespace Scanning;

namespace {
constexpr quint64 base = 0x9e3779b97f4a7c15; // odd; a hash only sorts out, equality decides
constexpr qsizetype longestAnchor = 32;

quint64 hashOf(QStringView text)
{
    quint64 hash = 0;
    for (const QChar c : text)
        hash = hash * base + c.unicode() + 1;
    return hash;
}

quint64 power(qsizetype exponent)
{
    quint64 result = 1;
    for (quint64 square = base; exponent > 0; exponent >>= 1, square *= square) {
        if (exponent & 1)
            result *= square;
    }
    return result;
}

/// Cuts `start` to what `text` begins with as well.
void cutToCommonStart(QStringView &start, QStringView text)
{
    const auto end = std::mismatch(start.begin(), start.end(), text.begin(), text.end()).first;
    start = start.first(end - start.begin());
}
} // namespace

struct LiteralReplacer::Group {
    qsizetype length;
    quint64 power;
    std::vector<Replacement> keys;
    std::vector<quint64> hashes; ///< of the keys
    std::vector<qint32> slots; ///< a hash table of indexes, at most half full; -1 is empty

    void fillSlots()
    {
        slots.assign(std::bit_ceil(2 * keys.size()), -1);
        for (const Replacement &one : keys) {
            const quint64 hash = hashOf(one.key);
            hashes.push_back(hash);
            if (find(hash, one.key))
                continue;
            size_t slot = slotOf(hash);
            while (slots[slot] >= 0)
                slot = (slot + 1) % slots.size();
            slots[slot] = qint32(hashes.size()) - 1;
        }
    }
    size_t slotOf(quint64 hash) const { return (hash ^ hash >> 32) % slots.size(); }
    const Replacement *find(quint64 hash, QStringView text) const
    {
        for (size_t slot = slotOf(hash); slots[slot] >= 0; slot = (slot + 1) % slots.size()) {
            const auto index = size_t(slots[slot]);
            if (hashes[index] == hash && text == keys[index].key)
                return &keys[index];
        }
        return nullptr;
    }
};

struct LiteralReplacer::Hit {
    qsizetype at;
    const Replacement *replacement;
    qsizetype end() const { return at + replacement->key.size(); }
};

/// Finds the keys in one text: only where all keys begin, by hashes of the text's beginnings.
class LiteralReplacer::Occurrences {
public:
    Occurrences(QStringView text, QStringView anchor)
        : m_text(text)
    {
        for (qsizetype at = next(anchor, 0); at >= 0; at = next(anchor, at + 1))
            m_anchors.push_back(at);
        if (m_anchors.empty())
            return;
        m_hashes.resize(size_t(text.size()) + 1);
        for (qsizetype i = 0; i < text.size(); ++i)
            m_hashes[size_t(i) + 1] = m_hashes[size_t(i)] * base + text[i].unicode() + 1;
    }
    const std::vector<qsizetype> &anchors() const { return m_anchors; }
    QStringView text() const { return m_text; }

    const Replacement *keyAt(qsizetype at, const Group &group) const
    {
        if (m_text.size() - at < group.length)
            return nullptr;
        const quint64 hash = m_hashes[size_t(at + group.length)] - m_hashes[size_t(at)] * group.power;
        return group.find(hash, m_text.sliced(at, group.length));
    }

private:
    qsizetype next(QStringView anchor, qsizetype from) const
    {
        if (anchor.isEmpty())
            return from < m_text.size() ? from : -1;
        for (from = indexOf(m_text, anchor[0].unicode(), from); from < m_text.size();
             from = indexOf(m_text, anchor[0].unicode(), from + 1)) {
            if (m_text.sliced(from).startsWith(anchor))
                return from;
        }
        return -1;
    }

    QStringView m_text;
    std::vector<qsizetype> m_anchors;
    std::vector<quint64> m_hashes;
};

QString LiteralReplacer::spliced(const QString &text, const std::vector<Hit> &hits)
{
    Rewriter out(text);
    for (const Hit &hit : hits)
        out.replace(hit.at, hit.end(), hit.replacement->value);
    return out.result();
}

/// Knows with what keys begin; most texts never ask.
class LiteralReplacer::Beginnings {
public:
    explicit Beginnings(const std::vector<Group> &groups)
        : m_groups(groups)
    {
    }
    bool has(QStringView start)
    {
        if (m_sorted.empty())
            sort();
        const auto found = std::lower_bound(m_sorted.begin(), m_sorted.end(), start);
        return found != m_sorted.end() && found->startsWith(start);
    }

private:
    void sort()
    {
        for (const Group &group : m_groups) {
            for (const Replacement &one : group.keys)
                m_sorted.emplace_back(one.key);
        }
        std::sort(m_sorted.begin(), m_sorted.end());
    }

    const std::vector<Group> &m_groups;
    std::vector<QStringView> m_sorted;
};

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
            m_groups.push_back({one->key.size(), power(one->key.size()), {}, {}, {}});
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
    std::vector<Hit> hits;
    for (const qsizetype at : occurrences.anchors()) {
        for (const Group &group : m_groups) {
            const Replacement *one = occurrences.keyAt(at, group);
            if (!one)
                continue;
            if (!hits.empty() && at < hits.back().end())
                return inTurn(text);
            hits.push_back({at, one});
        }
    }
    if (hits.empty())
        return text;
    return meets(occurrences, hits) ? inTurn(text) : spliced(text, hits);
}

/// Whether replacing one hit could make an occurrence of another key. It may say yes too often.
bool LiteralReplacer::meets(const Occurrences &text, const std::vector<Hit> &hits) const
{
    qsizetype work = 8 * text.text().size(); // what comparing may cost
    Beginnings beginnings(m_groups);
    std::unordered_set<const Replacement *> seen;
    for (const Hit &hit : hits) {
        if (seen.insert(hit.replacement).second && meetsInside(*hit.replacement, beginnings, work))
            return true;
        if (joinsToAnchor(text.text().first(hit.at), hit.replacement->value))
            return true;
    }
    // an occurrence could begin in front of a hit and go on in its value
    size_t next = 0;
    for (const qsizetype at : text.anchors()) {
        while (next < hits.size() && hits[next].end() <= at)
            ++next;
        if (next == hits.size())
            break;
        const qsizetype distance = hits[next].at - at;
        if (distance <= 0 || distance >= m_groups.front().length)
            continue;
        work -= distance;
        if (work < 0 || beginnings.has(text.text().sliced(at, distance)))
            return true;
    }
    return false;
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

/// Whether an occurrence of another key could begin inside the value. Longer keys have had their turn before.
bool LiteralReplacer::meetsInside(const Replacement &own, Beginnings &beginnings, qsizetype &work) const
{
    const QStringView value = own.value;
    for (qsizetype length = std::min(value.size(), m_anchor.size() - 1); length > 0; --length) {
        if (value.last(length) == QStringView(m_anchor).first(length))
            return true;
    }
    const Occurrences inside(value, m_anchor);
    for (const qsizetype at : inside.anchors()) {
        work -= value.size() - at;
        if (work < 0 || beginnings.has(value.sliced(at)))
            return true;
        for (const Group &group : m_groups) {
            const Replacement *other = group.length <= own.key.size() ? inside.keyAt(at, group) : nullptr;
            if (other && other != &own)
                return true;
        }
    }
    return false;
}

QString LiteralReplacer::inTurn(QString text) const
{
    auto occurrences = std::make_unique<Occurrences>(text, m_anchor);
    for (const Group &group : m_groups) {
        const std::vector<Hit> hits = hitsOf(*occurrences, group);
        if (hits.empty())
            continue;
        const bool overlap = overlapping(*occurrences, group);
        QString after = spliced(text, hits);
        auto occurrencesAfter = std::make_unique<Occurrences>(after, m_anchor);
        if (overlap || bringsForth(*occurrencesAfter, group, hits)) {
            after = oneByOne(text, group);
            occurrencesAfter = std::make_unique<Occurrences>(after, m_anchor);
        }
        text = std::move(after);
        occurrences = std::move(occurrencesAfter);
    }
    return text;
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
QString LiteralReplacer::oneByOne(QString text, const Group &group)
{
    for (const Replacement &one : group.keys)
        text.replace(one.key, one.value);
    return text;
}
