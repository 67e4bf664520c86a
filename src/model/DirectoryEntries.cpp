#include "model/DirectoryEntries.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
bool isFolder(int directory, const char *name, unsigned char type)
{
    if (type != DT_UNKNOWN)
        return type == DT_DIR;
    struct stat status { };
    return fstatat(directory, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

template <class Entry, class Visit>
void visitEntry(int directory, const Entry &entry, const Visit &visit)
{
    const QByteArrayView name(entry.d_name, qsizetype(qstrlen(entry.d_name)));
    if (name != "." && name != "..")
        visit(name, isFolder(directory, entry.d_name, entry.d_type));
}
} // namespace

#ifdef Q_OS_LINUX
// A stream costs two more calls and a large buffer for each folder, and a blog has a folder for each post.
bool DirectoryEntries::visit(int directory, const std::function<void(QByteArrayView, bool)> &visit)
{
    alignas(dirent64) char buffer[16 * 1024];
    for (;;) {
        const ssize_t size = getdents64(directory, buffer, sizeof buffer);
        if (size <= 0)
            return size == 0;
        for (ssize_t at = 0; at < size;) {
            const auto &entry = *reinterpret_cast<const dirent64 *>(buffer + at);
            visitEntry(directory, entry, visit);
            at += entry.d_reclen;
        }
    }
}
#else
bool DirectoryEntries::visit(int directory, const std::function<void(QByteArrayView, bool)> &visit)
{
    DIR *stream = fdopendir(dup(directory));
    if (!stream)
        return false;
    while (const dirent *entry = readdir(stream))
        visitEntry(directory, *entry, visit);
    closedir(stream);
    return true;
}
#endif
