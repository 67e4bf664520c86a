#pragma once

#include <QByteArray>
#include <optional>

/// The text of a reply in UTF-8, without the white space that plug-ins print in front of the declaration.
class ReplyText {
public:
    /// `charset` is what the HTTP reply names; empty: UTF-8, which is not checked here. Any other is not believed when
    /// the bytes are valid UTF-8. Nothing for an unknown one and for bytes that are not valid in it.
    static std::optional<ReplyText> fromData(const QByteArray &data, const QByteArray &charset);

    QByteArrayView view() const { return QByteArrayView(m_bytes).sliced(m_start); }
    /// Makes it fit for a strict XML parser: drops the control characters that stored posts contain and XML forbids.
    /// False when there are none. Broken UTF-8 may become valid by this.
    bool dropForbidden();

private:
    explicit ReplyText(const QByteArray &utf8);
    QByteArray m_bytes; // shares the bytes of the reply where nothing had to be dropped
    qsizetype m_start;
};
