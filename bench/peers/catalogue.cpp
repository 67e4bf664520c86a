// catalogue PEER DIR [cold]     a tree of one-post files into rows sorted by date
// cold: one run, before which the file pages are dropped (and, as root, directory entries and inodes too)
#include "bench.h"
#include "scan.h"
#include <QDateTime>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QXmlStreamReader>
#include <cstring>
#include <dirent.h>
#include <expat.h>
#include <filesystem>
#include <pugixml.hpp>
#include <thread>

struct File {
    std::string path;
    timespec when;
    off_t size;
};

// open, getdents, one fstatat for each post file: the least a rebuild from the files can do
static void walk(int parent, const char *name, const std::string &path, std::vector<File> &out)
{
    const int fd = openat(parent, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR *d = fd < 0 ? nullptr : fdopendir(fd);
    if (!d)
        return;
    while (dirent *e = readdir(d)) {
        if (e->d_type == DT_DIR) {
            if (std::strcmp(e->d_name, ".") && std::strcmp(e->d_name, ".."))
                walk(fd, e->d_name, path + '/' + e->d_name, out);
        } else {
            const size_t n = std::strlen(e->d_name);
            if (n < 10 || std::strcmp(e->d_name + n - 10, "post.zalmo"))
                continue;
            struct stat st;
            if (!fstatat(fd, e->d_name, &st, 0))
                out.push_back({path + '/' + e->d_name, st.st_mtim, st.st_size});
        }
    }
    closedir(d);
}

static std::vector<File> walked(const std::string &dir)
{
    std::vector<File> files;
    walk(AT_FDCWD, dir.c_str(), dir, files);
    std::sort(files.begin(), files.end(), [](auto &a, auto &b) {
        return a.when.tv_sec != b.when.tv_sec ? a.when.tv_sec > b.when.tv_sec : a.when.tv_nsec > b.when.tv_nsec;
    });
    return files;
}

static void load(const File &f, std::string &buf)
{
    const int fd = open(f.path.c_str(), O_RDONLY | O_CLOEXEC);
    buf.resize(f.size);
    if (fd < 0 || read(fd, buf.data(), buf.size()) != ssize_t(buf.size()))
        std::abort();
    close(fd);
}

// ---- rows: what a post list shows, as QString
struct Row {
    QString title, content, status, created;
    std::vector<QString> keywords;
};

static QString q(const char *s)
{
    return QString::fromUtf8(s);
}

static Row withPugi(std::string &buf)
{
    pugi::xml_document d;
    if (!d.load_buffer_inplace(buf.data(), buf.size()))
        std::abort();
    const pugi::xml_node z = d.child("zalmo"), p = z.child("post"), i = z.child("post_info");
    Row r{q(p.child_value("title")), q(p.child_value("content")), q(i.child_value("status")),
        q(i.child_value("created_at")), {}};
    for (auto k : p.child("keywords").children("keyword"))
        r.keywords.push_back(q(k.child_value()));
    return r;
}

struct Sax {
    std::string text;
    Row row;
    int depth = 0;
};

static Row withExpat(const std::string &buf)
{
    Sax s;
    XML_Parser p = XML_ParserCreate(nullptr);
    XML_SetUserData(p, &s);
    XML_SetElementHandler(
        p, [](void *u, const char *, const char **) { static_cast<Sax *>(u)->text.clear(); },
        [](void *u, const char *n) {
            auto &s = *static_cast<Sax *>(u);
            const auto take = [&] { return QString::fromStdString(s.text); };
            if (!std::strcmp(n, "title"))
                s.row.title = take();
            else if (!std::strcmp(n, "content"))
                s.row.content = take();
            else if (!std::strcmp(n, "status"))
                s.row.status = take();
            else if (!std::strcmp(n, "created_at"))
                s.row.created = take();
            else if (!std::strcmp(n, "keyword"))
                s.row.keywords.push_back(take());
            s.text.clear();
        });
    XML_SetCharacterDataHandler(p, [](void *u, const char *t, int n) { static_cast<Sax *>(u)->text.append(t, n); });
    if (XML_Parse(p, buf.data(), int(buf.size()), 1) != XML_STATUS_OK)
        std::abort();
    XML_ParserFree(p);
    return s.row;
}

static Row withScan(std::string &buf)
{
    static thread_local std::string text;
    Row r;
    scanTags(buf, [&](const char *n, bool close, const char *from, const char *to) {
        if (!close || from == to)
            return;
        QString *into = !std::strcmp(n, "title") ? &r.title
            : !std::strcmp(n, "content")         ? &r.content
            : !std::strcmp(n, "status")          ? &r.status
            : !std::strcmp(n, "created_at")      ? &r.created
            : !std::strcmp(n, "keyword")         ? &r.keywords.emplace_back()
                                                 : nullptr;
        if (!into)
            return;
        text.clear();
        decoded(text, from, to);
        *into = QString::fromUtf8(text.data(), qsizetype(text.size()));
    });
    return r;
}

static Row withQt(const QByteArray &buf)
{
    Row r;
    QXmlStreamReader x(buf);
    while (!x.atEnd()) {
        if (x.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto n = x.name();
        if (n == u"title")
            r.title = x.readElementText();
        else if (n == u"content")
            r.content = x.readElementText();
        else if (n == u"status")
            r.status = x.readElementText();
        else if (n == u"created_at")
            r.created = x.readElementText();
        else if (n == u"keyword")
            r.keywords.push_back(x.readElementText());
    }
    if (x.hasError())
        std::abort();
    return r;
}

template <class F>
static std::vector<Row> rows(const std::string &dir, int threads, F parse)
{
    const auto files = walked(dir);
    std::vector<Row> out(files.size());
    std::vector<std::thread> pool;
    for (int t = 0; t < threads; ++t) {
        auto work = [&, t] {
            std::string buf;
            for (size_t i = t; i < files.size(); i += threads) {
                load(files[i], buf);
                out[i] = parse(buf);
            }
        };
        if (threads == 1)
            work();
        else
            pool.emplace_back(work);
    }
    for (auto &t : pool)
        t.join();
    return out;
}

// Walk, read and parse shared by two threads, one post directory at a time; the sort comes last.
static std::vector<Row> parallel(const std::string &posts)
{
    std::vector<std::string> names;
    DIR *d = opendir(posts.c_str());
    if (!d)
        std::abort();
    while (dirent *e = readdir(d))
        if (e->d_name[0] != '.')
            names.push_back(e->d_name);
    std::vector<std::pair<timespec, Row>> found[2];
    auto work = [&](int t) {
        std::string buf;
        std::vector<File> files;
        for (size_t i = t; i < names.size(); i += 2) {
            files.clear();
            walk(dirfd(d), names[i].c_str(), posts + '/' + names[i], files);
            for (auto &f : files) {
                load(f, buf);
                found[t].emplace_back(f.when, withScan(buf));
            }
        }
    };
    std::thread other(work, 1);
    work(0);
    other.join();
    closedir(d);
    auto &all = found[0];
    std::move(found[1].begin(), found[1].end(), std::back_inserter(all));
    std::sort(all.begin(), all.end(), [](auto &a, auto &b) { return a.first.tv_sec > b.first.tv_sec; });
    std::vector<Row> out;
    for (auto &r : all)
        out.push_back(std::move(r.second));
    return out;
}

static void chill(const std::string &dir)
{
    const int fd = open("/proc/sys/vm/drop_caches", O_WRONLY);
    if (fd >= 0) {
        sync();
        if (write(fd, "3", 1) != 1)
            std::perror("drop_caches");
        close(fd);
        return;
    }
    for (auto &f : walked(dir)) {
        const int g = open(f.path.c_str(), O_RDONLY);
        posix_fadvise(g, 0, 0, POSIX_FADV_DONTNEED);
        close(g);
    }
}

int main(int argc, char **argv)
{
    if (argc < 3)
        return 2;
    const std::string peer = argv[1], dir = argv[2];
    const bool cold = argc > 3;
    size_t n = 0;
    auto once = [&] {
        n = 0;
        if (peer == "walk-stat")
            n = walked(dir).size();
        else if (peer == "walk-std-filesystem") {
            std::vector<std::pair<std::filesystem::file_time_type, std::string>> f;
            for (auto &e : std::filesystem::recursive_directory_iterator(dir))
                if (e.is_regular_file() && e.path().native().ends_with("post.zalmo"))
                    f.emplace_back(e.last_write_time(), e.path().native());
            std::sort(f.rbegin(), f.rend());
            n = f.size();
        } else if (peer == "walk-qdiriterator") {
            std::vector<std::pair<QDateTime, QString>> f;
            QDirIterator it(QString::fromStdString(dir), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
            while (it.hasNext()) {
                it.next();
                if (it.filePath().endsWith(u"post.zalmo"))
                    f.emplace_back(it.fileInfo().lastModified(), it.filePath());
            }
            std::sort(f.begin(), f.end(), [](auto &a, auto &b) { return a.first > b.first; });
            n = f.size();
        } else if (peer == "walk-read") {
            std::string buf;
            for (auto &f : walked(dir))
                load(f, buf), n += !buf.empty();
        } else if (peer == "walk-read-2") {
            n = rows(dir, 2, [](std::string &) { return Row(); }).size();
        } else if (peer == "pugixml-1")
            n = rows(dir, 1, withPugi).size();
        else if (peer == "pugixml-2")
            n = rows(dir, 2, withPugi).size();
        else if (peer == "probe-scan-1")
            n = rows(dir, 1, withScan).size();
        else if (peer == "probe-scan-2")
            n = rows(dir, 2, withScan).size();
        else if (peer == "probe-parallel")
            n = parallel(dir + "/accounts/blog/posts").size();
        else if (peer == "expat-1")
            n = rows(dir, 1, withExpat).size();
        else if (peer == "expat-2")
            n = rows(dir, 2, withExpat).size();
        else if (peer == "qt-plain") {
            // the plain Qt way: QDirIterator, QFile, QXmlStreamReader, one thread
            std::vector<std::pair<QDateTime, Row>> out;
            QDirIterator it(QString::fromStdString(dir), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
            while (it.hasNext()) {
                it.next();
                if (!it.filePath().endsWith(u"post.zalmo"))
                    continue;
                QFile f(it.filePath());
                if (!f.open(QIODevice::ReadOnly))
                    std::abort();
                out.emplace_back(it.fileInfo().lastModified(), withQt(f.readAll()));
            }
            std::sort(out.begin(), out.end(), [](auto &a, auto &b) { return a.first > b.first; });
            n = out.size();
        } else
            std::exit(2);
        if (n == 0)
            std::abort();
    };
    if (peer.starts_with("probe")) { // the same row as pugixml's
        std::string a, b;
        load(walked(dir).front(), a);
        b = a;
        const Row x = withPugi(a), y = withScan(b);
        if (x.title != y.title || x.content != y.content || x.keywords != y.keywords || x.status != y.status)
            std::abort();
    }
    double ms = 0;
    if (cold) {
        chill(dir);
        auto t = Clock::now();
        once();
        ms = since(t);
    } else
        ms = timed(once, 3);
    report(peer, ms);
}
