#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

class KeptForms;

/// The text passes between the blog's form of a body, the form kept in memory and the form of the editor page. Each is
/// one scan from left to right, linear in its input. Their literal output is a contract with the page; what a pass
/// turns into something else gets a mark that leads to the stored text when there are `kept` forms to note it in.
namespace ContentPasses {
/// What stands for the fold in the editor.
QString readMoreAnchor();

// the blog's form to the form in memory
QString contentReplacingReadMore(const QString &content, KeptForms *kept = nullptr);
QString contentReplacingImageClasses(const QString &content, KeptForms *kept = nullptr);
QString removeEmptyParagraphs(const QString &content);
QString contentReplacingDoubleSpaceForParagraphs(const QString &content); ///< the paragraph builder
/// All three steps of replaceWPContentsForEditor; a body of the block editor bypasses the paragraph builder.
QString contentForEditor(const QString &stored);
/// Whether the block editor made this body: it holds a "<!-- wp:" comment.
bool isBlockEditorContent(const QString &content);

// the form in memory to the editor page
/// Shortcodes of players become embeds, in text only.
QString postContentWithShortCodeTags(const QString &content, KeptForms *kept = nullptr);
QString classForShortCodeTag(const QString &tag);
/// Addresses of players that stand alone on their line become embeds.
QString postContentWithVideoURLTags(const QString &content, KeptForms *kept = nullptr);
/// Whether a text without white space around it is nothing but a player's shortcode or address.
bool isPlayer(QStringView text);
/// The whole form of one piece of a body for the page, but for local copies of pictures. Whether the piece belongs to a
/// body of the block editor is told by the whole body.
QString pieceForPage(const QString &core, bool isBlockEditor, KeptForms *kept);

/// Addresses of images (src) that begin with `prefix`, in order, with repeats.
QStringList imageSources(const QString &content, const QString &prefix);
/// Addresses of links to pictures (png, jpg, jpeg) that begin with `prefix`, in order, with repeats.
QStringList linkedPictures(const QString &content, const QString &prefix);
/// Puts other addresses in the place of those of images and links to pictures that are in the table.
QString replacePictureAddresses(const QString &content, const QHash<QString, QString> &replacements);
/// Replaces every literal occurrence of each key by its value, from left to right; of keys that begin at one place the
/// longest counts.
QString replaceOccurrences(const QString &content, const QHash<QString, QString> &replacements);
/// A cheap plain extract for the post list; only the first 300 characters lose their tags.
QString removeHTMLFromString(const QString &html);
} // namespace ContentPasses
