#pragma once

#include "AppFixture.h"

#include <QCoroTask>
#include <QTest>

/// A connected blog that has been synchronised once.
struct ConnectedBlog : AppFixture {
    ConnectedBlog()
    {
        seedAccount(u"Blog"_qs, blog.url());
        blog.now = clock.present; // the blog's clock and the program's agree
    }
    void start()
    {
        launch();
        QTRY_VERIFY(!list.isSyncing);
    }
    /// Sends a post with its texts in its file, as the compose screen does.
    void send(const PostPtr &post, Upload::Kind kind)
    {
        store(*post);
        const qsizetype before = list.updated.size();
        service()->syncCategoriesAndPublishPost(post, kind);
        QTRY_COMPARE(list.updated.size(), before + 1);
    }
    /// Sends a post, and holds back the answer to one of its calls.
    void sendLate(const PostPtr &post, const QString &late, Upload::Kind kind = Upload::NewPost)
    {
        post->status = ZLWordpressPost::Publish;
        store(*post);
        if (!late.isEmpty())
            blog.answerLate(late);
        service()->syncCategoriesAndPublishPost(post, kind);
        QTRY_COMPARE(network.heldCount(), late.isEmpty() ? 0 : 1);
    }
    void store(ZLWordpressPost &post)
    {
        const DocumentPtr document =
            QCoro::waitFor(app().documentController().openDocumentWithContentsOfURL(post.localFile)).value();
        document->post.title = post.title;
        document->post.content = post.storedContent = post.content;
        document->post.taxonomies = post.taxonomies;
        document->updateChangeCount();
        (void)document->saveDocument();
    }
    QString titlesDelivered() const
    {
        QStringList titles;
        for (const ZLUserNotification &notification : notifications.delivered)
            titles.append(notification.title);
        return titles.join(u'|');
    }
};
