#pragma once

#include "app/Prompts.h"
#include "compose/ComposeView.h"
#include "compose/PostOnScreen.h"

/// The Delete button: the question over the view, then the post goes from this computer or from the blog.
class DeleteFlow : public QObject {
    Q_OBJECT
public:
    DeleteFlow(ComposeHost &host, ComposeView &view, Prompts &prompts, PostOnScreen &screen);

    void ask();
    /// The answer "delete"; about the post that the question named.
    QCoro::Task<void> deletePost();
    /// Whether the blog was asked to delete the post on the screen and has not answered.
    bool isBeingDeleted() const;

Q_SIGNALS:
    void didBegin();
    void didEnd(); ///< the blog has answered about some post
    void cleanEditorForNewPost();

private:
    bool isOnBlog() const;
    void deleteHere();
    void didEndDeletion(const QUrl &file);
    /// A deletion whose login was refused goes on with another one. Until then the post is not to be changed.
    QCoro::Task<void> deleteWithNewLogin(QUrl file);

    ComposeHost &m_host;
    ComposeView &m_view;
    Prompts &m_prompts;
    PostOnScreen &m_screen;
    QList<QUrl> m_deletedFiles; ///< of the posts that a blog was asked to delete
    int m_askedGeneration = -1;
};
