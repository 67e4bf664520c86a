#include "model/PostRowScanner.h"

#include "model/PostFileDate.h"
#include "model/PostFileWords.h"
#include "model/XMLStrings.h"
#include "text/PlainXML.h"

#include <algorithm>

namespace {
enum Element {
    Zalmo,
    Post,
    Title,
    Content,
    Keywords,
    Keyword,
    PostInfo,
    Engine,
    PostStatus,
    BlogStatus,
    Type,
    CreatedAt,
    PostURL,
    FeaturedImage,
    FileInfo,
    FileStatus,
    OtherLeaf, ///< what no row needs
};

struct Known {
    QByteArrayView name;
    int parent; ///< -1 for the root
    int element;
    bool mayRepeat = false;
};
constexpr Known knownElements[] = {
    {"zalmo", -1, Zalmo},
    {"post", Zalmo, Post},
    {"title", Post, Title},
    {"content", Post, Content},
    {"keywords", Post, Keywords},
    {"keyword", Keywords, Keyword, true},
    {"post_info", Zalmo, PostInfo},
    {"engine", PostInfo, Engine},
    {"status", PostInfo, PostStatus},
    {"blog_status", PostInfo, BlogStatus},
    {"type", PostInfo, Type},
    {"created_at", PostInfo, CreatedAt},
    {"URL", PostInfo, PostURL},
    {"featured_image", PostInfo, FeaturedImage},
    {"file_info", Zalmo, FileInfo},
    {"status", FileInfo, FileStatus},
    {"id", PostInfo, OtherLeaf},
    {"updated_at", PostInfo, OtherLeaf},
    {"author_id", PostInfo, OtherLeaf},
    {"allow_comments", PostInfo, OtherLeaf},
    {"allow_pingback", PostInfo, OtherLeaf},
    {"slug", PostInfo, OtherLeaf},
    {"media_id", FeaturedImage, OtherLeaf},
    {"URL", FeaturedImage, OtherLeaf},
    {"app_version", FileInfo, OtherLeaf},
    {"first_publish_began", FileInfo, OtherLeaf},
    {"keyword_ids", Post, OtherLeaf},
};

bool isContainer(int element)
{
    return element == Zalmo || element == Post || element == Keywords || element == PostInfo || element == FeaturedImage
        || element == FileInfo;
}

const Known *knownElement(QByteArrayView name, int parent)
{
    for (const Known &known : knownElements) {
        if (known.parent == parent && known.name == name)
            return &known;
    }
    return nullptr;
}

bool isBlank(QByteArrayView text)
{
    return std::all_of(text.begin(), text.end(), [](char byte) { return byte == ' ' || byte == '\n' || byte == '\t'; });
}

/// As the full reader has it: trimmed, and nothing at all when only white space is there.
QString trimmedText(QByteArrayView text)
{
    const QString trimmed = XMLDecodedOnce(text).trimmed();
    return trimmed.isEmpty() ? QString() : trimmed;
}

/// The same for a field with few values, which thousands of rows can share.
QString sharedText(QByteArrayView text)
{
    static const QString values[] = {QStringLiteral("wordpress"), QStringLiteral("evernote"), QStringLiteral("publish"),
        QStringLiteral("draft"), QStringLiteral("new"), QStringLiteral("post"), QStringLiteral("page"),
        QStringLiteral("modified"), QStringLiteral("private"), QStringLiteral("pending")};
    for (const QString &value : values) {
        if (value == QLatin1String(text.data(), text.size()))
            return value;
    }
    return trimmedText(text);
}

/// The beginning of a text, cut neither within a character nor within a reference.
QByteArrayView beginning(QByteArrayView text, qsizetype length)
{
    constexpr qsizetype longestReference = 6;
    const qsizetype ampersand = text.sliced(length - longestReference, longestReference).lastIndexOf('&');
    if (ampersand >= 0)
        length -= longestReference - ampersand;
    while (length > 0 && (uchar(text[length]) & 0xC0) == 0x80)
        --length;
    return text.first(length);
}

/// The row's extract, for which most of a long body need not be decoded.
QString contentExtract(QByteArrayView text)
{
    constexpr qsizetype margin = 8; // at the cut an entity may have lost its end
    for (qsizetype length = 1024; length < text.size(); length *= 2) {
        const QString decoded = XMLDecodedOnce(beginning(text, length)).trimmed();
        const qsizetype extract = PostRow::extractLength(decoded, false);
        if (extract >= 0 && extract + margin <= decoded.size())
            return QString(decoded.constData(), extract);
    }
    const QString all = trimmedText(text);
    return all.isNull() ? all : ZLLocalPostRepresentation::contentExtract(all);
}
} // namespace

std::optional<PostRow> PostRowScanner::scan()
{
    if (!PlainXML::walk(m_data, *this) || !m_isDone || !isBlank(m_data.sliced(m_textBegin)))
        return std::nullopt;
    m_row.isWhole = true;
    m_row.status = PostFileWords::statusFrom(m_engine, m_status);
    return std::move(m_row);
}

qsizetype PostRowScanner::takeMark(qsizetype at)
{
    // A parser would turn "\r\n" into "\n"; ">" may be the end of "]]>", which no text may hold.
    const PlainXML::Reference *reference = PlainXML::reference(m_data.sliced(at));
    return reference ? reference->text.size() : 0;
}

bool PostRowScanner::takeTag(qsizetype begin, qsizetype end)
{
    const QByteArrayView text = m_data.sliced(m_textBegin, begin - m_textBegin);
    const QByteArrayView tag = m_data.sliced(begin + 1, end - begin - 1);
    m_textBegin = end + 1;
    if (tag.startsWith('/'))
        return close(tag.sliced(1), text);
    return isBlank(text) && open(tag);
}

bool PostRowScanner::open(QByteArrayView name)
{
    const int parent = m_depth == 0 ? -1 : m_path[m_depth - 1].element;
    const Known *known = m_isDone || m_depth == deepest ? nullptr : knownElement(name, parent);
    const quint32 bit = known ? 1U << (known - knownElements) : 0;
    if (!known || (m_seen & bit && !known->mayRepeat))
        return false;
    m_seen |= bit;
    m_path[m_depth++] = {name, known->element};
    return true;
}

bool PostRowScanner::close(QByteArrayView name, QByteArrayView text)
{
    if (m_depth == 0 || m_path[m_depth - 1].name != name)
        return false;
    const Open closed = m_path[--m_depth];
    m_isDone = m_depth == 0;
    if (isContainer(closed.element))
        return isBlank(text);
    store(closed.element, text);
    return true;
}

void PostRowScanner::store(int element, QByteArrayView text)
{
    switch (element) {
    case Title:
        m_row.title = XMLDecodedString(trimmedText(text));
        break;
    case Content:
        m_row.content = contentExtract(text);
        break;
    case Engine:
        m_engine = sharedText(text);
        break;
    case PostStatus:
        m_status = sharedText(text);
        break;
    case BlogStatus:
        m_row.blogStatus = sharedText(text);
        break;
    case Type:
        m_row.type = PostFileWords::typeFrom(sharedText(text));
        break;
    case CreatedAt:
        m_row.createdAt = PostFileDate::dateWithString(trimmedText(text));
        break;
    case PostURL:
        m_row.postURL = QUrl(trimmedText(text));
        break;
    case FileStatus:
        m_row.fileStatus = sharedText(text);
        break;
    default:
        break;
    }
}
