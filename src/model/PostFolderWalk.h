#pragma once

#include "model/PostFolderWorker.h"

#include <atomic>

/// One walk below a folder. It begins on one thread; once it has met many folders, a second one takes its share of
/// them.
class PostFolderWalk {
public:
    PostFolderWalk(const QString &folder, const KnownPostFiles &known);
    ~PostFolderWalk();
    PostFolderWalk(const PostFolderWalk &) = delete;
    PostFolderWalk &operator=(const PostFolderWalk &) = delete;

    /// Every post file found, in no order.
    std::vector<PostFolderReader::Found> run();

private:
    /// Takes shares of the folders that wait until none is left.
    std::vector<PostFolderReader::Found> work();

    int m_root = -1;
    QString m_rootPath;
    KnownPostFiles m_known;
    std::vector<QByteArray> m_waiting; ///< folders below the root, by path
    std::atomic<size_t> m_taken = 0; ///< how many of those are taken
};
