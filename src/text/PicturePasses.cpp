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
    TagAttributes attributes(text, tag.start);
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

/// Finds the addresses of images, of links, or of both, from left to right; also in what a browser takes for a comment.
class Addresses {
public:
    Addresses(QStringView text, bool images, bool links)
        : m_text(text)
        , m_images(images)
        , m_links(links)
    {
    }

    bool next(TagAttribute &found)
    {
        while ((m_at = indexOf(m_text, u'<', m_at)) < m_text.size()) {
            const qsizetype tag = m_at++;
            const bool isImage = m_images && isTag(tag, u"img");
            if (!isImage && !(m_links && isTag(tag, u"a")))
                continue;
            TagAttributes attributes(m_text, tag);
            const bool isFound = attributes.find(isImage ? u"src" : u"href", found);
            m_at = attributes.tagEnd();
            if (isFound && (isImage || isPicture(found.value)))
                return true;
        }
        return false;
    }

private:
    bool isTag(qsizetype at, std::u16string_view name) const
    {
        const qsizetype end = at + 1 + qsizetype(name.size());
        return matches(m_text, at + 1, name) && end < m_text.size()
            && (MarkupScanner::isSpace(m_text[end]) || m_text[end] == u'/');
    }

    QStringView m_text;
    bool m_images;
    bool m_links;
    qsizetype m_at = 0;
};

QStringList addresses(const QString &content, const QString &prefix, bool images)
{
    QStringList list;
    Addresses all(content, images, !images);
    for (TagAttribute attribute; all.next(attribute);) {
        if (attribute.value.startsWith(prefix))
            list.append(attribute.value.toString());
    }
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
        if (tag->start != at || !tag->isNamed(u"img") || !readClassedImage(text, *tag, image))
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
    MarkupPlaces markup(content);
    Addresses all(content, true, true);
    for (TagAttribute attribute; all.next(attribute);) {
        const auto found = replacements.constFind(attribute.value.toString());
        if (found == replacements.constEnd())
            continue;
        const MarkupToken *tag = markup.tokenAt(attribute.start);
        if (tag && tag->isStart() && (tag->isNamed(u"img") || tag->isNamed(u"a")))
            out.replace(attribute.valueStart, attribute.valueStart + attribute.value.size(), *found);
    }
    return out.result();
}
