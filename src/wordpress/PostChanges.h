#pragma once

#include "model/ZLWordpressPost.h"

/// Two versions of a post, field by field as a blog can be sent them.
namespace PostChanges {
enum Field {
    Title = 1,
    Content = 2,
    Date = 4,
    Status = 8,
    Type = 16,
    Categories = 32,
    Tags = 64,
    Slug = 128,
    Comments = 256,
    Pings = 512,
    FeaturedImage = 1024,
};
Q_DECLARE_FLAGS(Fields, Field)
constexpr int all = 2047;

/// What differs. Dates are compared by the minute, since the writer cannot choose more.
Fields between(const ZLWordpressPost &one, const ZLWordpressPost &other);
/// The blog's word for a post's status.
QString statusWord(const ZLWordpressPost &post);
} // namespace PostChanges
Q_DECLARE_OPERATORS_FOR_FLAGS(PostChanges::Fields)
