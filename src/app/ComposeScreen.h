#pragma once

#include "model/ZLDocument.h"

/// The compose screen as the controller sees it.
class ComposeScreen {
public:
    virtual ~ComposeScreen() = default;
    virtual PostPtr currentPost() const = 0;
    virtual DocumentPtr currentDocument() const = 0;
    virtual void updatePreferencesForNewPost() = 0;
    virtual void newPost() = 0;
    virtual void setIsNewPostNotInList(bool value) = 0;
    virtual void reloadCurrentPostAfterSyncingEngine(int engine) = 0; ///< 0 WordPress, 1 Evernote
    /// How far the upload of a post has come, from 0 to 1.
    virtual void didSendBodyData(const PostPtr &post, float progress) = 0;
};
