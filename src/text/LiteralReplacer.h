#pragma once

#include <QString>
#include <optional>
#include <vector>

/// Replaces every literal occurrence of many keys, as if each key were replaced over the whole growing text in turn,
/// the longest key first. Most texts need one pass; where keys meet (one inside another, or in a value) the stretch
/// that they share takes one pass for each length of a key, and so does the whole text where a value joins to what
/// stands beside it.
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
    struct Run;
    class Beginnings;
    struct Watch;

    std::vector<Run> runsOf(const Occurrences &text) const;
    bool standApart(const Occurrences &text, std::vector<Run> &runs, Watch &watch) const;
    std::optional<QString> runByRun(const QString &text, const std::vector<Run> &runs, Watch &watch) const;
    bool joinsToAnchor(QStringView before, QStringView value) const;
    bool endsInAnchorStart(QStringView text) const;
    bool reachesOut(QStringView text, Watch &watch) const;
    bool holdsOther(const Replacement &own) const;
    std::optional<QString> inTurn(QString text, Watch *watch) const;
    static std::vector<Hit> hitsOf(const Occurrences &text, const Group &group);
    static bool overlapping(const Occurrences &text, const Group &group);
    static bool bringsForth(const Occurrences &after, const Group &group, const std::vector<Hit> &hits);
    std::optional<QString> oneByOne(QString text, const Group &group, Watch *watch) const;
    static QString spliced(const QString &text, const std::vector<Hit> &hits);

    QString m_anchor; ///< what all keys begin with
    std::vector<Group> m_groups; ///< keys of one length, the longest first
};
