#pragma once

#include "model/ZLLocalPostRepresentation.h"

/// What to do with a post once it is on the screen.
namespace AwaitingAction {
enum Value {
    Publish = 0,
    Delete = 1,
    Save = 2,
    None = 3,
    Reload = 4, ///< load the post although its row was selected already
};
} // namespace AwaitingAction

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
};
