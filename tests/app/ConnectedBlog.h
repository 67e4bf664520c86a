#pragma once

#include "AppFixture.h"

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
    void send(const PostPtr &post, int kind)
    {
        const qsizetype before = list.updated.size();
        service()->syncCategoriesAndPublishPost(post, kind);
        QTRY_COMPARE(list.updated.size(), before + 1);
    }
    /// Sends a post, and holds back the answer to one of its calls.
    void sendLate(const PostPtr &post, const QString &late, int kind = ZLWordpressService::NewPost)
    {
        post->status = ZLWordpressPost::Publish;
        if (!late.isEmpty())
            blog.answerLate(late);
        service()->syncCategoriesAndPublishPost(post, kind);
        QTRY_COMPARE(network.heldCount(), late.isEmpty() ? 0 : 1);
    }
    QString titlesDelivered() const
    {
        QStringList titles;
        for (const ZLUserNotification &notification : notifications.delivered)
            titles.append(notification.title);
        return titles.join(u'|');
    }
};
