// xml parse|encode PEER FILE      XML-RPC reply parsing; upload and text encoding
#include "bench.h"
#include "scan.h"
#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>
#include <cstring>
#include <expat.h>
#include <immintrin.h>
#include <openssl/evp.h>
#include <pugixml.hpp>
#include <variant>
#include <xmlrpc-c/base.h>
#include <xmlrpc-c/base.hpp>
#include <xmlrpc-c/xml.hpp>

// ---- what a Qt program could reach: expat events into a tree of QString, scalars trimmed
namespace probe {
struct Value;
using Members = std::vector<std::pair<QString, Value>>;
using Items = std::vector<Value>;
struct Value {
    std::variant<std::monostate, bool, int, double, QString, QByteArray, Members, Items> v;
};

struct Frame {
    char kind;
    Value value;
    QString key;
};
struct State {
    std::vector<Frame> stack;
    std::string text;
    char type = 's';
    Value root;
};

QString trimmed(const std::string &s)
{
    size_t a = 0, b = s.size();
    while (a < b && static_cast<unsigned char>(s[a]) <= ' ')
        ++a;
    while (b > a && static_cast<unsigned char>(s[b - 1]) <= ' ')
        --b;
    return QString::fromUtf8(s.data() + a, b - a);
}

void XMLCALL start(void *u, const char *n, const char **)
{
    auto &s = *static_cast<State *>(u);
    s.text.clear();
    if (!std::strcmp(n, "value")) {
        s.stack.push_back({'v', {}, {}});
        s.type = 's';
    } else if (!std::strcmp(n, "struct"))
        s.stack.back().value.v = Members();
    else if (!std::strcmp(n, "array"))
        s.stack.back().value.v = Items();
    else if (!std::strcmp(n, "member"))
        s.stack.push_back({'m', {}, {}});
    else if (!std::strcmp(n, "int") || !std::strcmp(n, "i4"))
        s.type = 'i';
    else if (!std::strcmp(n, "boolean"))
        s.type = 'b';
    else if (!std::strcmp(n, "double"))
        s.type = 'd';
    else if (!std::strcmp(n, "base64"))
        s.type = '6';
}

void XMLCALL end(void *u, const char *n)
{
    auto &s = *static_cast<State *>(u);
    if (!std::strcmp(n, "name")) {
        s.stack.back().key = trimmed(s.text);
        s.text.clear();
        return;
    }
    if (!std::strcmp(n, "member")) {
        Frame f = std::move(s.stack.back());
        s.stack.pop_back();
        std::get<Members>(s.stack.back().value.v).emplace_back(std::move(f.key), std::move(f.value));
        s.text.clear();
        return;
    }
    if (std::strcmp(n, "value"))
        return;
    Frame f = std::move(s.stack.back());
    s.stack.pop_back();
    if (f.value.v.index() == 0) {
        switch (s.type) {
        case 'i':
            f.value.v = std::atoi(s.text.c_str());
            break;
        case 'b':
            f.value.v = s.text == "1";
            break;
        case 'd':
            f.value.v = std::atof(s.text.c_str());
            break;
        case '6':
            f.value.v = QByteArray::fromBase64(QByteArray::fromStdString(s.text));
            break;
        default:
            f.value.v = trimmed(s.text);
        }
    }
    s.text.clear();
    s.type = 's';
    if (s.stack.empty())
        s.root = std::move(f.value);
    else if (s.stack.back().kind == 'm')
        s.stack.back().value = std::move(f.value);
    else
        std::get<Items>(s.stack.back().value.v).push_back(std::move(f.value));
}

void XMLCALL chars(void *u, const char *p, int n)
{
    static_cast<State *>(u)->text.append(p, n);
}

size_t count(const Value &v)
{
    size_t n = 1;
    if (auto m = std::get_if<Members>(&v.v))
        for (auto &e : *m)
            n += count(e.second);
    if (auto a = std::get_if<Items>(&v.v))
        for (auto &e : *a)
            n += count(e);
    return n;
}

size_t run(const std::string &xml)
{
    State s;
    XML_Parser p = XML_ParserCreate(nullptr);
    XML_SetUserData(p, &s);
    XML_SetElementHandler(p, start, end);
    XML_SetCharacterDataHandler(p, chars);
    if (XML_Parse(p, xml.data(), int(xml.size()), 1) != XML_STATUS_OK)
        std::abort();
    XML_ParserFree(p);
    return count(s.root);
}

// the same tree without a general XML parser
size_t scan(const std::string &xml)
{
    State s;
    scanTags(xml, [&](const char *name, bool close, const char *from, const char *to) {
        decoded(s.text, from, to);
        if (close)
            end(&s, name);
        else
            start(&s, name, nullptr);
    });
    return count(s.root);
}
} // namespace probe

