#pragma once

#include "model/PostRow.h"

#include <QHash>
#include <chrono>
#include <memory>
#include <sys/stat.h>
#include <vector>

/// Finds and reads the post files below one folder, on two threads, and keeps what it read: a file that is the same at
/// the next look (path, device, inode, size and both times) is not read again.
class PostFolderReader {
public:
    /// A file that was written less than `settlingTime` before it was read is read again at the next look: times have
    /// grains, of up to two seconds on some file systems, and a later write might not show in them.
    explicit PostFolderReader(std::chrono::milliseconds settlingTime = std::chrono::seconds(2))
        : m_settlingTime(settlingTime)
    {
    }

    /// What tells one state of a file from another. A write that keeps size and modification date, as a sync may make
    /// it, shows in the time of the change, which no program can set.
    struct Stamp {
        dev_t device = 0;
        ino_t inode = 0;
        off_t size = 0;
        qint64 modified = 0; ///< in nanoseconds
        qint64 changed = 0;

        Stamp() = default;
        explicit Stamp(const struct stat &status);
        bool operator==(const Stamp &) const = default;
    };

    struct Kept {
        QByteArray path; ///< below the folder
        Stamp stamp;
        bool isSettled = false; ///< old enough when it was read
        QUrl localFile;
        PostRow row;
    };
    using KeptPtr = std::shared_ptr<const Kept>;

    struct Found {
        KeptPtr file;
        bool hasConflict = false; ///< a "conflict.zalmo" stands beside this "post.zalmo"
    };

    /// Every file below the folder whose name ends in "post.zalmo" or "conflict-solved.zalmo", the latest first; of
    /// equal dates, in the order of their paths. Links to folders are not followed. What cannot be listed is left out,
    /// what cannot be read has an empty row; both give a log line.
    std::vector<Found> read(const QString &folder);

private:
    void keep(const std::vector<Found> &found);

    std::chrono::milliseconds m_settlingTime;
    QString m_folder;
    QHash<QByteArray, KeptPtr> m_kept;
};
