#include "xmlrpc/OneTimeBody.h"

#include <algorithm>

OneTimeBody::OneTimeBody(const QByteArray &bytes)
    : m_bytes(bytes)
{
    open(QIODevice::ReadOnly);
}

qint64 OneTimeBody::readData(char *data, qint64 maximum)
{
    const qint64 length = std::min<qint64>(maximum, m_bytes.size() - m_read);
    if (length == 0)
        return -1;
    std::copy_n(m_bytes.constData() + m_read, length, data);
    m_read += length;
    return length;
}