struct Count {
    size_t elements = 0, bytes = 0;
};

static size_t expatSax(const std::string &xml)
{
    Count c;
    XML_Parser p = XML_ParserCreate(nullptr);
    XML_SetUserData(p, &c);
    XML_SetElementHandler(
        p, [](void *u, const char *, const char **) { ++static_cast<Count *>(u)->elements; },
        [](void *, const char *) {});
    XML_SetCharacterDataHandler(p, [](void *u, const char *, int n) { static_cast<Count *>(u)->bytes += n; });
    if (XML_Parse(p, xml.data(), int(xml.size()), 1) != XML_STATUS_OK)
        std::abort();
    XML_ParserFree(p);
    return c.elements;
}

static int parse(const std::string &peer, const std::string &path)
{
    const std::string xml = slurp(path);
    double ms = 0;
    if (peer == "read") {
        std::string buf(xml.size(), 0);
        ms = timed([&] {
            int fd = open(path.c_str(), O_RDONLY);
            if (read(fd, buf.data(), buf.size()) != ssize_t(buf.size()))
                std::abort();
            close(fd);
        });
    } else if (peer == "memchr") {
        ms = timed([&] {
            size_t n = 0;
            const char *p = xml.data(), *e = p + xml.size();
            while ((p = static_cast<const char *>(std::memchr(p, '\x01', e - p))))
                ++n, ++p;
            keep(n);
        });
    } else if (peer == "expat-sax") {
        ms = timed([&] { keep(expatSax(xml)); });
    } else if (peer == "pugixml-dom") {
        ms = timed([&] {
            pugi::xml_document d;
            if (!d.load_buffer(xml.data(), xml.size()))
                std::abort();
            keep(d);
        });
    } else if (peer == "probe-expat-qstring") {
        ms = timed([&] { keep(probe::run(xml)); });
    } else if (peer == "probe-scan-qstring") {
        if (probe::scan(xml) != probe::run(xml))
            std::abort();
        ms = timed([&] { keep(probe::scan(xml)); });
    } else if (peer == "qxmlstream") {
        ms = timed([&] {
            QXmlStreamReader r(QByteArray::fromRawData(xml.data(), qsizetype(xml.size())));
            qsizetype n = 0;
            while (!r.atEnd())
                if (r.readNext() == QXmlStreamReader::Characters)
                    n += r.text().size();
            if (r.hasError())
                std::abort();
            keep(n);
        });
    } else if (peer == "xmlrpc-c") {
        xmlrpc_limit_set(XMLRPC_XML_SIZE_LIMIT_ID, size_t(1) << 30);
        ms = timed([&] {
            xmlrpc_env env;
            xmlrpc_env_init(&env);
            xmlrpc_value *v = nullptr;
            int code = 0;
            const char *fault = nullptr;
            xmlrpc_parse_response2(&env, xml.data(), xml.size(), &v, &code, &fault);
            if (env.fault_occurred || fault) {
                std::fprintf(stderr, "%s\n", env.fault_string);
                std::abort();
            }
            xmlrpc_DECREF(v);
            xmlrpc_env_clean(&env);
        });
    } else if (peer == "xmlrpc-c++") {
        xmlrpc_limit_set(XMLRPC_XML_SIZE_LIMIT_ID, size_t(1) << 30);
        ms = timed([&] {
            xmlrpc_c::rpcOutcome out;
            xmlrpc_c::xml::parseResponse(xml, &out);
            xmlrpc_c::value_array a(out.getResult());
            std::vector<xmlrpc_c::value> posts(a.vectorValueValue());
            std::vector<std::map<std::string, xmlrpc_c::value>> rows;
            for (auto &p : posts)
                rows.push_back(xmlrpc_c::value_struct(p));
            keep(rows);
        });
    } else
        return 2;
    report(peer, ms);
    return 0;
}

