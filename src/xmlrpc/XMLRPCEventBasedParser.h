#pragma once

#include "xmlrpc/XMLRPCEventBasedParserDelegate.h"

#include <QByteArrayView>
#include <QString>

struct XML_ParserStruct;

/// Reads one reply with expat and lets its delegate build the value. It is slower than PlainReplyScanner, but reads
/// whatever XML allows and says what is wrong with the rest.
///
/// A reply is foreign input: a document type, which could only bring entities, is refused, and so is whatever is nested
/// beyond need. Expat's own limits against amplification stay at their defaults.
class XMLRPCEventBasedParser {
public:
    static constexpr qsizetype MaximumSize = 64LL * 1024 * 1024;

    /// `utf8` has to live until parse() returns.
    explicit XMLRPCEventBasedParser(QByteArrayView utf8);
    ~XMLRPCEventBasedParser();
    Q_DISABLE_COPY_MOVE(XMLRPCEventBasedParser)

    /// The root value; absent when the document is unusable or holds no value.
    XMLRPCValue parse();
    /// Null when all went well.
    QString parserError() const { return m_error; }
    bool isFault() const { return m_delegate.isFault(); }

private:
    static XMLRPCEventBasedParser &of(void *self) { return *static_cast<XMLRPCEventBasedParser *>(self); }
    void startElement(std::string_view name);
    void endElement(std::string_view name);
    void refuse(const QString &error);
    QString expatError() const;

    QByteArrayView m_utf8;
    XML_ParserStruct *m_parser;
    XMLRPCEventBasedParserDelegate m_delegate;
    QString m_error;
};
