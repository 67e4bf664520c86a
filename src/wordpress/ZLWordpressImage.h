#pragma once

#include <QString>

/// An upload record: where a picture lies on the blog.
struct ZLWordpressImage {
    QString url;
    QString id;
};
