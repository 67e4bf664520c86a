#pragma once

#include "model/ZLWordpressPost.h"
#include "platform/ZLError.h"
#include "wordpress/ZLWordpressServiceRequestType.h"

/// How the upload of a post ended.
struct UploadOutcome {
    enum Kind {
        Published, ///< a new post is on the blog
        Updated, ///< a post that the blog knew has the new text there
        ConflictFound, ///< the blog has a newer version, which lies beside the file as its conflict.zalmo
        Unclear, ///< no answer tells whether the post is on the blog
        Failed,
        Cancelled,
    };
    Kind kind = Cancelled;
    /// Published: the post as it is from now on. Null when the blog's copy could not be read; `error` tells.
    PostPtr remote = nullptr;
    /// Published: the blog's own copy, when the blog has made another text of what it was sent. `remote` has the text
    /// that was sent.
    PostPtr blogVersion = nullptr;
    ZLWordpressServiceRequestType type = ZLWordpressServiceRequestTypePublishPost; ///< of the call that failed
    ZLError error = {};
};
