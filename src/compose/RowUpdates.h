#pragma once

#include "model/ZLWordpressPost.h"

/// What the compose screen tells the post list while the user writes.
class RowUpdates {
public:
    virtual ~RowUpdates() = default;
    virtual void setTitleToSelectedPost(const QString &title) = 0;
    virtual void setContentToSelectedPost(const QString &content) = 0;
    virtual void selectRowWithoutLoad(int row) = 0;
};
