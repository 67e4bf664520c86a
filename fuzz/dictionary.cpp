// Post files and other XML that is read into dictionaries.
#include "model/PostRow.h"
#include "model/PostRowScanner.h"
#include "model/XMLDictionary.h"
#include "model/XMLDictionaryParser.h"
#include "model/ZLFileExtension.h"

#include <QLoggingCategory>
#include <cstdint>
#include <cstdlib>

namespace {
void readDictionary(const QByteArray &bytes, uchar settings)
{
    XMLDictionaryParser parser;
    parser.collapseTextNodes = !(settings & 1);
    parser.stripEmptyNodes = !(settings & 2);
    parser.trimWhiteSpace = !(settings & 4);
    parser.alwaysUseArrays = settings & 8;
    parser.preserveComments = settings & 16;
    parser.attributesMode = settings >> 5 & 3;
    if (const std::optional<QVariantMap> root = parser.dictionaryWithData(bytes))
        (void)XMLDictionary::XMLString(*root);
}

/// What the file stored is written as it was, and reads as the same again.
void requireRoundTrip(const PostFile &file)
{
    const PostFields stored = file.stored();
    const PostFile again = PostFile::fromData(ZLFileExtension::generateXMLDataForPost(stored, &file.fileInfo));
    const bool isSame = again.storedTitle == file.storedTitle && again.storedContent == file.storedContent
        && again.status == file.status && again.type == file.type && again.id == file.id;
    if (!isSame)
        std::abort();
}

void readPost(const QByteArray &bytes)
{
    const PostFile file = PostFile::fromData(bytes);
    if (!(PostRow::fromData(bytes) == PostRow::fromFile(file)))
        std::abort();
    if (file.isWhole)
        requireRoundTrip(file);
}
} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    QLoggingCategory::setFilterRules(QStringLiteral("zalmo.info=false"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    readPost(bytes);
    if (size > 0)
        readDictionary(bytes.mid(1), data[0]);
    return 0;
}
