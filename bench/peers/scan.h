// A reader for known, attribute-free XML: memchr from tag to tag. It shows what the file forms allow, not how to do it.
#pragma once
#include <QString>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

// Appends the text with its entities decoded.
inline void decoded(std::string &to, const char *p, const char *e)
{
    while (const char *amp = static_cast<const char *>(std::memchr(p, '&', e - p))) {
        to.append(p, amp - p);
        const char *semi = static_cast<const char *>(std::memchr(amp, ';', std::min<size_t>(e - amp, 12)));
        if (!semi)
            std::abort();
        const std::string_view n(amp + 1, semi - amp - 1);
        if (n == "lt")
            to += '<';
        else if (n == "gt")
            to += '>';
        else if (n == "amp")
            to += '&';
        else if (n == "quot")
            to += '"';
        else if (n == "apos")
            to += '\'';
        else
            to += QString(QChar(n[1] == 'x' ? int(std::strtol(n.data() + 2, nullptr, 16)) : std::atoi(n.data() + 1)))
                      .toStdString();
        p = semi + 1;
    }
    to.append(p, e - p);
}

// tag(name, closing, textBegin, textEnd) for every tag, with the raw text before it.
template <class F>
void scanTags(const std::string &xml, F tag)
{
    char name[32];
    const char *p = xml.data(), *e = p + xml.size();
    while (const char *lt = static_cast<const char *>(std::memchr(p, '<', e - p))) {
        const char *gt = static_cast<const char *>(std::memchr(lt, '>', e - lt));
        if (!gt)
            std::abort();
        const bool close = lt[1] == '/';
        const size_t n = gt - lt - 1 - close;
        if (lt[1] != '?') {
            if (n >= sizeof name)
                std::abort();
            std::memcpy(name, lt + 1 + close, n);
            name[n] = 0;
            tag(name, close, p, lt);
        }
        p = gt + 1;
    }
}
