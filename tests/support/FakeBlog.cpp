#include "support/FakeBlog.h"

#include "support/XMLRPCDocuments.h"

namespace {
const QString category = u"category"_qs;
const QString tag = u"post_tag"_qs;

XMLRPCStruct option(const XMLRPCValue &value)
{
    return {{u"desc"_qs, u"An option"_qs}, {u"readonly"_qs, false}, {u"value"_qs, value}};
}

QString member(const XMLRPCStruct &content, QStringView key, const QString &otherwise)
{
    const XMLRPCValue *value = content.find(key);
    return value ? value->string() : otherwise;
}

QString slugOf(const QString &title)
{
    return title.toLower().replace(u' ', u'-');
}

// The names of terms are kept escaped and given out so.
XMLRPCStruct termStruct(const FakeBlog::Term &term)
{
    return {{u"term_id"_qs, term.id}, {u"name"_qs, term.name.toHtmlEscaped()}, {u"taxonomy"_qs, term.taxonomy},
        {u"parent"_qs, u"0"_qs}};
}

XMLRPCStruct categoryStruct(const FakeBlog::Term &term)
{
    return {{u"categoryId"_qs, term.id}, {u"parentId"_qs, u"0"_qs}, {u"categoryName"_qs, term.name.toHtmlEscaped()}};
}
} // namespace

FakeBlog::FakeBlog(const QString &host)
    : now(QDate(2024, 3, 1), QTime(10, 0), Qt::UTC)
    , m_host(host)
{
    addTerm(category, u"Uncategorized"_qs);
}

FakeBlog::Post &FakeBlog::addPost(const QString &title, const QString &content, const QString &type)
{
    Post post;
    post.id = nextId();
    post.type = type;
    post.title = title;
    post.content = content;
    post.slug = slugOf(title);
    post.date = post.modified = tick();
    return *posts.insert(post.id, post);
}

QString FakeBlog::addTerm(const QString &taxonomy, const QString &name)
{
    terms.append({nextId(), taxonomy, name});
    return terms.last().id;
}

QStringList FakeBlog::methods() const
{
    QStringList methods;
    for (const Call &call : calls)
        methods.append(call.method);
    return methods;
}

int FakeBlog::count(const QString &method) const
{
    return int(methods().count(method));
}

const FakeBlog::Call &FakeBlog::last(const QString &method) const
{
    static const Call none;
    const auto call =
        std::find_if(calls.rbegin(), calls.rend(), [&](const Call &made) { return made.method == method; });
    return call == calls.rend() ? none : *call;
}

void FakeBlog::answerWithFault(const QString &method, int code, const QString &text)
{
    answerWithBytes(method, XMLRPCDocuments::fault(code, text));
}

void FakeBlog::answerWith(const QString &method, const XMLRPCValue &value)
{
    answerWithBytes(method, XMLRPCDocuments::response(value));
}

FakeAnswer FakeBlog::answer(const FakeRequest &request)
{
    const QUrl asked = request.request.url();
    if (!hasHttp && asked.scheme() == u"http") {
        if (request.body.contains(password.toUtf8()))
            protocolErrors.append(u"the password in clear"_qs);
        return {.status = 301, .location = u"https://"_qs + m_host + asked.path()};
    }
    if (!hasHttps && asked.scheme() == u"https")
        return {.error = QNetworkReply::ConnectionRefusedError};
    if (request.operation != QNetworkAccessManager::PostOperation || !asked.path().endsWith(u"/xmlrpc.php"))
        return {.status = 404};
    const XMLRPCDocuments::MethodCall parsed = XMLRPCDocuments::parseCall(request.body);
    if (!parsed.error.isNull()) {
        protocolErrors.append(parsed.error);
        return {.body = XMLRPCDocuments::fault(-32700, u"parse error. not well formed"_qs)};
    }
    calls.append({parsed.method, parsed.parameters});
    QList<Fault> &faults = m_faults[parsed.method];
    const Fault fault = faults.isEmpty() ? Fault() : faults.takeFirst();
    if (fault.instead)
        return *fault.instead;
    FakeAnswer answer;
    try {
        answer.body = XMLRPCDocuments::response(perform(parsed.method, parsed.parameters));
    } catch (const Refusal &refusal) {
        answer.body = XMLRPCDocuments::fault(refusal.code, refusal.text);
    }
    if (fault.cutAt >= 0)
        answer.body.truncate(fault.cutAt);
    answer.held = fault.late;
    if (isDated)
        answer.date = now;
    return answer;
}

