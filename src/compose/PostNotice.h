#pragma once

#include "compose/PostAction.h"
#include "model/ZLDocument.h"

/// The quiet line over the post: what is special about it, and what can be done about that.
struct PostNotice {
    QString text = {}; ///< empty: there is nothing to say
    QString button = {}; ///< the words of its button; empty: none
    PostAction action = PostAction::None;
    QString icon = {}; ///< of what is no warning; the one that the row of the list has

    /// `isOnItsWay`: its upload has not ended, so that nothing is unclear about it yet.
    static PostNotice of(const ZLWordpressPost &post, const ZLDocument *document, bool isOnItsWay);
    /// After an upload that broke off, or whose answer could not be read.
    static PostNotice ofUnclearUpload();
    /// After an upload whose post the blog has deleted. A draft is not made public by it.
    static PostNotice ofGonePost(const ZLWordpressPost &post);
    /// After an upload of which the blog has made another text.
    static PostNotice ofOtherTextOnBlog();
};
