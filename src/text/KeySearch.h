#pragma once

#include "text/LiteralReplacer.h"
#include "text/Scanning.h"

#include <algorithm>
#include <bit>

// How LiteralReplacer finds its keys in a text.

namespace RollingHash {
inline constexpr quint64 base = 0x9e3779b97f4a7c15; // odd; a hash only sorts out, equality decides

inline quint64 hashOf(QStringView text)
{
    quint64 hash = 0;
    for (const QChar c : text)
        hash = hash * base + c.unicode() + 1;
    return hash;
}

inline quint64 power(qsizetype exponent)
{
    quint64 result = 1;
    for (quint64 square = base; exponent > 0; exponent >>= 1, square *= square) {
        if (exponent & 1)
            result *= square;
    }
    return result;
}
} // namespace RollingHash

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
            const quint64 hash = RollingHash::hashOf(one.key);
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

/// A stretch of the text out of occurrences that share characters, or of one alone.
struct LiteralReplacer::Run {
    qsizetype from;
    qsizetype to;
    const Replacement *only; ///< null: several, which take turns
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
            m_hashes[size_t(i) + 1] = m_hashes[size_t(i)] * RollingHash::base + text[i].unicode() + 1;
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
        for (from = Scanning::indexOf(m_text, anchor[0].unicode(), from); from < m_text.size();
             from = Scanning::indexOf(m_text, anchor[0].unicode(), from + 1)) {
            if (m_text.sliced(from).startsWith(anchor))
                return from;
        }
        return -1;
    }

    QStringView m_text;
    std::vector<qsizetype> m_anchors;
    std::vector<quint64> m_hashes;
};

/// Knows with what keys begin; most texts never ask.
class LiteralReplacer::Beginnings {
public:
    explicit Beginnings(const std::vector<Group> &groups)
        : m_groups(groups)
    {
    }
    /// Whether a key begins with `start` and goes on.
    bool has(QStringView start)
    {
        if (m_sorted.empty())
            sort();
        const auto found = std::upper_bound(m_sorted.begin(), m_sorted.end(), start);
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

/// Looks out for the beginnings of keys, as long as the work is worth it.
struct LiteralReplacer::Watch {
    Beginnings beginnings;
    qsizetype work; ///< what comparing may still cost

    /// Whether a key begins with this text. Yes as well when it costs too much to know.
    bool sees(QStringView start)
    {
        work -= start.size();
        return work < 0 || beginnings.has(start);
    }
};
