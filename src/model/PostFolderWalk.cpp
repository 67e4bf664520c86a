#include "model/PostFolderWalk.h"

#include <QFile>

#include <algorithm>
#include <fcntl.h>
#include <future>
#include <unistd.h>

using Found = PostFolderReader::Found;

PostFolderWalk::PostFolderWalk(const QString &folder, const KnownPostFiles &known)
    : m_root(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    , m_rootPath(folder)
    , m_known(known)
{
}

PostFolderWalk::~PostFolderWalk()
{
    if (m_root >= 0)
        ::close(m_root);
}

std::vector<Found> PostFolderWalk::run()
{
    constexpr size_t manyFolders = 64;
    if (m_root < 0)
        return {};
    PostFolderWorker worker(m_root, m_rootPath, m_known);
    m_waiting.emplace_back();
    while (!m_waiting.empty() && m_waiting.size() < manyFolders) {
        const QByteArray folder = m_waiting.back();
        m_waiting.pop_back();
        worker.readFolder(folder, m_waiting);
    }
    if (m_waiting.empty())
        return std::move(worker.found);
    std::future<std::vector<Found>> other = std::async(std::launch::async, [this] { return work(); });
    std::vector<Found> found = work();
    for (const std::vector<Found> &part : {other.get(), worker.found})
        found.insert(found.end(), part.begin(), part.end());
    return found;
}

std::vector<Found> PostFolderWalk::work()
{
    constexpr size_t share = 16;
    PostFolderWorker worker(m_root, m_rootPath, m_known);
    worker.found.reserve(m_waiting.size() / 2);
    for (size_t from = m_taken.fetch_add(share); from < m_waiting.size(); from = m_taken.fetch_add(share)) {
        const size_t end = std::min(from + share, m_waiting.size());
        for (size_t at = from; at < end; ++at)
            worker.readFolders(m_waiting[at]);
    }
    return std::move(worker.found);
}