const QHash<QString, FakeBlog::Method> &FakeBlog::table()
{
    // The first three parameters are blog, user and password.
    static const QHash<QString, Method> methods = {
        {u"wp.getOptions"_qs, [](FakeBlog &blog, const XMLRPCArray &) { return blog.options(); }},
        {u"wp.getPosts"_qs, [](FakeBlog &blog, const XMLRPCArray &given) { return blog.list(given[3].structure()); }},
        {u"wp.getPost"_qs, [](FakeBlog &blog, const XMLRPCArray &given) { return blog.wpPost(blog.post(given[3])); }},
        {u"wp.newPost"_qs,
            [](FakeBlog &blog, const XMLRPCArray &given) {
                Post post;
                post.type = u"post"_qs;
                post.status = u"draft"_qs;
                blog.take(post, given[3].structure());
                post.id = blog.nextId();
                blog.posts.insert(post.id, post);
                return post.id;
            }},
        {u"wp.editPost"_qs,
            [](FakeBlog &blog, const XMLRPCArray &given) {
                Post edited = blog.post(given[3]);
                const QDateTime known = given[4][u"if_not_modified_since"].date();
                if (known.isValid() && edited.modified > known)
                    throw Refusal{409, u"There is a revision of this post that is more recent."_qs};
                blog.take(edited, given[4].structure());
                blog.posts[edited.id] = edited;
                return true;
            }},
        {u"wp.deletePost"_qs,
            [](FakeBlog &blog, const XMLRPCArray &given) {
                Post &post = blog.post(given[3]);
                post.modified = blog.tick();
                if (std::exchange(post.status, u"trash"_qs) == u"trash")
                    blog.posts.remove(post.id);
                return true;
            }},
        {u"wp.getTerms"_qs,
            [](FakeBlog &blog, const XMLRPCArray &given) { return blog.list(given[3].string(), termStruct); }},
        {u"metaWeblog.getCategories"_qs,
            [](FakeBlog &blog, const XMLRPCArray &) { return blog.list(category, categoryStruct); }},
        {u"wp.newCategory"_qs,
            [](FakeBlog &blog, const XMLRPCArray &given) {
                return blog.addTerm(category, given[3][u"name"].string()).toLongLong();
            }},
        {u"metaWeblog.newMediaObject"_qs, [](FakeBlog &blog, const XMLRPCArray &given) { return blog.keep(given[3]); }},
        {u"metaWeblog.getPost"_qs,
            [](FakeBlog &blog, const XMLRPCArray &given) { return blog.metaWeblogPost(blog.post(given[0])); }},
        {u"metaWeblog.newPost"_qs,
            [](FakeBlog &blog, const XMLRPCArray &given) {
                Post &post = blog.addPost(given[3][u"title"].string(), given[3][u"description"].string());
                post.status = given[3][u"post_status"].string();
                return post.id;
            }},
    };
    return methods;
}

XMLRPCValue FakeBlog::perform(const QString &method, XMLRPCArray parameters)
{
    if (method == u"system.listMethods") {
        const QList<QString> names = table().keys();
        return XMLRPCArray(names.begin(), names.end());
    }
    if (!table().contains(method))
        throw Refusal{-32601, u"server error. requested method %1 does not exist."_qs.arg(method)};
    if (parameters.size() < 3)
        throw Refusal{400, u"Insufficient arguments passed to this XML-RPC method."_qs};
    if (parameters[1].string() != user || parameters[2].string() != password)
        throw Refusal{403, u"Incorrect username or password."_qs};
    parameters.resize(std::max(parameters.size(), size_t(5))); // what is left out is absent
    return table()[method](*this, parameters);
}

