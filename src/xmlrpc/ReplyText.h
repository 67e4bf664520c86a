#pragma once

#include <QByteArray>
#include <optional>

/// The text of a reply in UTF-8, made fit for a strict XML parser: without the white space that plug-ins print in front
/// of the declaration, and without the control characters that stored posts contain and XML forbids.
class ReplyText {
public:
    /// `charset` is what the HTTP reply names; empty: UTF-8. Nothing for an unknown one and for bytes that are not
    /// valid in it. UTF-8 is checked here only as far as cleaning demands; the XML parser refuses the rest.
    static std::optional<ReplyText> fromData(const QByteArray &data, const QByteArray &charset);

    QByteArrayView view() const { return QByteArrayView(m_bytes).sliced(m_start); }

private:
    explicit ReplyText(const QByteArray &utf8);
    QByteArray m_bytes; // shares the bytes of the reply where nothing had to be dropped
    qsizetype m_start = 0;
};
