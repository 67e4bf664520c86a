#pragma once

#include <QList>
#include <QStringList>

/// What two versions of a body say differently, for the eyes of the writer.
namespace TextDifference {
/// A place where they differ, with the lines of both; one of the lists may be empty.
struct Region {
    QStringList one;
    QStringList other;
};

/// The words of a body: a line for each paragraph, list or other top-level piece that has words.
QStringList lines(const QString &body);

/// The places where two bodies differ, from the top; empty when they are the same but for outer white space and line
/// ends. Lines hold words only, unless the words are the same: then they hold the source. A line is as long as its
/// paragraph, and a line that comes more than once may stand in a region though both have it. The work grows with the
/// texts' length, however much they differ.
QList<Region> between(const QString &one, const QString &other);

/// At most `length` characters of a line, from a few words before the first place where it differs from `other`, with
/// "…" where it is cut.
QString excerpt(const QString &line, const QString &other, qsizetype length);
} // namespace TextDifference