FakeBlog::Post &FakeBlog::post(const XMLRPCValue &id)
{
    const auto post = posts.find(id.string());
    if (post == posts.end())
        throw Refusal{404, u"Invalid post ID."_qs};
    return *post;
}

XMLRPCValue FakeBlog::options() const
{
    return XMLRPCStruct{
        {u"software_name"_qs, option(u"WordPress"_qs)},
        {u"blog_url"_qs, option(url())},
        {u"blog_title"_qs, option(title.toHtmlEscaped())},
        {u"post_thumbnail"_qs, option(true)},
        {u"thumbnail_size_w"_qs, option(u"150"_qs)},
        {u"thumbnail_size_h"_qs, option(u"150"_qs)},
        {u"default_comment_status"_qs, option(u"open"_qs)},
        {u"default_ping_status"_qs, option(u"closed"_qs)},
    };
}

bool FakeBlog::mayEdit(const QString &type) const
{
    return role == u"editor" || (type == u"post" && role != u"subscriber");
}

XMLRPCValue FakeBlog::list(const XMLRPCStruct &filter) const
{
    const QString type = member(filter, u"post_type", u"post"_qs);
    if (!mayEdit(type))
        throw Refusal{401, u"Sorry, you are not allowed to edit posts in this post type."_qs};
    XMLRPCArray found;
    for (const Post &post : posts) {
        if (post.type == type && post.status != u"trash")
            found.push_back(wpPost(post));
    }
    if (member(filter, u"orderby", {}) == u"ID" && member(filter, u"order", {}) == u"DESC")
        std::reverse(found.begin(), found.end());
    found.resize(std::min(found.size(), size_t(member(filter, u"number", u"10"_qs).toInt())));
    return found;
}

XMLRPCValue FakeBlog::list(const QString &taxonomy, XMLRPCStruct (*form)(const Term &)) const
{
    if (!mayEdit(u"post"_qs))
        throw Refusal{401, u"Sorry, you are not allowed to assign terms in this taxonomy."_qs};
    XMLRPCArray found;
    for (const Term &term : terms)
        if (term.taxonomy == taxonomy)
            found.push_back(form(term));
    return found;
}

XMLRPCValue FakeBlog::keep(const XMLRPCValue &data)
{
    Media item{nextId(), data[u"name"].string(), data[u"type"].string(), data[u"bits"].data(), {}};
    if (item.bytes.isEmpty())
        throw Refusal{500, u"Could not write file %1."_qs.arg(item.name)};
    item.url = url() + u"/wp-content/uploads/"_qs + item.id + u'-' + item.name;
    media.append(item);
    return XMLRPCStruct{{u"id"_qs, item.id}, {u"file"_qs, item.name}, {u"url"_qs, item.url}, {u"type"_qs, item.type}};
}

void FakeBlog::take(Post &post, const XMLRPCStruct &content)
{
    post.type = member(content, u"post_type", post.type);
    takeTerms(post, content);
    post.title = member(content, u"post_title", post.title);
    post.content = member(content, u"post_content", post.content);
    post.status = member(content, u"post_status", post.status);
    post.slug = slugOf(member(content, u"post_name", post.slug));
    if (post.slug.isEmpty() && post.status != u"draft" && post.status != u"pending")
        post.slug = slugOf(post.title);
    post.commentStatus = member(content, u"comment_status", post.commentStatus);
    post.pingStatus = member(content, u"ping_status", post.pingStatus);
    post.modified = tick();
    const XMLRPCValue *date = content.find(u"post_date_gmt");
    if (date && date->date().isValid())
        post.date = date->date();
    else if (!post.date.isValid())
        post.date = post.modified;
    if (post.status == u"publish" && post.date > now)
        post.status = u"future"_qs;
}

