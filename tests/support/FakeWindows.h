#pragma once

#include "app/BlogSelector.h"
#include "app/ComposeScreen.h"
#include "app/PostList.h"

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

/// Notes what the list is told.
class FakePostList : public PostList {
public:
    struct Update {
        PostPtr post;
        LocalPostPtr row;
        QUrl previousLocalURL;
    };

    void updatePosts() override { }
    void updatePostsAndSelectPreviousPost() override { hideLoadingView(); }
    void didDeleteLocalPost(const LocalPostPtr &post) override { deleted.append(post); }
    void didUpdatePost(const PostPtr &post, const LocalPostPtr &row, const QUrl &previousLocalURL) override
    {
        updated.append({post, row, previousLocalURL});
    }
    void deselectRow() override { }
    void selectPostFromLocalFileURL(const QUrl &url) override { selectedFile = url; }
    void showLoadingView() override { isLoading = true; }
    void hideLoadingView() override { isLoading = false; }
    void showSyncingLoading() override { isSyncing = true; }
    void hideSyncingLoading() override { isSyncing = false; }
    void showSyncFailure(const QString &text) override { syncFailure = text; }
    void hideSyncFailure() override { syncFailure.clear(); }

    QList<Update> updated;
    QList<LocalPostPtr> deleted;
    QUrl selectedFile;
    QString syncFailure; ///< the quiet line
    bool isLoading = false;
    bool isSyncing = false;
};

/// The selector as a record.
class FakeSelector : public BlogSelector {
public:
    void setItems(const QList<Item> &newItems) override { items = newItems; }
    void selectItem(int index) override { selected = index; }
    void showBlogSelector() override { isShown = true; }
    void removeBlogSelector() override { isShown = false; }
    void setTitle(const QString &blogName, const QString &) override { title = blogName; }

    QStringList titles() const
    {
        QStringList texts;
        for (const Item &item : items)
            texts.append(item.title);
        return texts;
    }

    QList<Item> items;
    QString title;
    int selected = 0;
    bool isShown = false;
};
