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
    void setIsNewPostNotInList(bool value) override { isNewPostNotInList = value; }
    void reloadCurrentPostAfterSyncingEngine(int engine) override { reloadedEngines.append(engine); }
    void didSendBodyData(const PostPtr &, float) override { }

    PostPtr post = std::make_shared<ZLWordpressPost>();
    DocumentPtr document;
    QList<int> reloadedEngines;
    bool isNewPostNotInList = false;
};
