#include "text/HashValue.h"

#include <QCryptographicHash>
#include <algorithm>
#include <cstring>

namespace {
qsizetype lengthOf(qint32 type)
{
    return type == HashValue::MD5 ? 16 : type == HashValue::SHA256 ? 32 : 0;
}
} // namespace

HashValue HashValue::md5HashWithData(const QByteArray &data)
{
    return {QCryptographicHash::hash(data, QCryptographicHash::Md5), MD5};
}

HashValue HashValue::sha256HashWithData(const QByteArray &data)
{
    return {QCryptographicHash::hash(data, QCryptographicHash::Sha256), SHA256};
}

HashValue::HashValue(QByteArrayView buffer, qint32 type)
    : m_type(type)
{
    std::copy_n(buffer.begin(), std::min(buffer.size(), lengthOf(type)), m_value.begin());
}

HashValue::HashValue(const QVariantMap &archive)
    : HashValue(archive.value(QStringLiteral("value")).toByteArray(), archive.value(QStringLiteral("type")).toInt())
{
}

QVariantMap HashValue::encoded() const
{
    return {{QStringLiteral("value"), QByteArrayView(m_value).toByteArray()}, {QStringLiteral("type"), m_type}};
}

QString HashValue::description() const
{
    return QString::fromLatin1(QByteArrayView(m_value).first(lengthOf(m_type)).toByteArray().toHex());
}

quint64 HashValue::hash() const
{
    quint64 bits = 0;
    std::memcpy(&bits, m_value.data(), sizeof bits);
    return bits;
}
