#pragma once

#include "app/ComposeHost.h"
#include "compose/RowUpdates.h"
#include "model/LocalFileURL.h"
#include "model/PostSync.h"
#include "model/ZLPostCatalogue.h"
#include "platform/ZLFileManager.h"
#include "support/ManualClock.h"
#include "wordpress/Upload.h"

#include <QTemporaryDir>

/// An upload that goes as the test says.
class FakeUpload : public Upload {
public:
    FakeUpload(const PostPtr &sent, Kind kind, const QString &blogName)
        : asSent(*sent)
        , m_post(sent)
        , m_kind(kind)
        , m_blogName(blogName)
    {
    }
    const PostPtr &post() const override { return m_post; }
    Kind kind() const override { return m_kind; }
    QString blogName() const override { return m_blogName; }
    Step step() const override { return m_step; }
    float progress() const override { return m_progress; }
    const std::optional<UploadOutcome> &outcome() const override { return m_outcome; }
    void cancel() override { end({}); }

    void goOn(Step step, float progress)
    {
        m_step = step;
        m_progress = progress;
        Q_EMIT changed();
    }
    void end(const UploadOutcome &outcome)
    {
        m_outcome = outcome;
        Q_EMIT ended(outcome);
    }

    const ZLWordpressPost asSent; ///< what the post held at the beginning

private:
    PostPtr m_post;
    Kind m_kind;
    QString m_blogName;
    Step m_step = Preparing;
    float m_progress = 0;
    std::optional<UploadOutcome> m_outcome;
};

/// The rest of the program, as far as the compose screen asks for it: real documents in a temporary folder, a pretended
/// list and a pretended service.
class FakeComposeHost : public ComposeHost {
public:
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
    QCoro::Task<bool> logIn() override { co_return hasPassword; }
    QCoro::Task<bool> newLogin() override { co_return hasNewLogin; }
    QString postPath(const QString &blogName, const QString &id) const override { return files.postPath(blogName, id); }
    void loadLocalPosts() override
    {
        rows = ZLPostCatalogue(files).postsFromLocalFiles(getBlogName(), clock.now());
        Q_EMIT noted.didUpdatePosts();
    }
    LocalPostPtr rowForFile(const QUrl &localFile) const override
    {
        for (const LocalPostPtr &row : rows)
            if (isSameFile(row->localFile, localFile))
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
    Upload *uploadOfPost(const QUrl &localFile) const override
    {
        for (const auto &upload : sent)
            if (!upload->outcome() && isSameFile(upload->post()->localPost->localFile, localFile))
                return upload.get();
        return nullptr;
    }
    Upload *upload(const PostPtr &post, Upload::Kind kind) override
    {
        sent.append(std::make_shared<FakeUpload>(post, kind, getBlogName()));
        return sent.last().get();
    }
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

    /// A newer version of the post comes from the blog while it has changes here.
    void putConflictBeside(const LocalPostPtr &row, const QString &title, const QString &content)
    {
        const DocumentPtr open = documents.documentForURL(row->localFile);
        const DocumentPtr document = open ? open : *ZLDocument::open(row->localFile);
        const PostPtr theirs = document->wordpressPost();
        theirs->title = title;
        theirs->content = theirs->storedContent = content;
        theirs->updatedAt = clock.now();
        if (theirs->putConflictBeside(*document))
            row->status = ZLLocalPostRepresentation::Conflict;
    }
    /// The copy of a post that an earlier conflict left.
    LocalPostPtr addKeptCopy(const LocalPostPtr &row)
    {
        const PostPtr copy = (*ZLDocument::open(row->localFile))->wordpressPost();
        const QString path = PostSync::freeConflictSolvedPath(row->localFile.toLocalFile());
        copy->becomeNew({});
        if (!copy->saveAtPath(path))
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
    QList<std::shared_ptr<FakeUpload>> sent;
    QList<PostPtr> deletedOnBlog;
    QList<QUrl> deletedFiles;
    bool isOnline = true;
    bool hasPassword = true, hasNewLogin = false;
};

/// What the list is told while the user writes.
class FakeRowUpdates : public RowUpdates {
public:
    void setTitleToSelectedPost(const QString &title) override { titles.append(title); }
    void setContentToSelectedPost(const QString &content) override { contents.append(content); }
    void setStatusToSelectedPost(int status) override { statuses.append(status); }
    void selectFileWithoutLoad(const QUrl &file) override { selectedFile = file; }

    QStringList titles;
    QStringList contents;
    QList<int> statuses;
    QUrl selectedFile;
};
