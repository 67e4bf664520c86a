#pragma once

#include "xmlrpc/XMLRPCEventBasedParserDelegate.h"

#include <QByteArrayView>
#include <optional>
#include <vector>

/// Reads a reply of the plain form that blogs send nearly always: a declaration at most, elements without attributes,
/// text and references. Everything else, an error among it, is left to XMLRPCEventBasedParser, which reads the same
/// into the same value.
class PlainReplyScanner {
public:
    /// `utf8` has to live until scan() returns.
    explicit PlainReplyScanner(QByteArrayView utf8)
        : m_utf8(utf8)
    {
    }

    struct Reply {
        XMLRPCValue object; ///< absent when there is no value
        bool isFault = false;
    };
    /// Nothing when the parser has to look. Called once.
    std::optional<Reply> scan();

    // What the walk asks.
    qsizetype takeMark(qsizetype at);
    bool takeTag(qsizetype begin, qsizetype end);

private:
    bool open(std::string_view name);
    bool close(std::string_view name);
    bool takeText(qsizetype end);
    void takeCharacter(char32_t code);
    std::string_view bytes(qsizetype begin, qsizetype end) const;

    struct Open {
        std::string_view name;
        ReplyElement element;
    };

    QByteArrayView m_utf8;
    qsizetype m_textBegin = 0; // what lies before has been handed on
    std::vector<Open> m_open;
    XMLRPCEventBasedParserDelegate m_delegate;
    bool m_hasBegun = false;
};
