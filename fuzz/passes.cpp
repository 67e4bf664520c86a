// The passes over a body, entities and plain text, on any text: half characters and all.
#include "text/ContentPasses.h"
#include "text/HTMLEntities.h"
#include "text/QueryComponents.h"
#include "textOf.h"

namespace {
void alongTheRoads(const QString &body)
{
    using namespace ContentPasses;
    postContentWithVideoURLTags(postContentWithShortCodeTags(contentForEditor(body)));
    check(removeHTMLFromString(body).size() <= body.size());

    QHash<QString, QString> local;
    const QStringList sources = imageSources(body, QString()) + linkedPictures(body, QString());
    for (const QString &source : sources)
        local.insert(source, QStringLiteral("file://localhost/") + source.section(u'/', -1));
    const QString swapped = replacePictureAddresses(body, local);
    for (const QString &source : imageSources(swapped, QString()) + linkedPictures(swapped, QString()))
        check(source.startsWith(u"file://localhost/"));
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
    QueryComponents::dictionaryFromQueryComponents(text);
    return 0;
}
