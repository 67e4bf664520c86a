// bench_text passes|roads|tag-free|unescape|plain FILE
// passes: each over the body itself, replacements included, as the peers run the nine patterns of these passes.
// roads: the same in a row, to the editor and to the page. tag-free: passes on the body's words
// alone.
#include "bench.h"
#include "text/ContentPasses.h"
#include "text/HTMLEntities.h"

#include <cstring>

namespace {
void allPasses(const QString &body)
{
    using namespace ContentPasses;
    // Each pass takes the body itself, as each pattern of the peers does; the chains are in the passes of
    // contentForEditor.
    bench::keep(contentReplacingImageClasses(body));
    bench::keep(contentReplacingDoubleSpaceForParagraphs(body)); // does the work of four patterns
    bench::keep(postContentWithShortCodeTags(body));
    bench::keep(imageSources(body, QStringLiteral("http://")));
    bench::keep(linkedPictures(body, QStringLiteral("http://")));
    bench::keep(postContentWithVideoURLTags(body));
}

void allRoads(const QString &body)
{
    using namespace ContentPasses;
    const QString content = contentForEditor(body);
    bench::keep(imageSources(content, QStringLiteral("http://")));
    bench::keep(linkedPictures(content, QStringLiteral("http://")));
    bench::keep(postContentWithVideoURLTags(postContentWithShortCodeTags(content)));
}

template <class Work>
double measured(Work work, const QString &text)
{
    return bench::medianMilliseconds([&] { work(text); });
}
} // namespace

int main(int argc, char **argv)
{
    if (argc != 3)
        return 2;
    const QString body = QString::fromUtf8(bench::contentsOf(argv[2]));
    const auto is = [&](const char *what) { return std::strcmp(argv[1], what) == 0; };
    double milliseconds = 0;
    if (is("passes"))
        milliseconds = measured(allPasses, body);
    else if (is("roads"))
        milliseconds = measured(allRoads, body);
    else if (is("tag-free"))
        milliseconds = measured(allPasses, HTMLEntities::stringByConvertingHTMLToPlainText(body));
    else if (is("unescape"))
        milliseconds =
            measured([](const QString &text) { bench::keep(HTMLEntities::stringByDecodingHTMLEntities(text)); }, body);
    else if (is("plain"))
        milliseconds = measured(
            [](const QString &text) { bench::keep(HTMLEntities::stringByConvertingHTMLToPlainText(text)); }, body);
    else
        return 2;
    bench::report("zalmo", milliseconds);
    return 0;
}
