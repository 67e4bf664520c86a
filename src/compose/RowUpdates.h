#pragma once

#include "model/ZLWordpressPost.h"

/// What the compose screen tells the post list while the user writes.
class RowUpdates {
public:
    virtual ~RowUpdates() = default;
    virtual void setTitleToSelectedPost(const QString &title) = 0;
    virtual void setContentToSelectedPost(const QString &content) = 0;
    virtual void setStatusToSelectedPost(int status) = 0;
    virtual void selectFileWithoutLoad(const QUrl &file) = 0; ///< empty: no row is selected
};
