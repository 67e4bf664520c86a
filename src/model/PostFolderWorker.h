#pragma once

#include "model/PostFolderReader.h"

#include <unistd.h>

/// A file descriptor that closes itself.
class Descriptor {
public:
    explicit Descriptor(int number)
        : m_number(number)
    {
    }
    ~Descriptor()
    {
        if (m_number >= 0)
            ::close(m_number);
    }
    Q_DISABLE_COPY_MOVE(Descriptor)
    operator int() const { return m_number; }

private:
    int m_number;
};

/// What is known of the files from earlier walks. Only read while a walk goes on.
struct KnownPostFiles {
    const QHash<QByteArray, PostFolderReader::KeptPtr> &kept; ///< by path below the folder
    std::chrono::milliseconds settlingTime;
};

/// One thread's part of a walk: lists folders and reads the post files in them.
class PostFolderWorker {
public:
    /// `root` is the open top folder, `rootPath` its path.
    PostFolderWorker(int root, const QString &rootPath, const KnownPostFiles &known);

    /// Reads the files of one folder. Its subfolders go to `subfolders`.
    void readFolder(const QByteArray &folder, std::vector<QByteArray> &subfolders);
    /// The same, and all below it.
    void readFolders(const QByteArray &top);

    std::vector<PostFolderReader::Found> found;

private:
    struct Names {
        std::vector<QByteArray> posts; ///< post files
        std::vector<QByteArray> conflicts; ///< remote copies that wait
    };
    void addFile(int directory, const QByteArray &folder, const QByteArray &name, const Names &names);
    PostFolderReader::KeptPtr unchangedFile(int directory, const QByteArray &name, const QByteArray &path) const;
    PostFolderReader::KeptPtr readFile(int directory, const QByteArray &name, const QByteArray &path);
    /// Reads the file's state and its bytes; false with errno when that failed.
    bool load(int directory, const QByteArray &name, PostFolderReader::Stamp &stamp);

    int m_root;
    QString m_rootPath;
    const KnownPostFiles &m_known;
    QByteArray m_bytes;
};
