#include "text/HashValue.h"

#include <QCryptographicHash>
#include <algorithm>
#include <cstring>

namespace {
size_t lengthOf(qint32 type)
{
    return type == HashValue::MD5 ? 16 : type == HashValue::SHA256 ? 32 : 0;
}
} // namespace

HashValue HashValue::md5HashWithData(QByteArrayView data)
{
    return digest(data, MD5);
}

HashValue HashValue::sha256HashWithData(QByteArrayView data)
{
    return digest(data, SHA256);
}

HashValue HashValue::digest(QByteArrayView data, Type type)
{
    QCryptographicHash hash(type == MD5 ? QCryptographicHash::Md5 : QCryptographicHash::Sha256);
    hash.addData(data);
    const QByteArray bytes = hash.result();
    Buffer buffer{};
    std::copy(bytes.cbegin(), bytes.cend(), buffer.begin());
    return {buffer, type};
}

HashValue::HashValue(const Buffer &buffer, qint32 type)
    : m_type(type)
{
    std::copy_n(buffer.begin(), lengthOf(type), m_value.begin());
}

HashValue::HashValue(const QVariantMap &archive)
    : m_type(archive.value(QStringLiteral("type")).toInt())
{
    const QByteArray bytes = archive.value(QStringLiteral("value")).toByteArray();
    std::copy_n(bytes.cbegin(), std::min<qsizetype>(bytes.size(), qsizetype(m_value.size())), m_value.begin());
}

QVariantMap HashValue::encoded() const
{
    const QByteArray bytes(reinterpret_cast<const char *>(m_value.data()), qsizetype(m_value.size()));
    return {{QStringLiteral("value"), bytes}, {QStringLiteral("type"), m_type}};
}

QString HashValue::description() const
{
    const QByteArray bytes(reinterpret_cast<const char *>(m_value.data()), qsizetype(lengthOf(m_type)));
    return QString::fromLatin1(bytes.toHex());
}

quint64 HashValue::hash() const
{
    quint64 bits = 0;
    std::memcpy(&bits, m_value.data(), sizeof bits);
    return bits;
}
