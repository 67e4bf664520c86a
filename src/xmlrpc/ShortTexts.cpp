#include "xmlrpc/ShortTexts.h"

#include "xmlrpc/ReplyScalars.h"

#include <cstring>

namespace {
constexpr int PlaceBits = 9;
}

ShortTexts::ShortTexts()
    : m_entries(size_t(1) << PlaceBits)
{
}

QString ShortTexts::text(std::string_view utf8)
{
    const Key key(utf8);
    Entry &entry = m_entries[key.place()];
    if (!(entry.key == key))
        entry = {key, ReplyScalars::string(utf8)};
    return entry.text;
}

ShortTexts::Key::Key(std::string_view utf8)
    : length(utf8.size())
{
    std::memcpy(bytes.data(), utf8.data(), utf8.size());
}

size_t ShortTexts::Key::place() const
{
    // Odd constants without a pattern; the high bits of the products depend on every byte.
    const quint64 mixed = bytes[0] * 0x9e3779b97f4a7c15ULL ^ bytes[1] * 0xc2b2ae3d27d4eb4fULL
        ^ bytes[2] * 0x165667b19e3779f9ULL ^ length * 0xd6e8feb86659fd93ULL;
    return size_t(mixed >> (64 - PlaceBits));
}
