// peer_files pugixml|walk FOLDER
// pugixml: each post file below FOLDER into a row, parsed by pugixml on two threads, newest first. walk: only the walk,
// with one stat for each file, which is the least that a look for changes can do.
#include "bench.h"

#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <pugixml.hpp>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

struct File {
    std::string path;
    timespec modified;
    off_t size;
};

/// What a list of posts shows.
struct Row {
    QString title, content, status, created;
    std::vector<QString> keywords;
};

void walk(int parent, const char *name, const std::string &path, std::vector<File> &out)
{
    const int fd = openat(parent, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR *folder = fd < 0 ? nullptr : fdopendir(fd);
    if (!folder)
        return;
    while (const dirent *entry = readdir(folder)) {
        const std::string found = entry->d_name;
        struct stat status;
        if (entry->d_type == DT_DIR && found != "." && found != "..")
            walk(fd, entry->d_name, path + '/' + found, out);
        else if (found == "post.zalmo" && fstatat(fd, entry->d_name, &status, 0) == 0)
            out.push_back({path + '/' + found, status.st_mtim, status.st_size});
    }
    closedir(folder);
}

std::vector<File> newestFirst(const std::string &folder)
{
    std::vector<File> files;
    walk(AT_FDCWD, folder.c_str(), folder, files);
    const auto time = [](const File &file) { return std::pair(file.modified.tv_sec, file.modified.tv_nsec); };
    std::sort(files.begin(), files.end(), [&](const File &a, const File &b) { return time(a) > time(b); });
    return files;
}

void load(const File &file, std::string &into)
{
    into.resize(size_t(file.size));
    const int fd = open(file.path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0 || read(fd, into.data(), into.size()) != file.size)
        std::abort();
    close(fd);
}

Row parsed(std::string &text)
{
    pugi::xml_document document;
    if (!document.load_buffer_inplace(text.data(), text.size()))
        std::abort();
    const pugi::xml_node file = document.child("zalmo");
    const pugi::xml_node post = file.child("post");
    const pugi::xml_node info = file.child("post_info");
    const auto child = [](pugi::xml_node node, const char *name) { return QString::fromUtf8(node.child_value(name)); };
    Row row{child(post, "title"), child(post, "content"), child(info, "status"), child(info, "created_at"), {}};
    for (const pugi::xml_node keyword : post.child("keywords").children("keyword"))
        row.keywords.push_back(QString::fromUtf8(keyword.child_value()));
    return row;
}

std::vector<Row> rows(const std::string &folder)
{
    const std::vector<File> files = newestFirst(folder);
    std::vector<Row> rows(files.size());
    const auto parseEverySecond = [&](size_t first) {
        std::string text;
        for (size_t i = first; i < files.size(); i += 2) {
            load(files[i], text);
            rows[i] = parsed(text);
        }
    };
    std::thread other(parseEverySecond, 1);
    parseEverySecond(0);
    other.join();
    return rows;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3)
        return 2;
    const bool isWalk = std::strcmp(argv[1], "walk") == 0;
    const double time = bench::medianMilliseconds([&] {
        if ((isWalk ? newestFirst(argv[2]).size() : rows(argv[2]).size()) == 0)
            std::abort();
    });
    bench::report(argv[1], time);
    return 0;
}
