#pragma once

#include "model/ZLWordpressPost.h"
#include "store/Account.h"
#include "wordpress/SyncedImages.h"
#include "xmlrpc/XMLRPCValue.h"

/// From posts to the structs that the blog takes.
namespace PostParameters {
/// What the struct of the wp family depends on beside the post.
struct Surroundings {
    AccountPtr account; ///< where the ids of terms are looked up; null: every term goes by name
    const QHash<QString, ZLWordpressImage> &syncedWPImages;
    bool isUpdate = false; ///< the post is on the blog: a list of terms that became empty must be named
    bool isWhole = false; ///< all of the post, even if it is known what the blog has
    bool termsByName = false; ///< every term by name
};

/// The content struct of wp.newPost and wp.editPost. For an update of a post whose version on the blog is known it
/// holds what differs from that: what is not named stays as it is there.
XMLRPCStruct forWPPost(const ZLWordpressPost &post, const Surroundings &surroundings);
/// The struct of metaWeblog.newPost, for the preview.
XMLRPCStruct forPost(const ZLWordpressPost &post);
/// Whether such a struct names a term by its id.
bool hasTermIds(const XMLRPCStruct &parameters);
} // namespace PostParameters
