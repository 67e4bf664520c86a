#pragma once

#include "app/Prompts.h"
#include "compose/ComposeView.h"
#include "compose/PostOnScreen.h"

/// Brings the post on the screen on its way to the blog, as the Save and Publish buttons want it. What is sent is a
/// record of its own: the one on the screen changes with the outcome only.
class SendFlow : public QObject {
    Q_OBJECT
public:
    SendFlow(ComposeHost &host, ComposePage &page, ComposeView &view, Prompts &prompts, PostOnScreen &screen);

    /// A new post goes up, a draft is made public, a published post is updated.
    QCoro::Task<void> publish();
    /// The post goes to the blog as a draft. The file on this computer needs no button.
    QCoro::Task<void> save();
    /// A published post becomes a draft and keeps its date; asks first.
    QCoro::Task<void> moveToDrafts();
    /// The upload of the post on the screen, which sendAgain() is about.
    void follow(const Upload &upload);
    /// That upload once more, as what it was, without its questions; not when something was written since.
    QCoro::Task<void> sendAgain();

Q_SIGNALS:
    void didBegin(Upload *upload); ///< null: there was no blog to send it to

private:
    /// The body that the blog is to get, once the page has reported all that was typed. Nothing when the page gave no
    /// answer, when another post came on the screen meanwhile, or when there is nothing to send; the writer was told.
    QCoro::Task<std::optional<QString>> takeContent();
    QCoro::Task<bool> ask(QString message, QString informativeText, QString button);
    bool hasTitle() const;
    QCoro::Task<bool> canSend();
    /// The post with that content, to be sent. Null when it cannot be; the writer was told.
    QCoro::Task<PostPtr> takePost();
    /// Null when the post has no file and gets none, which was said.
    PostPtr storedPost(const QString &content);
    void send(const PostPtr &post, Upload::Kind kind);

    ComposeHost &m_host;
    ComposePage &m_page;
    ComposeView &m_view;
    Prompts &m_prompts;
    PostOnScreen &m_screen;
    PostPtr m_sent; ///< by the last upload
    Upload::Kind m_sentKind = Upload::NewPost;
};
