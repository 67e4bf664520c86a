#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// The text passes between the blog's form of a body, the form kept in memory and the form of the editor page. Each is
/// linear in its input; only matches that stand inside one another or join to new ones cost more. Their literal output
/// is a contract with the page.
namespace ContentPasses {
/// What stands for the fold in the editor.
QString readMoreAnchor();

// the blog's form to the form in memory
QString contentReplacingReadMore(const QString &content);
QString contentReplacingImageClasses(const QString &content);
QString removeEmptyParagraphs(const QString &content);
QString contentReplacingDoubleSpaceForParagraphs(const QString &content); ///< the paragraph builder
/// All three steps of replaceWPContentsForEditor; a body of the block editor bypasses the paragraph builder. Whether
/// a piece belongs to one is told by the whole body.
QString contentForEditor(const QString &stored);
QString contentForEditor(const QString &stored, bool isBlockEditor);
/// Whether the block editor made this body: it holds a "<!-- wp:" comment.
bool isBlockEditorContent(const QString &content);

// the form in memory to the editor page
QString postContentWithShortCodeTags(const QString &content);
QString classForShortCodeTag(const QString &tag);
QString postContentWithVideoURLTags(const QString &content);
QString postContentWithHeadings(const QString &content);

// the preview; a body on its way to the blog has no containers but its own
QString replaceEmbedTags(const QString &content);
QString replaceYouTubeTags(const QString &content);
QString replaceEditorTags(const QString &content);

/// Addresses of images (src) that begin with `prefix`, in order, with repeats.
QStringList imageSources(const QString &content, const QString &prefix);
/// Addresses of links to pictures (png, jpg, jpeg) that begin with `prefix`, in order, with repeats.
QStringList linkedPictures(const QString &content, const QString &prefix);
/// Replaces every literal occurrence of each key by its value, in one pass over the text where keys do not overlap.
QString replaceOccurrences(const QString &content, const QHash<QString, QString> &replacements);
/// A cheap plain extract for the post list; only the first 300 characters lose their tags.
QString removeHTMLFromString(const QString &html);
} // namespace ContentPasses
