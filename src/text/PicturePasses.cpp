#include "text/ContentPasses.h"

#include "text/KeptForms.h"
#include "text/MarkupScanner.h"
#include "text/Rewriter.h"
#include "text/Scanning.h"
#include "text/TagAttributes.h"

#include <algorithm>

using namespace Scanning;

// Pictures: their classes in the editor's form, and their addresses.

namespace {
/// The tag of a picture with its class, and what stands before and behind that.
struct ClassedImage {
    QStringView before;
    QStringView classes;
    QStringView behind;
};

/// Tags that do not end in a slash stay as they are, as do those whose classes hold the quote that they would get.
bool readClassedImage(QStringView text, const MarkupToken &tag, ClassedImage &image)
{
    constexpr qsizetype nameEnd = 4; // <img
    if (!text.first(tag.end).endsWith(u"/>"))
        return false;
    TagAttributes attributes(text, tag.start, tag.end);
    TagAttribute found;
    if (!attributes.find(u"class", found) || found.valueStart == found.end
        || !isQuote(text[found.valueStart - 1].unicode()) || found.value.contains(u'"'))
        return false;
    const qsizetype slashes = tag.end - found.end > 2 && text[tag.end - 3] == u'/' ? 3 : 2;
    if (found.end > tag.end - slashes)
        return false;
    image.before = text.sliced(tag.start + nameEnd, found.start - tag.start - nameEnd);
    image.classes = found.value;
    image.behind = text.sliced(found.end, tag.end - slashes - found.end);
    return true;
}

bool isNamed(const MarkupToken &token, QStringView name)
{
    return token.kind == MarkupToken::StartTag && token.name.compare(name, Qt::CaseInsensitive) == 0;
}

/// The path of an address, as it stands there.
QStringView pathOf(QStringView address)
{
    const qsizetype query = std::min(indexOf(address, u'?', 0), indexOf(address, u'#', 0));
    address = address.first(query);
    const qsizetype host = address.indexOf(u"://");
    return host < 0 ? address : address.sliced(indexOf(address, u'/', host + 3));
}

bool isPicture(QStringView address)
{
    const QStringView path = pathOf(address);
    for (const QStringView extension : {u".png", u".jpg", u".jpeg"}) {
        if (path.endsWith(extension, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

/// Shows the address attributes of images, of links, or of both, from left to right.
template <class Visit>
void visitAddresses(QStringView content, bool images, bool links, Visit visit)
{
    MarkupScanner scanner(content);
    while (const auto token = scanner.next()) {
        const bool isImage = images && isNamed(*token, u"img");
        if (!isImage && !(links && isNamed(*token, u"a")))
            continue;
        TagAttributes attributes(content, token->start, token->end);
        TagAttribute found;
        if (attributes.find(isImage ? u"src" : u"href", found) && (isImage || isPicture(found.value)))
            visit(found);
    }
}

QStringList addresses(const QString &content, const QString &prefix, bool images)
{
    QStringList list;
    if (!content.contains(prefix))
        return list;
    visitAddresses(content, images, !images, [&](const TagAttribute &attribute) {
        if (attribute.value.startsWith(prefix))
            list.append(attribute.value.toString());
    });
    return list;
}
} // namespace

QString ContentPasses::contentReplacingImageClasses(const QString &content, KeptForms *kept)
{
    const QStringView text(content);
    Rewriter out(content);
    MarkupPlaces markup(text);
    for (qsizetype at = indexOf(text, u'<', 0); at < text.size(); at = indexOf(text, u'<', at + 1)) {
        if (!matches(text, at + 1, u"img"))
            continue;
        const MarkupToken *tag = markup.tokenAt(at);
        ClassedImage image;
        if (tag->start != at || !isNamed(*tag, u"img") || !readClassedImage(text, *tag, image))
            continue;
        const bool centred = image.classes.contains(u"aligncenter");
        const QString mark = kept ? kept->attributeFor(text.sliced(at, tag->end - at)) : QString();
        out.replace(at, tag->end, QStringView(u"<img"), image.before,
            QStringView(centred ? u" align=\"middle\" class=\"" : u" class=\""), image.classes,
            QStringView(centred ? u" full\"" : u"\""), image.behind, mark, QStringView(u" />"));
    }
    return out.result();
}

QStringList ContentPasses::imageSources(const QString &content, const QString &prefix)
{
    return addresses(content, prefix, true);
}

QStringList ContentPasses::linkedPictures(const QString &content, const QString &prefix)
{
    return addresses(content, prefix, false);
}

QString ContentPasses::replacePictureAddresses(const QString &content, const QHash<QString, QString> &replacements)
{
    Rewriter out(content);
    visitAddresses(content, true, true, [&](const TagAttribute &attribute) {
        const auto found = replacements.constFind(attribute.value.toString());
        if (found != replacements.constEnd())
            out.replace(attribute.valueStart, attribute.valueStart + attribute.value.size(), *found);
    });
    return out.result();
}
