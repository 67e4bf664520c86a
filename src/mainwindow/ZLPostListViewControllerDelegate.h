#pragma once

#include "compose/PostAction.h"
#include "model/ZLLocalPostRepresentation.h"

/// The compose screen, as the post list drives it.
class ZLPostListViewControllerDelegate {
public:
    virtual ~ZLPostListViewControllerDelegate() = default;
    /// Loads it, and then does the action.
    virtual void loadPost(const LocalPostPtr &post, PostAction action) = 0;
    virtual void doActionForCurrentPost(PostAction action) = 0;
    virtual void makeTitleBecomeFirstResponder() = 0;
    virtual void cleanEditorForNewPost() = 0;
    virtual void cleanUndoStack() = 0;
    virtual bool isOnScreen(const LocalPostPtr &post) const = 0;
};
