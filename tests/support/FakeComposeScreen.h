#pragma once

#include "app/ComposeScreen.h"

/// A compose screen that holds what a test puts on it.
class FakeComposeScreen : public ComposeScreen {
public:
    PostPtr currentPost() const override { return post; }
    DocumentPtr currentDocument() const override { return document; }
    void updatePreferencesForNewPost() override { }
    void newPost() override
    {
        post = std::make_shared<ZLWordpressPost>();
        document.reset();
    }
    void reloadCurrentPostAfterSyncingEngine(SyncEngine engine) override { reloadedEngines.append(engine); }

    PostPtr post = std::make_shared<ZLWordpressPost>();
    DocumentPtr document;
    QList<SyncEngine> reloadedEngines;
};