// ---- base64, AVX2 (the well-known multiply-shift form); 24 input bytes a step. lines: CR LF after each 64 characters
__attribute__((target("avx2"))) static size_t b64avx2(const unsigned char *in, size_t n, char *out, bool lines)
{
    const char *begin = out;
    size_t i = 0, col = 0;
    const __m256i shuf = _mm256_setr_epi8(
        5, 4, 6, 5, 8, 7, 9, 8, 11, 10, 12, 11, 14, 13, 15, 14, 1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10);
    const __m256i lut = _mm256_setr_epi8(65, 71, -4, -4, -4, -4, -4, -4, -4, -4, -4, -4, -19, -16, 0, 0, 65, 71, -4, -4,
        -4, -4, -4, -4, -4, -4, -4, -4, -19, -16, 0, 0);
    for (; i + 32 <= n; i += 24) {
        // the first load would begin 4 bytes before the data: take it in halves instead
        __m256i v = _mm256_set_m128i(_mm_loadu_si128(reinterpret_cast<const __m128i *>(in + i + 12)),
            _mm_loadu_si128(reinterpret_cast<const __m128i *>(in + i)));
        v = _mm256_shuffle_epi8(v, _mm256_permute2x128_si256(shuf, shuf, 0x11));
        const __m256i t1 =
            _mm256_mulhi_epu16(_mm256_and_si256(v, _mm256_set1_epi32(0x0fc0fc00)), _mm256_set1_epi32(0x04000040));
        const __m256i t3 =
            _mm256_mullo_epi16(_mm256_and_si256(v, _mm256_set1_epi32(0x003f03f0)), _mm256_set1_epi32(0x01000010));
        const __m256i idx = _mm256_or_si256(t1, t3);
        __m256i r = _mm256_subs_epu8(idx, _mm256_set1_epi8(51));
        r = _mm256_sub_epi8(r, _mm256_cmpgt_epi8(idx, _mm256_set1_epi8(25)));
        r = _mm256_add_epi8(_mm256_shuffle_epi8(lut, r), idx);
        _mm256_storeu_si256(reinterpret_cast<__m256i *>(out), r);
        out += 32;
        if (lines && (col += 32) == 64) {
            col = 0;
            *out++ = '\r';
            *out++ = '\n';
        }
    }
    static const char A[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (; i < n; i += 3) {
        unsigned x = in[i] << 16 | (i + 1 < n ? in[i + 1] << 8 : 0) | (i + 2 < n ? in[i + 2] : 0);
        *out++ = A[x >> 18];
        *out++ = A[x >> 12 & 63];
        *out++ = i + 1 < n ? A[x >> 6 & 63] : '=';
        *out++ = i + 2 < n ? A[x & 63] : '=';
        if (lines && (col += 4) == 64 && i + 3 < n) {
            col = 0;
            *out++ = '\r';
            *out++ = '\n';
        }
    }
    return out - begin;
}

// ---- base64, portable: a table of 4096 character pairs, two look-ups for three bytes
static size_t b64pairs(const unsigned char *in, size_t n, char *out)
{
    static const auto pairs = [] {
        static const char A[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
        std::vector<uint16_t> t(4096);
        for (int i = 0; i < 4096; ++i)
            t[i] = uint16_t(uint8_t(A[i >> 6]) | uint8_t(A[i & 63]) << 8);
        return t;
    }();
    const char *begin = out;
    size_t i = 0;
    for (; i + 48 <= n; i += 48) {
        for (int k = 0; k < 48; k += 3, out += 4) {
            const unsigned x = in[i + k] << 16 | in[i + k + 1] << 8 | in[i + k + 2];
            std::memcpy(out, &pairs[x >> 12], 2);
            std::memcpy(out + 2, &pairs[x & 4095], 2);
        }
        if (i + 48 < n) {
            *out++ = '\r';
            *out++ = '\n';
        }
    }
    return out - begin + b64avx2(in + i, n - i, out, false);
}

static xmlrpc_value *str(xmlrpc_env *e, const char *s)
{
    return xmlrpc_string_new(e, s);
}

static int encode(const std::string &peer, const std::string &path)
{
    const std::string data = slurp(path);
    const auto *bytes = reinterpret_cast<const unsigned char *>(data.data());
    double ms = 0;
    if (peer == "memcpy") {
        // the least any encoder moves: the input read, 4/3 of it and the line ends written
        std::string out(data.size() / 3 * 4 + data.size() / 24 + 64, 0);
        ms = timed([&] {
            for (size_t at = 0; at < out.size(); at += data.size())
                std::memcpy(out.data() + at, data.data(), std::min(data.size(), out.size() - at));
            keep(out);
        });
    } else if (peer == "base64-avx2" || peer == "base64-avx2-lines" || peer == "base64-avx2-lines-fresh") {
        const bool lines = peer != "base64-avx2", fresh = peer == "base64-avx2-lines-fresh";
        const size_t room = data.size() / 3 * 4 + data.size() / 20 + 128;
        QByteArray out(qsizetype(room), Qt::Uninitialized);
        const QByteArray plain = QByteArray::fromStdString(data).toBase64();
        QByteArray want = lines ? QByteArray() : plain;
        for (qsizetype at = 0; lines && at < plain.size(); at += 64)
            want += (at ? "\r\n" : "") + plain.mid(at, 64);
        if (QByteArray(out.data(), qsizetype(b64avx2(bytes, data.size(), out.data(), lines))) != want)
            std::abort();
        ms = timed([&] {
            if (fresh)
                out = QByteArray(qsizetype(room), Qt::Uninitialized);
            keep(b64avx2(bytes, data.size(), out.data(), lines));
        });
    } else if (peer == "base64-pairs-lines") {
        QByteArray out(qsizetype(data.size() / 3 * 4 + data.size() / 20 + 128), Qt::Uninitialized), same = out;
        const size_t n = b64pairs(bytes, data.size(), out.data());
        if (n != b64avx2(bytes, data.size(), same.data(), true) || std::memcmp(out.data(), same.data(), n))
            std::abort();
        ms = timed([&] { keep(b64pairs(bytes, data.size(), out.data())); });
    } else if (peer == "openssl-evp") {
        std::string out(data.size() / 3 * 4 + 8, 0);
        ms = timed(
            [&] { keep(EVP_EncodeBlock(reinterpret_cast<unsigned char *>(out.data()), bytes, int(data.size()))); });
    } else if (peer == "qbytearray") {
        const QByteArray in = QByteArray::fromStdString(data);
        ms = timed([&] { keep(in.toBase64()); });
    } else if (peer == "xmlrpc-c" || peer == "xmlrpc-c-text") {
        // the whole call: metaWeblog.newMediaObject, or wp.newPost with the file as its text
        const bool text = peer == "xmlrpc-c-text";
        ms = timed([&] {
            xmlrpc_env e;
            xmlrpc_env_init(&e);
            xmlrpc_value *params = xmlrpc_array_new(&e), *s = xmlrpc_struct_new(&e);
            auto add = [&](xmlrpc_value *v) {
                xmlrpc_array_append_item(&e, params, v);
                xmlrpc_DECREF(v);
            };
            auto set = [&](const char *k, xmlrpc_value *v) {
                xmlrpc_struct_set_value(&e, s, k, v);
                xmlrpc_DECREF(v);
            };
            add(xmlrpc_int_new(&e, 1));
            add(str(&e, "user"));
            add(str(&e, "secret"));
            set(text ? "post_title" : "name", str(&e, "photo.jpg"));
            set(text ? "post_type" : "type", str(&e, "image/jpeg"));
            if (text)
                set("post_content", xmlrpc_string_new_lp(&e, data.size(), data.data()));
            else
                set("bits", xmlrpc_base64_new(&e, data.size(), bytes));
            add(s);
            xmlrpc_mem_block *out = XMLRPC_MEMBLOCK_NEW(char, &e, 0);
            xmlrpc_serialize_call(&e, out, text ? "wp.newPost" : "metaWeblog.newMediaObject", params);
            if (e.fault_occurred) {
                std::fprintf(stderr, "%s\n", e.fault_string);
                std::abort();
            }
            keep(XMLRPC_MEMBLOCK_SIZE(char, out));
            XMLRPC_MEMBLOCK_FREE(char, out);
            xmlrpc_DECREF(params);
            xmlrpc_env_clean(&e);
        });
    } else if (peer == "qt-replace-text") {
        // three literal replacements over a QString, then UTF-8: the plain Qt way
        const QString in = QString::fromUtf8(data.data(), qsizetype(data.size()));
        ms = timed([&] {
            QString s = in;
            s.replace(u'&', QLatin1String("&#38;"))
                .replace(u'>', QLatin1String("&#62;"))
                .replace(u'<', QLatin1String("&#60;"));
            keep(s.toUtf8());
        });
    } else if (peer == "probe-onepass-text") {
        // one pass over the QString's UTF-8, output sized once
        const QString in = QString::fromUtf8(data.data(), qsizetype(data.size()));
        ms = timed([&] {
            const QByteArray u = in.toUtf8();
            QByteArray out;
            out.reserve(u.size() + u.size() / 4 + 256);
            const char *p = u.constData(), *e = p + u.size();
            for (const char *run = p;; ++p) {
                if (p != e && *p != '&' && *p != '<' && *p != '>')
                    continue;
                out.append(run, p - run);
                if (p == e)
                    break;
                out.append(*p == '&' ? "&#38;" : *p == '<' ? "&#60;" : "&#62;", 5);
                run = p + 1;
            }
            keep(out);
        });
    } else
        return 2;
    report(peer, ms);
    return 0;
}

int main(int argc, char **argv)
{
    if (argc < 4)
        return 2;
    const std::string what = argv[1];
    return what == "parse" ? parse(argv[2], argv[3]) : encode(argv[2], argv[3]);
}
