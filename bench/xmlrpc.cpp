// bench_xmlrpc parse|encode|encode-text FILE
// Reads a reply into its value tree; writes the document of an upload; writes that of a post with FILE as its text.
#include "bench.h"
#include "xmlrpc/XMLRPCDefaultEncoder.h"
#include "xmlrpc/XMLRPCResponse.h"

#include <cstring>

namespace {
double parse(const QByteArray &reply)
{
    return bench::medianMilliseconds([&] {
        const ResponsePtr response = XMLRPCResponse::fromData(reply);
        if (!response || response->object().isAbsent())
            std::abort();
        bench::keep(response);
    });
}

double encode(const QString &method, const XMLRPCStruct &content)
{
    return bench::medianMilliseconds([&] {
        XMLRPCDefaultEncoder encoder;
        encoder.setMethod(method, {QStringLiteral(""), QStringLiteral("user"), QStringLiteral("secret"), content});
        bench::keep(encoder.encode());
    });
}

double encodeUpload(const QByteArray &bytes)
{
    return encode(QStringLiteral("metaWeblog.newMediaObject"),
        {{QStringLiteral("name"), QStringLiteral("photo.jpg")}, {QStringLiteral("type"), QStringLiteral("image/jpeg")},
            {QStringLiteral("bits"), bytes}});
}

double encodeText(const QByteArray &utf8)
{
    const QString text = QString::fromUtf8(utf8);
    return encode(QStringLiteral("wp.newPost"),
        {{QStringLiteral("post_title"), QStringLiteral("photo.jpg")},
            {QStringLiteral("post_type"), QStringLiteral("post")}, {QStringLiteral("post_content"), text}});
}
} // namespace

int main(int argc, char **argv)
{
    if (argc != 3)
        return 2;
    const QByteArray file = bench::contentsOf(argv[2]);
    if (std::strcmp(argv[1], "parse") == 0)
        bench::report("zalmo", parse(file));
    else if (std::strcmp(argv[1], "encode") == 0)
        bench::report("zalmo", encodeUpload(file));
    else if (std::strcmp(argv[1], "encode-text") == 0)
        bench::report("zalmo", encodeText(file));
    else
        return 2;
    return 0;
}
