// bench_catalogue full|unchanged|one-changed DIR
// Rows of the blog in DIR/accounts/blog, rebuilt from its files: all of them, with none of them changed since the last
// time, or with one.
#include "model/ZLPostCatalogue.h"

#include "bench.h"

#include <QDir>
#include <QTemporaryDir>

namespace {
const QString alias = QStringLiteral("blog");

void rewrite(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        std::abort();
    const QByteArray bytes = file.readAll();
    file.close();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        std::abort();
}

void requireRows(const QList<LocalPostPtr> &rows)
{
    if (rows.isEmpty() || rows.first()->title.isNull())
        std::abort();
}
} // namespace

int main(int argc, char **argv)
{
    if (argc < 3)
        return 2;
    const QByteArrayView mode(argv[1]);
    const QTemporaryDir home;
    if (!QFile::link(QDir(QFile::decodeName(argv[2])).absolutePath(), home.filePath(QStringLiteral("zalmo"))))
        return 1;
    const ZLFileManager files(home.path(), home.path());

    double time = 0;
    if (mode == "full") {
        time = bench::medianMilliseconds([&] { requireRows(ZLPostCatalogue(files).postsFromLocalFiles(alias)); });
    } else if (mode == "unchanged" || mode == "one-changed") {
        ZLPostCatalogue catalogue(files);
        const QList<LocalPostPtr> rows = catalogue.postsFromLocalFiles(alias);
        requireRows(rows);
        const QString changing = rows.last()->localFile.toLocalFile();
        time = bench::medianMilliseconds([&] {
            if (mode == "one-changed")
                rewrite(changing);
            requireRows(catalogue.postsFromLocalFiles(alias));
        });
    } else {
        return 2;
    }
    bench::report(argv[1], time);
    return 0;
}