void FakeBlog::takeTerms(Post &post, const XMLRPCStruct &content)
{
    const XMLRPCValue *ids = content.find(u"terms");
    const XMLRPCValue *names = content.find(u"terms_names");
    const bool isPage = post.type == u"page";
    const auto isNamed = [](const XMLRPCValue *lists) { return lists && !lists->structure().isEmpty(); };
    if (isPage && (isNamed(ids) || isNamed(names)))
        throw Refusal{401, u"Sorry, one of the given taxonomies is not supported by the post type."_qs};
    for (const QString &taxonomy : {category, tag}) {
        const XMLRPCValue *idList = ids ? ids->structure().find(taxonomy) : nullptr;
        const XMLRPCValue *nameList = names ? names->structure().find(taxonomy) : nullptr;
        if (!idList && !nameList)
            continue; // what is not named stays
        QStringList taken;
        for (const XMLRPCValue &id : idList ? idList->array() : XMLRPCArray()) {
            const Term *known = term(taxonomy, &Term::id, id.string());
            if (!known)
                throw Refusal{403, u"Invalid term ID."_qs};
            taken.append(known->name);
        }
        for (const XMLRPCValue &name : nameList ? nameList->array() : XMLRPCArray()) {
            const auto isNamed = [&](const Term &known) {
                return known.taxonomy == category && known.name == name.string();
            };
            if (taxonomy == category && std::count_if(terms.cbegin(), terms.cend(), isNamed) > 1)
                throw Refusal{401, u"Ambiguous term name used in a hierarchical taxonomy."_qs};
            if (!term(taxonomy, &Term::name, name.string()))
                addTerm(taxonomy, name.string());
            taken.append(name.string());
        }
        (taxonomy == category ? post.categories : post.tags) = taken;
    }
}

const FakeBlog::Term *FakeBlog::term(const QString &taxonomy, QString Term::*field, const QString &value) const
{
    const auto found = std::find_if(terms.cbegin(), terms.cend(),
        [&](const Term &term) { return term.taxonomy == taxonomy && term.*field == value; });
    return found == terms.cend() ? nullptr : &*found;
}

XMLRPCStruct FakeBlog::wpPost(const Post &post) const
{
    XMLRPCArray postTerms;
    for (const Term &term : terms) {
        if ((term.taxonomy == category ? post.categories : post.tags).contains(term.name))
            postTerms.push_back(termStruct(term));
    }
    return {
        {u"post_id"_qs, post.id},
        {u"post_title"_qs, post.title},
        {u"post_date_gmt"_qs, post.date},
        {u"post_modified_gmt"_qs, post.modified},
        {u"post_status"_qs, post.status == u"future" ? u"publish"_qs : post.status}, // as WordPress gives it
        {u"post_type"_qs, post.type},
        {u"post_name"_qs, post.slug},
        {u"post_author"_qs, u"1"_qs},
        {u"post_content"_qs, post.content},
        {u"link"_qs, url() + u"/?p="_qs + post.id},
        {u"comment_status"_qs, post.commentStatus},
        {u"ping_status"_qs, post.pingStatus},
        {u"post_thumbnail"_qs, XMLRPCArray()},
        {u"terms"_qs, postTerms},
    };
}

XMLRPCStruct FakeBlog::metaWeblogPost(const Post &post) const
{
    const QStringList halves = post.content.split(u"<!--more-->"_qs);
    return {
        {u"postid"_qs, post.id.toLongLong()},
        {u"title"_qs, post.title},
        {u"description"_qs, halves.value(0)},
        {u"mt_text_more"_qs, halves.value(1)},
        {u"date_created_gmt"_qs, post.date},
        {u"date_modified_gmt"_qs, post.modified},
        {u"wp_author_id"_qs, u"1"_qs},
        {u"link"_qs, url() + u"/?p="_qs + post.id},
        {u"post_status"_qs, post.status},
        {u"wp_slug"_qs, post.slug},
    };
}
