#pragma once

#include <QString>
#include <optional>

/// One tag or comment of a text of HTML.
struct MarkupToken {
    enum Kind { StartTag, EndTag, Comment };
    Kind kind = StartTag;
    qsizetype start = 0;
    qsizetype end = 0; ///< behind its last character; of a raw-text element, behind its content
    QString name; ///< of a tag, in lower case
};

/// Finds tags and comments as a browser's tokenizer does, and passes over the text between them. The content of
/// raw-text elements (script, style, ...) belongs to their start tag.
class MarkupScanner {
public:
    explicit MarkupScanner(QStringView text, qsizetype position = 0);
    std::optional<MarkupToken> next();

    static bool isSpace(QChar c);

private:
    std::optional<MarkupToken> tokenAt(qsizetype position) const;
    MarkupToken comment(qsizetype start) const;
    MarkupToken tag(qsizetype start, qsizetype nameStart, MarkupToken::Kind kind) const;
    qsizetype tagEnd(qsizetype position) const;
    qsizetype rawTextEnd(const QString &name, qsizetype position) const;

    QStringView m_text;
    qsizetype m_position;
};
