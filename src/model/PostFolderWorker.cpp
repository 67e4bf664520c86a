#include "model/PostFolderWorker.h"

#include "model/PostSync.h"
#include "platform/ZLAtomicFile.h"
#include "platform/ZLLog.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>

using Stamp = PostFolderReader::Stamp;
using KeptPtr = PostFolderReader::KeptPtr;

namespace {
const QByteArrayView postName(PostSync::postName);
const QByteArrayView solvedName(PostSync::conflictSolvedName);
const QByteArrayView conflictName(PostSync::conflictName);
const QByteArrayView strayName(".zalmo.tmp"); // what a kill left of a writing; none is under way during a walk

bool isFolder(int directory, const dirent64 &entry)
{
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    struct stat status { };
    return fstatat(directory, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

/// Gives the entries of an open folder to `visit`, but for "." and ".."; links to folders are no folders. False with
/// errno when it cannot be listed. A stream would cost two more calls and a large buffer for each folder, and a blog
/// has a folder for each post.
template <class Visit>
bool visitEntries(int directory, const Visit &visit)
{
    alignas(dirent64) char buffer[16 * 1024];
    for (;;) {
        const ssize_t size = getdents64(directory, buffer, sizeof buffer);
        if (size <= 0)
            return size == 0;
        for (ssize_t at = 0; at < size;) {
            const auto &entry = *reinterpret_cast<const dirent64 *>(buffer + at);
            const QByteArrayView name(entry.d_name, qsizetype(qstrlen(entry.d_name)));
            if (name != "." && name != "..")
                visit(name, isFolder(directory, entry));
            at += entry.d_reclen;
        }
    }
}

void logFailure(const QByteArray &path)
{
    ZLLog(QStringLiteral("error-%1: %2").arg(QFile::decodeName(path), qt_error_string()));
}

QByteArray pathOf(const QByteArray &folder, QByteArrayView name)
{
    QByteArray path;
    path.reserve(folder.size() + 1 + name.size());
    if (!folder.isEmpty())
        path.append(folder).append('/');
    return path.append(name);
}

bool isSettled(const Stamp &stamp, std::chrono::milliseconds settlingTime)
{
    using namespace std::chrono;
    return system_clock::now().time_since_epoch() - nanoseconds(stamp.changed) > settlingTime;
}

bool readAll(int file, QByteArray &bytes)
{
    qsizetype size = 0;
    while (size < bytes.size()) {
        const ssize_t count = ::read(file, bytes.data() + size, size_t(bytes.size() - size));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        if (count == 0)
            break;
        size += count;
    }
    bytes.truncate(size);
    return true;
}
} // namespace

PostFolderWorker::PostFolderWorker(int root, const QString &rootPath, const KnownPostFiles &known)
    : m_root(root)
    , m_rootPath(rootPath)
    , m_known(known)
{
}

void PostFolderWorker::readFolder(const QByteArray &folder, std::vector<QByteArray> &subfolders)
{
    constexpr int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    const Descriptor directory(openat(m_root, folder.isEmpty() ? "." : folder.constData(), flags));
    Names names;
    const auto sortIn = [&](QByteArrayView name, bool isFolder) {
        if (isFolder)
            subfolders.push_back(pathOf(folder, name));
        else if (name.endsWith(postName) || name.endsWith(solvedName))
            names.posts.push_back(name.toByteArray());
        else if (name.endsWith(conflictName))
            names.conflicts.push_back(name.toByteArray());
        else if (name.endsWith(strayName))
            unlinkat(directory, name.toByteArray().constData(), 0);
    };
    if (directory < 0 || !visitEntries(directory, sortIn))
        logFailure(folder);
    for (const QByteArray &name : names.posts)
        addFile(directory, folder, name, names);
}

void PostFolderWorker::readFolders(const QByteArray &top)
{
    std::vector<QByteArray> waiting{top};
    while (!waiting.empty()) {
        const QByteArray folder = waiting.back();
        waiting.pop_back();
        readFolder(folder, waiting);
    }
}

void PostFolderWorker::addFile(int directory, const QByteArray &folder, const QByteArray &name, const Names &names)
{
    bool hasConflict = false;
    if (!names.conflicts.empty() && name.endsWith(postName)) {
        const QByteArray twin = name.chopped(postName.size()) + conflictName.toByteArray();
        hasConflict = std::find(names.conflicts.begin(), names.conflicts.end(), twin) != names.conflicts.end();
    }
    const QByteArray path = pathOf(folder, name);
    KeptPtr file = unchangedFile(directory, name, path);
    if (!file)
        file = readFile(directory, name, path);
    found.push_back({file, hasConflict});
}

KeptPtr PostFolderWorker::unchangedFile(int directory, const QByteArray &name, const QByteArray &path) const
{
    const auto kept = m_known.kept.constFind(path);
    struct stat status { };
    const bool isSame = kept != m_known.kept.constEnd() && (*kept)->isSettled
        && fstatat(directory, name.constData(), &status, 0) == 0 && (*kept)->stamp == Stamp(status);
    return isSame ? *kept : nullptr;
}

KeptPtr PostFolderWorker::readFile(int directory, const QByteArray &name, const QByteArray &path)
{
    auto file = std::make_shared<PostFolderReader::Kept>();
    file->path = path;
    file->localFile = QUrl::fromLocalFile(m_rootPath + u'/' + QFile::decodeName(path));
    if (!load(directory, name, file->stamp)) {
        logFailure(path);
        return file;
    }
    file->row = PostRow::fromData(m_bytes);
    file->isSettled = isSettled(file->stamp, m_known.settlingTime);
    if (!file->row.isWhole)
        ZLLog(QStringLiteral("error-The post file “%1” is damaged").arg(file->localFile.toLocalFile()));
    return file;
}

bool PostFolderWorker::load(int directory, const QByteArray &name, Stamp &stamp)
{
    struct stat status { };
    // What is no plain file, as a pipe, must not hold up the walk.
    const Descriptor file(openat(directory, name.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (file < 0) {
        const int reason = errno;
        if (fstatat(directory, name.constData(), &status, 0) == 0)
            stamp = Stamp(status);
        errno = reason;
        return false;
    }
    if (fstat(file, &status) != 0)
        return false;
    stamp = Stamp(status);
    if (!S_ISREG(status.st_mode) || status.st_size > ZLAtomicFile::largestFile) {
        errno = S_ISREG(status.st_mode) ? EFBIG : EINVAL;
        return false;
    }
    m_bytes.resize(status.st_size);
    return readAll(file, m_bytes);
}
