#pragma once

#include <QString>
#include <vector>

/// Replaces every literal occurrence of many keys, as if each key were replaced over the whole growing text in turn,
/// the longest key first. Most texts need one pass; a text in which keys meet (one inside another, or in a value) takes
/// one pass for each length of a key.
class LiteralReplacer {
public:
    struct Replacement {
        QString key;
        QString value;
    };
    /// Of keys of one length the earlier goes first. What is given again is passed over.
    explicit LiteralReplacer(const std::vector<Replacement> &replacements);
    ~LiteralReplacer();
    QString replaced(const QString &text) const;

private:
    struct Group;
    struct Hit;
    class Occurrences;
    class Beginnings;

    bool meets(const Occurrences &text, const std::vector<Hit> &hits) const;
    bool meetsInside(const Replacement &own, Beginnings &beginnings, qsizetype &work) const;
    bool joinsToAnchor(QStringView before, QStringView value) const;
    QString inTurn(QString text) const;
    static std::vector<Hit> hitsOf(const Occurrences &text, const Group &group);
    static bool overlapping(const Occurrences &text, const Group &group);
    static bool bringsForth(const Occurrences &after, const Group &group, const std::vector<Hit> &hits);
    static QString oneByOne(QString text, const Group &group);
    static QString spliced(const QString &text, const std::vector<Hit> &hits);

    QString m_anchor; ///< what all keys begin with
    std::vector<Group> m_groups; ///< keys of one length, the longest first
};
