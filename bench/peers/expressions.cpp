// peer_expressions FILE
// The patterns that a body meets between the blog and the editor, as regular expressions that only look for matches.
#include "bench.h"

#include <QRegularExpression>

namespace {

QString blockNames()
{
    return QStringLiteral(
        "(?:table|thead|tfoot|caption|col|colgroup|tbody|tr|td|th|div|dl|dd|dt|ul|ol|li|pre|form|map|"
        "area|blockquote|address|math|style|p|h[1-6]|hr|fieldset|noscript|legend|section|article|aside|"
        "hgroup|header|footer|nav|figure|details|menu|summary)");
}

std::vector<QRegularExpression> expressions()
{
    std::vector<QRegularExpression> compiled;
    for (const QString &pattern : {
             QStringLiteral(R"re(<img([^<]*?)class=(['"])(.*?)\2(.*?)//?>)re"),
             QStringLiteral("(<%1[^>]*>)").arg(blockNames()),
             QStringLiteral("(</%1>)").arg(blockNames()),
             QStringLiteral(R"re(\n\s*?\n)re"),
             QStringLiteral(R"re(<p[^<\s\S]*?>\s*?</p>)re"),
             QStringLiteral(R"re(\[(youtube|vimeo)(.*?)\])re"),
             QStringLiteral(R"re((<img\s[\s\S]*?src\s*?=\s*?['"](.*?)['"][\s\S]*?>)+?)re"),
             QStringLiteral(R"re((<a\s[\s\S]*?href\s*?=\s*?['"](.*?)['"][\s\S]*?>)+?)re"),
             QStringLiteral(R"re((^|\s)https?:\/\/www\.youtube\.com\/watch\?v=(.*?)($|\s))re"),
         }) {
        compiled.emplace_back(pattern, QRegularExpression::CaseInsensitiveOption);
        compiled.back().optimize();
    }
    return compiled;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2)
        return 2;
    const QString text = QString::fromUtf8(bench::contentsOf(argv[1]));
    const std::vector<QRegularExpression> all = expressions();
    const double time = bench::medianMilliseconds([&] {
        for (const QRegularExpression &expression : all) {
            for (auto match = expression.globalMatch(text); match.hasNext();)
                bench::keep(match.next());
        }
    });
    bench::report("QRegularExpression", time);
    return 0;
}
