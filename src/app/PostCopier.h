#pragma once

#include "app/CurrentBlog.h"

/// Copies a post to another blog, as a new post that its server has not seen.
class PostCopier {
public:
    PostCopier(const ZLFileManager &files, ZLDocumentController &documents, CurrentBlog &currentBlog);

    /// Gives the copy's file. Afterwards `account` is the current blog, unless it failed.
    [[nodiscard]] Result<QUrl> copyPostToBlog(const LocalPostPtr &post, const AccountPtr &account);

private:
    const ZLFileManager &m_files;
    ZLDocumentController &m_documents;
    CurrentBlog &m_currentBlog;
};
