#pragma once

#include "model/PostFolderReader.h"
#include "platform/ZLFileManager.h"

/// Makes the rows of a blog from its files.
class ZLPostCatalogue {
public:
    explicit ZLPostCatalogue(const ZLFileManager &files, PostFolderReader reader = PostFolderReader())
        : m_files(files)
        , m_reader(std::move(reader))
    {
    }

    /// A fresh list of rows, newest first by the files' modification dates. Each row says what its file holds now,
    /// whatever became of earlier rows. `now` tells scheduled posts from published ones.
    QList<LocalPostPtr> postsFromLocalFiles(
        const QString &alias, const QDateTime &now = QDateTime::currentDateTimeUtc());

private:
    const ZLFileManager &m_files;
    PostFolderReader m_reader;
};
