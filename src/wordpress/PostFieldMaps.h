#pragma once

#include "model/ZLWordpressPost.h"
#include "xmlrpc/XMLRPCValue.h"

/// From the blog's structs to posts. Texts come as the blog has them; names of terms lose their entities.
namespace PostFieldMaps {
/// A struct of the metaWeblog family.
PostPtr postFromResponse(const XMLRPCValue &response);
/// A struct of the wp family.
PostPtr postFromWPGetPostResponse(const XMLRPCValue &response);
/// `most`: as many as were asked for. A blog may send any number.
QList<PostPtr> postsFromWPGetPostsResponse(const XMLRPCValue &response, int most);
} // namespace PostFieldMaps
