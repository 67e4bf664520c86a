#pragma once

#include "compose/AwaitingAction.h"
#include "model/ZLLocalPostRepresentation.h"

/// The compose screen, as the post list drives it.
class ZLPostListViewControllerDelegate {
public:
    virtual ~ZLPostListViewControllerDelegate() = default;
    virtual void loadPost(const LocalPostPtr &post) = 0;
    virtual void loadLocalPost(const LocalPostPtr &post, int action) = 0;
    virtual void doActionForCurrentPost(int action) = 0;
    virtual void makeTitleBecomeFirstResponder() = 0;
    virtual bool shouldOpenAnotherPost() { return true; } ///< part of the interface; nobody asks
    virtual void showChangesAlertForAction(int /*action*/) { } ///< likewise
    virtual void cleanEditorForNewPost() = 0;
    virtual void cleanUndoStack() = 0;
    virtual bool isOnScreen(const LocalPostPtr &post) const = 0;
};
