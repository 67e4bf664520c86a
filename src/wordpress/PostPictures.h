#pragma once

#include "model/ZLWordpressPost.h"
#include "platform/ZLFileManager.h"
#include "wordpress/SyncedImages.h"

/// The local pictures of a post, which must be on the blog before its text goes.
namespace PostPictures {
/// Their addresses as the post has them, each once.
QStringList localPictures(const ZLWordpressPost &post, const ZLFileManager &files);
/// A body in which pictures that are on the blog have their addresses there, wherever they stand.
QString withAddressesOnTheBlog(const QString &content, const SyncedImages &images);
} // namespace PostPictures
