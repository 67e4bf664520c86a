#pragma once

#include <QByteArrayView>
#include <QString>
#include <QVariantMap>
#include <array>

/// A digest of bytes, MD5 or SHA-256, that can be compared and archived.
class HashValue {
public:
    enum Type : qint32 { MD5 = 0, SHA256 = 1 };
    /// Room for the longest digest to come; what a digest does not use is zero.
    using Buffer = std::array<char, 48>;

    static HashValue md5HashWithData(const QByteArray &data);
    static HashValue sha256HashWithData(const QByteArray &data);

    /// Takes as many bytes of `buffer` as a digest of `type` has; none for an unknown type.
    HashValue(QByteArrayView buffer, qint32 type);
    /// From what encoded() made.
    explicit HashValue(const QVariantMap &archive);
    QVariantMap encoded() const;

    const Buffer &value() const { return m_value; }
    qint32 type() const { return m_type; }
    QString description() const; ///< in hexadecimal digits
    quint64 hash() const; ///< the first 64 bits
    bool operator==(const HashValue &other) const = default;

private:
    Buffer m_value{};
    qint32 m_type = MD5;
};

inline size_t qHash(const HashValue &value, size_t seed = 0)
{
    return size_t(value.hash()) ^ seed;
}
