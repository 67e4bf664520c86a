// text PEER FILE     regular-expression work over one post body
#include "bench.h"
#include <QRegularExpression>
#include <QString>
#include <cstring>
#define PCRE2_CODE_UNIT_WIDTH 0
#include <pcre2.h>
#include <unicode/uregex.h>

static const char TAG[] = "<[^>]+>";

// The patterns that a body meets between blog, file and editor page, as the contract has them.
#define BLOCKS                                                                                                         \
    "(?:table|thead|tfoot|caption|col|colgroup|tbody|tr|td|th|div|dl|dd|dt|ul|ol|li|pre|form|map|area|blockquote|"     \
    "address|math|style|p|h[1-6]|hr|fieldset|noscript|legend|section|article|aside|hgroup|header|footer|nav|figure|"   \
    "details|menu|summary)"
static const std::vector<const char *> CONTRACT = {
    R"re(<img([^<]*?)class=(['"])(.*?)\2(.*?)//?>)re",
    "(<" BLOCKS "[^>]*>)",
    "(</" BLOCKS ">)",
    R"re(\n\s*?\n)re",
    R"re(<p[^<\s\S]*?>\s*?</p>)re",
    R"re(\[(youtube|vimeo)(.*?)\])re",
    R"re((<img\s[\s\S]*?src\s*?=\s*?['"](.*?)['"][\s\S]*?>)+?)re",
    R"re((<a\s[\s\S]*?href\s*?=\s*?['"](.*?)['"][\s\S]*?>)+?)re",
    R"re((^|\s)https?:\/\/www\.youtube\.com\/watch\?v=(.*?)($|\s))re",
    R"re(<\s*?(h1|h2|h3|h4|h5|h6).*?>(.*?)<(\s*?)\/(\s*?)(h1|h2|h3|h4|h5|h6)\s*?>)re",
    R"re(<div\s[\s\S]*?class=['"](embed|youtube|vimeo|videolog)['"]>(.*?)</div>)re",
};

#define JIT(W, CHAR)                                                                                                   \
    struct Jit##W {                                                                                                    \
        pcre2_code_##W *code;                                                                                          \
        pcre2_match_data_##W *data;                                                                                    \
        explicit Jit##W(const std::basic_string<CHAR> &p)                                                              \
        {                                                                                                              \
            int err;                                                                                                   \
            size_t at;                                                                                                 \
            code = pcre2_compile_##W(                                                                                  \
                reinterpret_cast<PCRE2_SPTR##W>(p.data()), p.size(), PCRE2_CASELESS | PCRE2_UTF, &err, &at, nullptr);  \
            if (!code || pcre2_jit_compile_##W(code, PCRE2_JIT_COMPLETE))                                              \
                std::abort();                                                                                          \
            data = pcre2_match_data_create_from_pattern_##W(code, nullptr);                                            \
        }                                                                                                              \
        size_t count(const std::basic_string<CHAR> &s)                                                                 \
        {                                                                                                              \
            size_t n = 0, at = 0;                                                                                      \
            while (at <= s.size()                                                                                      \
                && pcre2_match_##W(code, reinterpret_cast<PCRE2_SPTR##W>(s.data()), s.size(), at, PCRE2_NO_UTF_CHECK,  \
                       data, nullptr)                                                                                  \
                    > 0) {                                                                                             \
                size_t *v = pcre2_get_ovector_pointer_##W(data);                                                       \
                at = v[1] > v[0] ? v[1] : v[1] + 1;                                                                    \
                ++n;                                                                                                   \
            }                                                                                                          \
            return n;                                                                                                  \
        }                                                                                                              \
    }
JIT(8, char);
JIT(16, char16_t);

static size_t icuCount(URegularExpression *r, const std::u16string &s)
{
    UErrorCode e = U_ZERO_ERROR;
    uregex_setText(r, s.data(), int32_t(s.size()), &e);
    size_t n = 0;
    while (uregex_findNext(r, &e))
        ++n;
    return n;
}

