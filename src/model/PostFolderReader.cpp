#include "model/PostFolderReader.h"

#include "model/PostFolderWalk.h"

#include <algorithm>

namespace {
int compare(const timespec &one, const timespec &other)
{
    if (one.tv_sec != other.tv_sec)
        return one.tv_sec < other.tv_sec ? -1 : 1;
    if (one.tv_nsec != other.tv_nsec)
        return one.tv_nsec < other.tv_nsec ? -1 : 1;
    return 0;
}

bool isListedBefore(const PostFolderReader::Found &one, const PostFolderReader::Found &other)
{
    const int order = compare(one.file->stamp.modified, other.file->stamp.modified);
    return order != 0 ? order > 0 : one.file->path < other.file->path;
}
} // namespace

PostFolderReader::Stamp::Stamp(const struct stat &status)
    : device(status.st_dev)
    , inode(status.st_ino)
    , size(status.st_size)
    , modified(status.st_mtim)
    , changed(status.st_ctim)
{
}

bool PostFolderReader::Stamp::operator==(const Stamp &other) const
{
    return device == other.device && inode == other.inode && size == other.size
        && compare(modified, other.modified) == 0 && compare(changed, other.changed) == 0;
}

std::vector<PostFolderReader::Found> PostFolderReader::read(const QString &folder)
{
    if (folder != m_folder)
        m_kept.clear();
    m_folder = folder;
    std::vector<Found> found = PostFolderWalk(folder, {m_kept, m_settlingTime}).run();
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
