#pragma once

#include "model/ZLLocalPostRepresentation.h"

#include <QFlags>

class ZLDocument;
struct ZLWordpressPost;

/// What can be done with a post. Buttons, menus, keys and the flows behind them all go by one set of these.
enum class PostAction {
    None = 0,
    Publish = 1 << 0, ///< or update, or schedule
    Save = 1 << 1, ///< to the blog, as a draft
    MoveToDrafts = 1 << 2,
    Delete = 1 << 3,
    PublishAsNew = 1 << 4, ///< a copy that was kept of a conflict, a post that its blog has deleted
    Revert = 1 << 5, ///< to the version that the blog gave last
    AnswerConflict = 1 << 6,
    TakeBlogVersion = 1 << 7, ///< of a text that the blog has changed in publishing
    Edit = 1 << 8, ///< formats, links and pictures
};
Q_DECLARE_FLAGS(PostActions, PostAction)
Q_DECLARE_OPERATORS_FOR_FLAGS(PostActions)

/// By its row, for the menu of a post that need not be on the screen.
PostActions actionsOfRow(const ZLLocalPostRepresentation &row);
/// Of the post on the screen, as long as it is not on its way; `document` is null while it has none. While its conflict
/// is not answered, all that would reach the blog leads to that question.
PostActions actionsOfPost(const ZLWordpressPost &post, const ZLDocument *document);
