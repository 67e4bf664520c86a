#pragma once

#include "text/ElementKinds.h"

#include <optional>

/// One tag or comment of a text of HTML.
struct MarkupToken {
    enum Kind { StartTag, EndTag, Comment };
    Kind kind = StartTag;
    qsizetype start = 0;
    qsizetype end = 0; ///< behind its last character; of a raw-text element, behind its content and its end tag
    QStringView name; ///< of a tag, as it stands there

    bool isStart() const { return kind == StartTag; }
    bool isNamed(QStringView wanted) const { return name.compare(wanted, Qt::CaseInsensitive) == 0; }
    quint8 kinds() const { return ElementKinds::of(name); } ///< of a tag
};

/// Finds tags and comments as a browser's tokenizer does, and passes over the text between them. The content of
/// raw-text elements (script, style, ...) belongs to their start tag.
class MarkupScanner {
public:
    explicit MarkupScanner(QStringView text, qsizetype position = 0);
    std::optional<MarkupToken> next();

    static constexpr bool isSpace(QChar c) { return c == u' ' || c == u'\n' || c == u'\t' || c == u'\r' || c == u'\f'; }
    /// Behind the ">" that ends a tag, or the size of the text. `position` is in the tag, but in no value.
    static qsizetype tagEnd(QStringView text, qsizetype position);

private:
    std::optional<MarkupToken> tokenAt(qsizetype position) const;
    MarkupToken comment(qsizetype start) const;
    MarkupToken tag(qsizetype start, qsizetype nameStart, MarkupToken::Kind kind) const;
    qsizetype rawTextEnd(QStringView name, qsizetype position) const;

    QStringView m_text;
    qsizetype m_position;
};

/// Tells what stands at places of a text that are asked for from left to right. One walk over the text, and none when
/// nothing is asked.
class MarkupPlaces {
public:
    explicit MarkupPlaces(QStringView text)
        : m_scanner(text)
    {
    }
    /// The token that holds this place, or none in text.
    const MarkupToken *tokenAt(qsizetype at)
    {
        while (!m_atEnd && m_token.end <= at) {
            const auto next = m_scanner.next();
            m_atEnd = !next;
            m_token = next.value_or(MarkupToken());
        }
        return !m_atEnd && m_token.start <= at ? &m_token : nullptr;
    }

private:
    MarkupScanner m_scanner;
    MarkupToken m_token;
    bool m_atEnd = false;
};
