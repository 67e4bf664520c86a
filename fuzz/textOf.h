#pragma once

#include <QString>
#include <cstdint>
#include <cstring>

/// The first byte says whether the rest is UTF-8 or bare UTF-16 units, which may be half characters.
inline QString textOf(const uint8_t *data, size_t size)
{
    if (size == 0 || data[0] % 2 == 0)
        return size == 0 ? QString() : QString::fromUtf8(reinterpret_cast<const char *>(data) + 1, qsizetype(size - 1));
    QString text(qsizetype((size - 1) / 2), Qt::Uninitialized);
    std::memcpy(text.data(), data + 1, size_t(text.size()) * 2);
    return text;
}

inline void check(bool holds)
{
    if (!holds)
        __builtin_trap();
}
