#pragma once

#include "app/AppEnvironment.h"
#include "model/ZLPostCatalogue.h"

#include <future>

/// The list of the current blog's posts, newest first. It is never merged: it is always rebuilt from the files, and
/// whoever changes files asks for a rebuild.
class LocalPosts {
public:
    LocalPosts(AppEnvironment &environment, CurrentBlogState &state);

    const QList<LocalPostPtr> &posts() const { return m_posts; }
    void insert(int index, const LocalPostPtr &row) { m_posts.insert(qBound(0, index, int(m_posts.size())), row); }
    void remove(const LocalPostPtr &row) { m_posts.removeAll(row); }
    void clear() { m_posts.clear(); }
    /// Puts the row on top. A rebuild may have put another row for `previousLocalURL` in its place; that one goes.
    void moveToTop(const LocalPostPtr &row, const QUrl &previousLocalURL);

    /// Has the posts of this blog read on a thread, for the list that is loaded next.
    void readAhead(const QString &blogName);
    void loadLocalPosts();
    /// The list and the post on the screen.
    void reloadPostsListAfterSync();

    /// False: its file could not be written, which the user has been told.
    bool createNewPost();
    void removeLocalPostFromList(const LocalPostPtr &row);
    /// Closes every open document of the file and removes it. Its folder stays, and so do its neighbours.
    void deletePostAtLocalURL(const QUrl &url);

    QList<LocalPostPtr> getPostsForSearch(const QString &text) const;
    QStringList getTaxonomiesForSearch(const QString &text) const;

private:
    PostPtr makeNewPost() const;
    QList<LocalPostPtr> readPosts();

    AppEnvironment &m_environment;
    CurrentBlogState &m_state;
    ZLPostCatalogue m_catalogue;
    QList<LocalPostPtr> m_posts;
    QString m_blogAhead;
    std::future<QList<LocalPostPtr>> m_ahead; ///< uses the catalogue, so it ends first
};
