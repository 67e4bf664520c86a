#include "model/PostFolderReader.h"

#include "model/PostFolderWorker.h"

#include <QFile>

#include <algorithm>
#include <atomic>
#include <fcntl.h>
#include <future>

using Found = PostFolderReader::Found;

namespace {
bool isListedBefore(const Found &one, const Found &other)
{
    const qint64 later = one.file->stamp.modified - other.file->stamp.modified;
    return later != 0 ? later > 0 : one.file->path < other.file->path;
}

qint64 nanoseconds(const timespec &time)
{
    return qint64(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

/// Every post file below the folder, in no order. The walk begins on one thread; once it has met many folders, a second
/// one takes its share of them.
std::vector<Found> walk(const QString &folder, const KnownPostFiles &known)
{
    constexpr size_t manyFolders = 64;
    constexpr size_t share = 16;
    const Descriptor root(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (root < 0)
        return {};
    PostFolderWorker first(root, folder, known);
    std::vector<QByteArray> waiting(1); // by path below the root
    while (!waiting.empty() && waiting.size() < manyFolders) {
        const QByteArray next = waiting.back();
        waiting.pop_back();
        first.readFolder(next, waiting);
    }
    if (waiting.empty())
        return std::move(first.found);
    std::atomic<size_t> taken = 0;
    const auto takeShares = [&] {
        PostFolderWorker worker(root, folder, known);
        worker.found.reserve(waiting.size() / 2);
        for (size_t from = taken.fetch_add(share); from < waiting.size(); from = taken.fetch_add(share)) {
            for (size_t at = from; at < std::min(from + share, waiting.size()); ++at)
                worker.readFolders(waiting[at]);
        }
        return std::move(worker.found);
    };
    std::future<std::vector<Found>> other = std::async(std::launch::async, takeShares);
    std::vector<Found> found = takeShares();
    for (const std::vector<Found> &part : {other.get(), first.found})
        found.insert(found.end(), part.begin(), part.end());
    return found;
}
} // namespace

PostFolderReader::Stamp::Stamp(const struct stat &status)
    : device(status.st_dev)
    , inode(status.st_ino)
    , size(status.st_size)
    , modified(nanoseconds(status.st_mtim))
    , changed(nanoseconds(status.st_ctim))
{
}

std::vector<Found> PostFolderReader::read(const QString &folder)
{
    if (folder != m_folder)
        m_kept.clear();
    m_folder = folder;
    std::vector<Found> found = walk(folder, {m_kept, m_settlingTime});
    std::sort(found.begin(), found.end(), isListedBefore);
    keep(found);
    return found;
}

void PostFolderReader::keep(const std::vector<Found> &found)
{
    const bool isSame = size_t(m_kept.size()) == found.size()
        && std::all_of(found.begin(), found.end(),
            [this](const Found &entry) { return m_kept.value(entry.file->path) == entry.file; });
    if (isSame)
        return;
    m_kept.clear();
    m_kept.reserve(qsizetype(found.size()));
    for (const Found &entry : found)
        m_kept.insert(entry.file->path, entry.file);
}
