#pragma once

#include "model/PostFields.h"

/// The words of post files for what a post keeps as numbers, both ways.
namespace PostFileWords {
/// Files of an older format than this are brought up by the next sync, unless they have local changes.
inline constexpr int currentVersion = 3;

QString engine(int status); ///< "wordpress" or "evernote"
QString status(int status); ///< "new", "draft", "publish"; empty where the post has no status
QString type(int type); ///< "post" or "page"
int statusFrom(const QString &engine, const QString &status);
int typeFrom(const QString &type);

/// The ids that the blog gave to the terms, separated by commas, in the order of the keywords; empty when no id is
/// known. A category whose name would be read as a tag has none.
QString keywordIds(const QList<ZLTaxonomy> &taxonomies);
/// The reverse: ids that are not as many as the keywords are of another list, and left out.
void giveIds(QList<ZLTaxonomy> &taxonomies, const QString &ids);
} // namespace PostFileWords
