#include "model/PostFile.h"

#include "model/PostFileDate.h"
#include "model/PostFileWords.h"
#include "model/XMLDictionary.h"
#include "model/XMLDictionaryParser.h"
#include "model/XMLStrings.h"
#include "text/TextTruth.h"
#include "text/XMLBytes.h"

namespace {
/// The text of an element; null when there is none.
QString text(const QVariantMap &node, const char *name)
{
    return XMLDictionary::stringValueForKeyPath(node, QString::fromLatin1(name));
}

QString decodedTwice(const QVariantMap &node, const char *name)
{
    return XMLDecodedString(text(node, name));
}

QList<ZLTaxonomy> taxonomiesFrom(const QVariant &keywords)
{
    const QVariant found = keywords.toMap().value(QStringLiteral("keyword"));
    // A keyword that stands alone is decoded once only, as the format has it.
    if (found.typeId() == QMetaType::QString)
        return {ZLTaxonomy::fromKeyword(found.toString())};
    QList<ZLTaxonomy> taxonomies;
    for (const QVariant &keyword : found.toList()) {
        if (keyword.typeId() == QMetaType::QString)
            taxonomies.append(ZLTaxonomy::fromKeyword(XMLDecodedString(keyword.toString())));
    }
    return taxonomies;
}

/// A text exactly as the file stored it, where the parser has turned line ends into "\n": its own bytes if they read as
/// what was parsed, else (a comment or CDATA in it, another encoding) the parser's untrimmed text. `legal` is the file
/// with those bytes replaced, place by place, that XML forbids.
QString storedText(const QString &name, const QByteArray &file, const QByteArray &legal, const QString &parsed)
{
    const QByteArray tag = name.toLatin1() + '>';
    const qsizetype found = legal.indexOf('<' + tag);
    const qsizetype begin = found + 1 + tag.size();
    const qsizetype end = legal.indexOf("</" + tag, begin);
    if (found >= 0 && end >= 0) {
        const QByteArray bytes = legal.mid(begin, end - begin).replace("\r\n", "\n").replace('\r', '\n');
        if (XMLDecodedOnce(bytes).trimmed() == parsed)
            return XMLDecodedOnce(QByteArrayView(file).sliced(begin, end - begin));
    }
    XMLDictionaryParser parser;
    parser.trimWhiteSpace = parser.stripEmptyNodes = false;
    const QVariantMap root = parser.dictionaryWithData(legal).value_or(QVariantMap());
    const QString text = XMLDictionary::stringValueForKeyPath(root, QStringLiteral("post.") + name);
    const bool isEmpty = parser.wasComplete() && root.value(QStringLiteral("post")).toMap().contains(name);
    return text.isNull() && isEmpty ? QStringLiteral("") : text;
}

void readPost(PostFile &file, const QVariantMap &post)
{
    file.title = decodedTwice(post, "title");
    file.content = decodedTwice(post, "content");
    file.taxonomies = taxonomiesFrom(post.value(QStringLiteral("keywords")));
    PostFileWords::giveIds(file.taxonomies, text(post, "keyword_ids"));
}

void readPostInfo(PostFile &file, const QVariantMap &info)
{
    file.status = PostFileWords::statusFrom(text(info, "engine"), text(info, "status"));
    file.blogStatus = text(info, "blog_status");
    file.id = text(info, "id");
    file.type = PostFileWords::typeFrom(text(info, "type"));
    file.createdAt = PostFileDate::dateWithString(text(info, "created_at"));
    file.updatedAt = PostFileDate::dateWithString(text(info, "updated_at"));
    file.authorId = text(info, "author_id");
    file.URL = text(info, "URL");
    file.allowComments = readsTrue(text(info, "allow_comments"));
    file.allowPingback = readsTrue(text(info, "allow_pingback"));
    file.slug = text(info, "slug");
    const QVariantMap image = info.value(QStringLiteral("featured_image")).toMap();
    file.featuredImageId = text(image, "media_id");
    file.featuredImageURL = text(image, "URL");
}

void readFileInfo(PostFile &file, const QVariantMap &info)
{
    file.fileInfo = {text(info, "status"), text(info, "app_version")};
    file.firstPublishBegan = PostFileDate::dateWithString(text(info, "first_publish_began"));
}
} // namespace

PostFile PostFile::fromData(const QByteArray &data)
{
    PostFile file;
    const QByteArray legal = XMLBytes::legal(data);
    XMLDictionaryParser parser;
    const std::optional<QVariantMap> root = parser.dictionaryWithData(legal);
    if (!root)
        return file;
    file.isWhole = parser.wasComplete() && XMLDictionary::nodeName(*root) == QLatin1String("zalmo");
    const QVariantMap post = root->value(QStringLiteral("post")).toMap();
    readPost(file, post);
    readPostInfo(file, root->value(QStringLiteral("post_info")).toMap());
    readFileInfo(file, root->value(QStringLiteral("file_info")).toMap());
    file.storedTitle = storedText(QStringLiteral("title"), data, legal, text(post, "title"));
    file.storedContent = storedText(QStringLiteral("content"), data, legal, text(post, "content"));
    return file;
}

PostFields PostFile::stored() const
{
    PostFields fields = *this;
    fields.title = storedTitle;
    fields.content = storedContent;
    return fields;
}
