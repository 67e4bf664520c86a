#pragma once

#include <QStringView>

/// The tags that stand on lines of their own.
namespace BlockNames {
/// Whether this is the whole name of a block, in lower case.
bool isName(QStringView name);
/// Whether what stands at `at` begins like a block's name: "p" does for "param", too.
bool startsAt(QStringView text, qsizetype at);
/// The end of the block name and ">" at `at`, or -1: the whole name, as in a closing tag.
qsizetype endOfClosing(QStringView text, qsizetype at);
} // namespace BlockNames
