// peer_xmlrpc_c parse|encode|encode-text FILE
// The same jobs as bench_xmlrpc: a reply into a tree of values; the call of an upload; that of a post with FILE as
// text.
#include "bench.h"

#include <cstring>
#include <xmlrpc-c/base.h>

namespace {

class Environment {
public:
    Environment() { xmlrpc_env_init(&m_env); }
    ~Environment()
    {
        if (m_env.fault_occurred) {
            std::fprintf(stderr, "%s\n", m_env.fault_string);
            std::abort();
        }
        xmlrpc_env_clean(&m_env);
    }
    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;
    operator xmlrpc_env *() { return &m_env; }

private:
    xmlrpc_env m_env;
};

double parse(const QByteArray &reply)
{
    xmlrpc_limit_set(XMLRPC_XML_SIZE_LIMIT_ID, size_t(1) << 30);
    return bench::medianMilliseconds([&] {
        Environment env;
        xmlrpc_value *value = nullptr;
        int code = 0;
        const char *fault = nullptr;
        xmlrpc_parse_response2(env, reply.data(), size_t(reply.size()), &value, &code, &fault);
        if (value == nullptr)
            std::abort();
        xmlrpc_DECREF(value);
    });
}

void append(xmlrpc_env *env, xmlrpc_value *array, xmlrpc_value *item)
{
    xmlrpc_array_append_item(env, array, item);
    xmlrpc_DECREF(item);
}

void set(xmlrpc_env *env, xmlrpc_value *members, const char *key, xmlrpc_value *value)
{
    xmlrpc_struct_set_value(env, members, key, value);
    xmlrpc_DECREF(value);
}

void encodeCall(const QByteArray &data, bool isText)
{
    Environment env;
    xmlrpc_value *content = xmlrpc_struct_new(env);
    set(env, content, isText ? "post_title" : "name", xmlrpc_string_new(env, "photo.jpg"));
    set(env, content, isText ? "post_type" : "type", xmlrpc_string_new(env, isText ? "post" : "image/jpeg"));
    const auto size = size_t(data.size());
    if (isText)
        set(env, content, "post_content", xmlrpc_string_new_lp(env, size, data.data()));
    else
        set(env, content, "bits", xmlrpc_base64_new(env, size, reinterpret_cast<const unsigned char *>(data.data())));
    xmlrpc_value *parameters = xmlrpc_array_new(env);
    append(env, parameters, xmlrpc_int_new(env, 1));
    append(env, parameters, xmlrpc_string_new(env, "user"));
    append(env, parameters, xmlrpc_string_new(env, "secret"));
    append(env, parameters, content);
    xmlrpc_mem_block *document = XMLRPC_MEMBLOCK_NEW(char, env, 0);
    xmlrpc_serialize_call(env, document, isText ? "wp.newPost" : "metaWeblog.newMediaObject", parameters);
    bench::keep(XMLRPC_MEMBLOCK_SIZE(char, document));
    XMLRPC_MEMBLOCK_FREE(char, document);
    xmlrpc_DECREF(parameters);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3)
        return 2;
    const QByteArray file = bench::contentsOf(argv[2]);
    if (std::strcmp(argv[1], "parse") == 0)
        bench::report("xmlrpc-c", parse(file));
    else
        bench::report(
            "xmlrpc-c", bench::medianMilliseconds([&] { encodeCall(file, std::strcmp(argv[1], "encode-text") == 0); }));
    return 0;
}