// nocheck: without the UTF-16 validation that Qt otherwise repeats at the start of every pass
static qsizetype count(const QRegularExpression &r, const QString &s, bool nocheck = false)
{
    qsizetype n = 0;
    const auto o = nocheck ? QRegularExpression::DontCheckSubjectStringMatchOption : QRegularExpression::NoMatchOption;
    for (auto it = r.globalMatch(s, 0, QRegularExpression::NormalMatch, o); it.hasNext(); it.next())
        ++n;
    return n;
}

static QRegularExpression compiled(const char *p)
{
    QRegularExpression r(QString::fromLatin1(p), QRegularExpression::CaseInsensitiveOption);
    r.optimize();
    return r;
}

// A hostile body may take minutes: then one run only.
template <class F>
static double bounded(F f)
{
    auto t = Clock::now();
    f();
    const double first = since(t);
    return first > 1000 ? first : timed(f, 3, 300, false);
}

int main(int argc, char **argv)
{
    if (argc < 3)
        return 2;
    const std::string peer = argv[1], bytes = slurp(argv[2]);
    const QString text = QString::fromUtf8(bytes.data(), qsizetype(bytes.size()));
    const std::u16string wide = text.toStdU16String();
    double ms = 0;
    if (peer == "memchr-amp") {
        ms = timed([&] {
            size_t n = 0;
            const char *p = bytes.data(), *e = p + bytes.size();
            while ((p = static_cast<const char *>(std::memchr(p, '&', e - p))))
                ++n, ++p;
            keep(n);
        });
    } else if (peer == "memchr") {
        ms = timed([&] {
            size_t n = 0;
            const char *p = bytes.data(), *e = p + bytes.size();
            while ((p = static_cast<const char *>(std::memchr(p, '<', e - p)))
                && (p = static_cast<const char *>(std::memchr(p, '>', e - p))))
                ++n;
            keep(n);
        });
    } else if (peer == "qregularexpression" || peer == "qregularexpression-nocheck") {
        const auto r = compiled(TAG);
        ms = timed([&] { keep(count(r, text, peer.ends_with("nocheck"))); });
    } else if (peer == "pcre2-8-jit") {
        Jit8 r{TAG};
        ms = timed([&] { keep(r.count(bytes)); });
    } else if (peer == "pcre2-16-jit") {
        Jit16 r{QString::fromLatin1(TAG).toStdU16String()};
        ms = timed([&] { keep(r.count(wide)); });
    } else if (peer == "icu") {
        UErrorCode e = U_ZERO_ERROR;
        UParseError pe;
        auto *r = uregex_openC(TAG, UREGEX_CASE_INSENSITIVE, &pe, &e);
        ms = timed([&] { keep(icuCount(r, wide)); });
    } else if (peer.starts_with("contract-qregularexpression")) {
        std::vector<QRegularExpression> rs;
        for (auto p : CONTRACT)
            rs.push_back(compiled(p));
        const bool again = peer.ends_with("recompiled");
        ms = bounded([&] {
            for (size_t i = 0; i < rs.size(); ++i)
                keep(count(again ? compiled(CONTRACT[i]) : rs[i], text, peer.ends_with("nocheck")));
        });
    } else if (peer == "contract-pcre2-16-jit") {
        std::vector<Jit16> rs;
        for (auto p : CONTRACT)
            rs.emplace_back(QString::fromLatin1(p).toStdU16String());
        ms = bounded([&] {
            for (auto &r : rs)
                keep(r.count(wide));
        });
    } else if (peer == "contract-icu") {
        std::vector<URegularExpression *> rs;
        for (auto p : CONTRACT) {
            UErrorCode e = U_ZERO_ERROR;
            UParseError pe;
            rs.push_back(uregex_openC(p, UREGEX_CASE_INSENSITIVE, &pe, &e));
            if (U_FAILURE(e))
                std::abort();
        }
        ms = bounded([&] {
            for (auto *r : rs)
                keep(icuCount(r, wide));
        });
    } else if (peer == "contract-list") {
        for (auto p : CONTRACT) {
            const auto r = compiled(p);
            qsizetype n = 0;
            const double t = bounded([&] { n = count(r, text); });
            std::printf("%10.3f ms %6lld  %s\n", t, static_cast<long long>(n), p);
        }
        return 0;
    } else
        return 2;
    report(peer, ms);
}
