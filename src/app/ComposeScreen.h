#pragma once

#include "model/ZLDocument.h"

/// What may bring posts.
enum class SyncEngine { WordPress, Evernote };

/// The compose screen as the controller sees it.
class ComposeScreen {
public:
    virtual ~ComposeScreen() = default;
    virtual PostPtr currentPost() const = 0;
    virtual DocumentPtr currentDocument() const = 0;
    virtual void updatePreferencesForNewPost() = 0;
    /// A blank post, which gets its file in the current blog with its first edit. The one before stays with its blog:
    /// call this before another one is chosen.
    virtual void newPost() = 0;
    virtual void reloadCurrentPostAfterSyncingEngine(SyncEngine engine) = 0;
};
