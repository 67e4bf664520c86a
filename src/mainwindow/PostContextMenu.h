#pragma once

#include "compose/PostAction.h"
#include "platform/ZLError.h"
#include "store/Account.h"

#include <QMenu>

class CurrentBlog;
struct AppEnvironment;

/// The menu of one row of the post list.
class PostContextMenu : public QMenu {
    Q_OBJECT
public:
    PostContextMenu(AppEnvironment &environment, CurrentBlog &currentBlog, const LocalPostPtr &post, QWidget *parent);

    /// What the item is called that keeps the post off the public blog.
    static QString saveTitle(const ZLLocalPostRepresentation &post, bool linkedToEvernote);

Q_SIGNALS:
    void newPost();
    void action(PostAction action);
    void didFailToCopy(const ZLError &error);
    void copied(const QUrl &file); ///< the post has a copy on another blog, which is the current one now

private:
    void addPostItems();
    void addCopyToBlog();
    void copyToBlog(const AccountPtr &account);
    void addLinkItems();
    void getLink();

    AppEnvironment &m_environment;
    CurrentBlog &m_currentBlog;
    LocalPostPtr m_post;
};
