#pragma once

#include "app/ComposeHost.h"
#include "app/CurrentBlog.h"

/// The compose screen's view of the rest of the program.
class AppComposeHost : public ComposeHost {
public:
    AppComposeHost(AppEnvironment &environment, CurrentBlog &currentBlog, LocalPosts &posts, BlogLogins &logins,
        const BlogServices &services);

    ZLDocumentController &documentController() override;
    ZLNotifications &notifications() override;
    QDateTime now() const override;
    bool boolForKey(const QString &key) const override;
    QString cacheFolder() const override;
    AccountPtr selectedAccount() const override;
    QString getBlogName() const override;
    bool isReachable() const override;
    QCoro::Task<bool> logIn() override;
    QCoro::Task<bool> newLogin() override;
    QString postPath(const QString &blogName, const QString &id) const override;
    void loadLocalPosts() override;
    LocalPostPtr rowForFile(const QUrl &localFile) const override;
    QStringList getTaxonomiesForSearch(const QString &text) const override;
    void insertPost(int index, const LocalPostPtr &row) override;
    void removeLocalPostFromList(const LocalPostPtr &row) override;
    void deletePostAtLocalURL(const QUrl &url) override;
    EditorBody postContentForZalmoEditor(const QString &stored) override;
    Upload *uploadOfPost(const QUrl &localFile) const override;
    Upload *upload(const PostPtr &post, Upload::Kind kind) override;
    void deletePost(const PostPtr &post) override;

private:
    AppEnvironment &m_environment;
    CurrentBlog &m_currentBlog;
    LocalPosts &m_posts;
    BlogLogins &m_logins;
    const BlogServices &m_services;
};
