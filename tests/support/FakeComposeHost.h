#pragma once

#include "app/ComposeHost.h"
#include "compose/RowUpdates.h"
#include "platform/ZLFileManager.h"
#include "support/ManualClock.h"

#include <QTemporaryDir>

/// The rest of the program, as far as the compose screen asks for it: real documents in a temporary folder, a pretended
/// list and a pretended service.
class FakeComposeHost : public ComposeHost {
public:
    struct Sent {
        PostPtr post;
        int kind;
        ZLWordpressPost asSent; ///< what the post held at that moment
    };

    FakeComposeHost()
        : files(folder.filePath(u"data"_qs), folder.filePath(u"cache"_qs))
        , account(std::make_shared<Account>())
    {
        account->blog_name = u"Blog"_qs;
        account->preferences = std::make_shared<AccountPreferences>();
    }

    ZLDocumentController &documentController() override { return documents; }
    ZLNotifications &notifications() override { return noted; }
    QDateTime now() const override { return clock.now(); }
    bool boolForKey(const QString &key) const override { return settings.contains(key); }
    QString cacheFolder() const override { return files.cacheFolder(); }
    AccountPtr selectedAccount() const override { return account; }
    QString getBlogName() const override { return account ? account->alias() : QString(); }
    bool isReachable() const override { return isOnline; }
    QString postPathForPostId(const QString &id) const override
    {
        files.postPathForBlogURL(getBlogName(), id);
        return files.postPath(getBlogName(), id);
    }
    LocalPostPtr rowForFile(const QUrl &localFile) const override
    {
        for (const LocalPostPtr &row : rows)
            if (row->localFile == localFile)
                return row;
        return nullptr;
    }
    QStringList getTaxonomiesForSearch(const QString &) const override { return {}; }
    void insertPost(int index, const LocalPostPtr &row) override { rows.insert(index, row); }
    void removeLocalPostFromList(const LocalPostPtr &row) override { rows.removeOne(row); }
    void deletePostAtLocalURL(const QUrl &url) override { deletedFiles.append(url); }
    EditorBody postContentForZalmoEditor(const QString &stored) override
    {
        EditorBody content;
        content.pieces = BodyPieces::split(stored);
        return content;
    }
    void syncCategoriesAndPublishPost(const PostPtr &post, int kind) override { sent.append({post, kind, *post}); }
    void cancelUploadOfPost(const PostPtr &post) override { cancelled.append(post); }
    void deletePost(const PostPtr &post) override { deletedOnBlog.append(post); }

    /// A post file and its row; `status` and `type` are those of the working post.
    LocalPostPtr addPost(const QString &id, int status, const QString &title, const QString &content, int type = 0)
    {
        ZLWordpressPost post;
        post.id = id;
        post.status = status;
        post.type = type;
        post.title = title;
        post.content = content;
        post.createdAt = post.updatedAt = QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5), Qt::UTC);
        const QString path = files.postPathForBlogURL(getBlogName(), id) + u"/post.zalmo"_qs;
        if (!post.saveAtPath(path))
            return nullptr;
        rows.prepend(ZLLocalPostRepresentation::initWithContentsOfFileURL(QUrl::fromLocalFile(path), clock.now()));
        return rows.first();
    }

    QTemporaryDir folder;
    ZLFileManager files;
    ZLDocumentController documents;
    ZLNotifications noted;
    ManualClock clock;
    AccountPtr account;
    QStringList settings; ///< those that are on
    QList<LocalPostPtr> rows;
    QList<Sent> sent;
    QList<PostPtr> cancelled;
    QList<PostPtr> deletedOnBlog;
    QList<QUrl> deletedFiles;
    bool isOnline = true;
};

/// What the list is told while the user writes.
class FakeRowUpdates : public RowUpdates {
public:
    void setTitleToSelectedPost(const QString &title) override { titles.append(title); }
    void setContentToSelectedPost(const QString &content) override { contents.append(content); }
    void selectRowWithoutLoad(int row) override { selectedRow = row; }

    QStringList titles;
    QStringList contents;
    int selectedRow = -1;
};
