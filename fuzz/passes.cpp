// The passes over a body, entities and plain text, on any text: half characters and all.
#include "text/ContentPasses.h"
#include "text/HTMLEntities.h"
#include "text/QueryComponents.h"

#include <cstdint>
#include <cstring>

namespace {
/// The first byte says whether the rest is UTF-8 or bare UTF-16 units, which may be half characters.
QString textOf(const uint8_t *data, size_t size)
{
    if (size == 0 || data[0] % 2 == 0)
        return size == 0 ? QString() : QString::fromUtf8(reinterpret_cast<const char *>(data) + 1, qsizetype(size - 1));
    QString text(qsizetype((size - 1) / 2), Qt::Uninitialized);
    std::memcpy(text.data(), data + 1, size_t(text.size()) * 2);
    return text;
}

void check(bool holds)
{
    if (!holds)
        __builtin_trap();
}

void alongTheRoads(const QString &body)
{
    using namespace ContentPasses;
    const QString content = contentForEditor(body);
    const QString page = postContentWithHeadings(postContentWithVideoURLTags(postContentWithShortCodeTags(content)));
    replaceEditorTags(page);
    replaceEditorTags(body);
    check(removeHTMLFromString(body).size() <= body.size());

    QHash<QString, QString> local;
    const QStringList sources = imageSources(body, QString()) + linkedPictures(body, QString());
    for (const QString &source : sources)
        local.insert(source, QStringLiteral("file://localhost/") + source.section(u'/', -1));
    replaceOccurrences(body, local);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = textOf(data, size);
    alongTheRoads(text);
    using namespace HTMLEntities;
    check(stringByDecodingHTMLEntities(text).size() <= text.size());
    check(stringByConvertingHTMLToPlainText(text).size() <= text.size());
    // the highest code alone has an escape that is not read back
    check(text.contains(QChar(0xffff)) || stringByDecodingHTMLEntities(stringByEscapingForAsciiHTML(text)) == text);
    stringByStrippingTags(text);
    stringByLinkifyingURLs(text);
    stringWithNewLinesAsBRs(text);
    QueryComponents::dictionaryFromQueryComponents(text);
    return 0;
}
