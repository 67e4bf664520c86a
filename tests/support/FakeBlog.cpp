#include "support/FakeBlog.h"

#include "support/FakeBlogStructs.h"
#include "support/XMLRPCDocuments.h"

namespace {
const QString &category()
{
    static const QString taxonomy = QStringLiteral("category");
    return taxonomy;
}

const QString &tag()
{
    static const QString taxonomy = QStringLiteral("post_tag");
    return taxonomy;
}

XMLRPCStruct option(const XMLRPCValue &value)
{
    return {{QStringLiteral("desc"), QStringLiteral("An option")}, {QStringLiteral("readonly"), false},
        {QStringLiteral("value"), value}};
}

QString member(const XMLRPCStruct &content, QStringView key, const QString &otherwise)
{
    const XMLRPCValue *value = content.find(key);
    return value ? value->string() : otherwise;
}
} // namespace

FakeBlog::FakeBlog(const QString &host)
    : now(QDate(2024, 3, 1), QTime(10, 0), Qt::UTC)
    , m_host(host)
{
    addTerm(category(), QStringLiteral("Uncategorized"));
}

FakeBlog::Post &FakeBlog::addPost(const QString &title, const QString &content, const QString &type)
{
    Post post;
    post.id = nextId();
    post.type = type;
    post.title = title;
    post.content = content;
    post.slug = title.toLower().replace(QLatin1Char(' '), QLatin1Char('-'));
    post.date = post.modified = tick();
    return *posts.insert(post.id, post);
}

QString FakeBlog::addTerm(const QString &taxonomy, const QString &name)
{
    terms.append({nextId(), taxonomy, name});
    return terms.last().id;
}

QDateTime FakeBlog::tick()
{
    now = now.addSecs(1);
    return now;
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

void FakeBlog::disturb(const QString &method, const Fault &fault)
{
    m_faults[method].append(fault);
}

void FakeBlog::answerWithFault(const QString &method, int code, const QString &text)
{
    answerWithBytes(method, XMLRPCDocuments::fault(code, text));
}

void FakeBlog::answerWith(const QString &method, const XMLRPCValue &value)
{
    answerWithBytes(method, XMLRPCDocuments::response(value));
}

void FakeBlog::answerWithStatus(const QString &method, int status)
{
    FakeAnswer answer;
    answer.status = status;
    answer.body = "<html>no</html>";
    disturb(method, {answer, -1, false});
}

void FakeBlog::answerWithBytes(const QString &method, const QByteArray &bytes)
{
    FakeAnswer answer;
    answer.body = bytes;
    disturb(method, {answer, -1, false});
}

void FakeBlog::answerEmpty(const QString &method)
{
    disturb(method, {std::nullopt, 0, false});
}

void FakeBlog::answerCut(const QString &method, int length)
{
    disturb(method, {std::nullopt, length, false});
}

void FakeBlog::answerLate(const QString &method)
{
    disturb(method, {std::nullopt, -1, true});
}

void FakeBlog::breakConnection(const QString &method, QNetworkReply::NetworkError error)
{
    FakeAnswer answer;
    answer.error = error;
    disturb(method, {answer, -1, false});
}

FakeAnswer FakeBlog::answer(const FakeRequest &request)
{
    FakeAnswer answer;
    if (request.operation != QNetworkAccessManager::PostOperation
        || !request.request.url().path().endsWith(QLatin1String("/xmlrpc.php"))) {
        answer.status = 404;
        return answer;
    }
    const XMLRPCDocuments::MethodCall parsed = XMLRPCDocuments::parseCall(request.body);
    if (!parsed.error.isNull()) {
        protocolErrors.append(parsed.error);
        answer.body = XMLRPCDocuments::fault(-32700, QStringLiteral("parse error. not well formed"));
        return answer;
    }
    calls.append({parsed.method, parsed.parameters, request.body});
    QList<Fault> &faults = m_faults[parsed.method];
    const Fault fault = faults.isEmpty() ? Fault() : faults.takeFirst();
    if (fault.instead)
        return *fault.instead;
    const Outcome outcome = perform(calls.last());
    const auto *refusal = std::get_if<Refusal>(&outcome);
    answer.body = refusal ? XMLRPCDocuments::fault(refusal->code, refusal->text)
                          : XMLRPCDocuments::response(std::get<XMLRPCValue>(outcome));
    if (fault.cutAt >= 0)
        answer.body.truncate(fault.cutAt);
    answer.held = fault.late;
    return answer;
}

const QHash<QString, FakeBlog::Method> &FakeBlog::table()
{
    static const QHash<QString, Method> methods = {
        {QStringLiteral("wp.getOptions"), &FakeBlog::getOptions},
        {QStringLiteral("wp.getProfile"), &FakeBlog::getProfile},
        {QStringLiteral("wp.getUsersBlogs"), &FakeBlog::getUsersBlogs},
        {QStringLiteral("wp.getPosts"), &FakeBlog::getPosts},
        {QStringLiteral("wp.getPost"), &FakeBlog::getPost},
        {QStringLiteral("wp.newPost"), &FakeBlog::newPost},
        {QStringLiteral("wp.editPost"), &FakeBlog::editPost},
        {QStringLiteral("wp.deletePost"), &FakeBlog::deletePost},
        {QStringLiteral("wp.getTerms"), &FakeBlog::getTerms},
        {QStringLiteral("wp.newCategory"), &FakeBlog::newCategory},
        {QStringLiteral("metaWeblog.getCategories"), &FakeBlog::getCategories},
        {QStringLiteral("metaWeblog.newMediaObject"), &FakeBlog::newMediaObject},
        {QStringLiteral("metaWeblog.getPost"), &FakeBlog::metaGetPost},
        {QStringLiteral("metaWeblog.getRecentPosts"), &FakeBlog::metaGetRecentPosts},
        {QStringLiteral("metaWeblog.newPost"), &FakeBlog::metaNewPost},
    };
    return methods;
}

FakeBlog::Outcome FakeBlog::perform(const Call &call)
{
    const Method method = table().value(call.method);
    if (!method)
        return Refusal{-32601, QStringLiteral("server error. requested method %1 does not exist.").arg(call.method)};
    if (const std::optional<Refusal> refusal = refusedLogin(call))
        return *refusal;
    return (this->*method)(call.parameters);
}

std::optional<FakeBlog::Refusal> FakeBlog::refusedLogin(const Call &call) const
{
    const size_t first = call.method == QLatin1String("wp.getUsersBlogs") ? 0 : 1;
    if (call.parameters.size() < first + 2)
        return Refusal{400, QStringLiteral("Insufficient arguments passed to this XML-RPC method.")};
    if (call.parameters[first].string() != user || call.parameters[first + 1].string() != password)
        return Refusal{403, QStringLiteral("Incorrect username or password.")};
    return std::nullopt;
}

FakeBlog::Outcome FakeBlog::getOptions(const XMLRPCArray &)
{
    return XMLRPCValue(XMLRPCStruct{
        {QStringLiteral("software_name"), option(QStringLiteral("WordPress"))},
        {QStringLiteral("blog_url"), option(url())},
        {QStringLiteral("blog_title"),
            option(FakeBlogStructs::escaped(title).replace(QLatin1Char('\''), QLatin1String("&#039;")))},
        {QStringLiteral("post_thumbnail"), option(true)},
        {QStringLiteral("thumbnail_size_w"), option(QStringLiteral("150"))},
        {QStringLiteral("thumbnail_size_h"), option(QStringLiteral("150"))},
        {QStringLiteral("default_comment_status"), option(QStringLiteral("open"))},
        {QStringLiteral("default_ping_status"), option(QStringLiteral("closed"))},
    });
}

FakeBlog::Outcome FakeBlog::getProfile(const XMLRPCArray &)
{
    return XMLRPCValue(
        XMLRPCStruct{{QStringLiteral("user_id"), QStringLiteral("1")}, {QStringLiteral("username"), user}});
}

FakeBlog::Outcome FakeBlog::getUsersBlogs(const XMLRPCArray &)
{
    return XMLRPCValue(XMLRPCArray{XMLRPCStruct{{QStringLiteral("isAdmin"), true}, {QStringLiteral("url"), url()},
        {QStringLiteral("blogid"), QStringLiteral("1")}, {QStringLiteral("blogName"), title}}});
}

QList<FakeBlog::Post> FakeBlog::newestFirst(const QString &type) const
{
    QList<Post> found;
    for (const Post &post : posts) {
        if (post.type == type)
            found.append(post);
    }
    std::stable_sort(found.begin(), found.end(), [](const Post &a, const Post &b) { return a.date > b.date; });
    return found;
}

FakeBlog::Outcome FakeBlog::getPosts(const XMLRPCArray &parameters)
{
    const XMLRPCStruct filter = parameters.size() > 3 ? parameters[3].structure() : XMLRPCStruct();
    const XMLRPCValue *number = filter.find(u"number");
    const qint64 limit = number ? number->integer() : 10;
    XMLRPCArray found;
    for (const Post &post : newestFirst(member(filter, u"post_type", QStringLiteral("post")))) {
        if (qint64(found.size()) < limit)
            found.push_back(FakeBlogStructs(*this).post(post));
    }
    return XMLRPCValue(found);
}

FakeBlog::Outcome FakeBlog::getPost(const XMLRPCArray &parameters)
{
    const auto post = posts.constFind(parameters.size() > 3 ? parameters[3].string() : QString());
    if (post == posts.constEnd())
        return Refusal{404, QStringLiteral("Invalid post ID.")};
    return XMLRPCValue(FakeBlogStructs(*this).post(*post));
}

FakeBlog::Outcome FakeBlog::newPost(const XMLRPCArray &parameters)
{
    Post post;
    post.type = QStringLiteral("post");
    post.status = QStringLiteral("draft");
    if (const auto refusal = take(post, parameters.size() > 3 ? parameters[3].structure() : XMLRPCStruct()))
        return *refusal;
    post.id = nextId();
    posts.insert(post.id, post);
    return XMLRPCValue(post.id);
}

FakeBlog::Outcome FakeBlog::editPost(const XMLRPCArray &parameters)
{
    const auto post = posts.find(parameters.size() > 3 ? parameters[3].string() : QString());
    if (post == posts.end())
        return Refusal{404, QStringLiteral("Invalid post ID.")};
    Post edited = *post;
    if (const auto refusal = take(edited, parameters.size() > 4 ? parameters[4].structure() : XMLRPCStruct()))
        return *refusal;
    *post = edited;
    return XMLRPCValue(true);
}

FakeBlog::Outcome FakeBlog::deletePost(const XMLRPCArray &parameters)
{
    if (posts.remove(parameters.size() > 3 ? parameters[3].string() : QString()) == 0)
        return Refusal{404, QStringLiteral("Invalid post ID.")};
    return XMLRPCValue(true);
}

std::optional<FakeBlog::Refusal> FakeBlog::take(Post &post, const XMLRPCStruct &content)
{
    post.type = member(content, u"post_type", post.type);
    if (const auto refusal = takeTerms(post, content))
        return refusal;
    post.title = member(content, u"post_title", post.title);
    post.content = member(content, u"post_content", post.content);
    post.status = member(content, u"post_status", post.status);
    post.slug = member(content, u"post_name", post.slug).toLower().replace(QLatin1Char(' '), QLatin1Char('-'));
    post.commentStatus = member(content, u"comment_status", post.commentStatus);
    post.pingStatus = member(content, u"ping_status", post.pingStatus);
    const QString thumbnail = member(content, u"post_thumbnail", post.thumbnail);
    post.thumbnail = thumbnail == QLatin1String("0") ? QString() : thumbnail;
    post.modified = tick();
    takeDate(post, content);
    if (post.status == QLatin1String("publish") && post.date > now)
        post.status = QStringLiteral("future");
    return std::nullopt;
}

void FakeBlog::takeDate(Post &post, const XMLRPCStruct &content)
{
    const XMLRPCValue *date = content.find(u"post_date_gmt");
    if (date && date->date().isValid())
        post.date = date->date();
    else if (!post.date.isValid())
        post.date = post.modified;
}

std::optional<FakeBlog::Refusal> FakeBlog::takeTerms(Post &post, const XMLRPCStruct &content)
{
    const XMLRPCValue *ids = content.find(u"terms");
    const XMLRPCValue *names = content.find(u"terms_names");
    const bool isPage = post.type == QLatin1String("page");
    const auto isNamed = [](const XMLRPCValue *lists) { return lists && !lists->structure().isEmpty(); };
    if (isPage && (isNamed(ids) || isNamed(names)))
        return Refusal{401, QStringLiteral("Sorry, one of the given taxonomies is not supported by the post type.")};
    for (const QString &taxonomy : {category(), tag()}) {
        const XMLRPCValue *idList = ids ? ids->structure().find(taxonomy) : nullptr;
        const XMLRPCValue *nameList = names ? names->structure().find(taxonomy) : nullptr;
        if (!idList && !nameList)
            continue; // what is not named stays
        QStringList taken;
        for (const XMLRPCValue &id : idList ? idList->array() : XMLRPCArray()) {
            const Term *known = termById(taxonomy, id.string());
            if (!known)
                return Refusal{403, QStringLiteral("Invalid term ID.")};
            taken.append(known->name);
        }
        for (const XMLRPCValue &name : nameList ? nameList->array() : XMLRPCArray()) {
            if (!term(taxonomy, name.string()))
                addTerm(taxonomy, name.string());
            taken.append(name.string());
        }
        (taxonomy == category() ? post.categories : post.tags) = taken;
    }
    return std::nullopt;
}

const FakeBlog::Term *FakeBlog::term(const QString &taxonomy, const QString &name) const
{
    for (const Term &term : terms) {
        if (term.taxonomy == taxonomy && term.name == name)
            return &term;
    }
    return nullptr;
}

const FakeBlog::Term *FakeBlog::termById(const QString &taxonomy, const QString &id) const
{
    for (const Term &term : terms) {
        if (term.taxonomy == taxonomy && term.id == id)
            return &term;
    }
    return nullptr;
}

FakeBlog::Outcome FakeBlog::getTerms(const XMLRPCArray &parameters)
{
    XMLRPCArray found;
    for (const Term &term : std::as_const(terms)) {
        if (parameters.size() > 3 && term.taxonomy == parameters[3].string())
            found.push_back(FakeBlogStructs::term(term));
    }
    return XMLRPCValue(found);
}

FakeBlog::Outcome FakeBlog::getCategories(const XMLRPCArray &)
{
    XMLRPCArray found;
    for (const Term &term : std::as_const(terms)) {
        if (term.taxonomy == category())
            found.push_back(
                XMLRPCStruct{{QStringLiteral("categoryId"), term.id}, {QStringLiteral("parentId"), QStringLiteral("0")},
                    {QStringLiteral("categoryName"), FakeBlogStructs::escaped(term.name)}});
    }
    return XMLRPCValue(found);
}

FakeBlog::Outcome FakeBlog::newCategory(const XMLRPCArray &parameters)
{
    const QString name = parameters.size() > 3 ? parameters[3][u"name"].string() : QString();
    return XMLRPCValue(addTerm(category(), name).toLongLong());
}

FakeBlog::Outcome FakeBlog::newMediaObject(const XMLRPCArray &parameters)
{
    const XMLRPCValue data = parameters.size() > 3 ? parameters[3] : XMLRPCValue();
    Media item{nextId(), data[u"name"].string(), data[u"type"].string(), data[u"bits"].data(), {}};
    if (item.bytes.isEmpty())
        return Refusal{500, QStringLiteral("Could not write file %1.").arg(item.name)};
    item.url = url() + QLatin1String("/wp-content/uploads/") + item.id + QLatin1Char('-') + item.name;
    media.append(item);
    return XMLRPCValue(XMLRPCStruct{{QStringLiteral("id"), item.id}, {QStringLiteral("file"), item.name},
        {QStringLiteral("url"), item.url}, {QStringLiteral("type"), item.type}});
}

FakeBlog::Outcome FakeBlog::metaGetPost(const XMLRPCArray &parameters)
{
    const auto post = posts.constFind(parameters[0].string());
    if (post == posts.constEnd())
        return Refusal{404, QStringLiteral("Sorry, no such post.")};
    return XMLRPCValue(FakeBlogStructs(*this).metaWeblogPost(*post));
}

FakeBlog::Outcome FakeBlog::metaGetRecentPosts(const XMLRPCArray &)
{
    XMLRPCArray found;
    for (const Post &post : newestFirst(QStringLiteral("post")))
        found.push_back(FakeBlogStructs(*this).metaWeblogPost(post));
    return XMLRPCValue(found);
}

FakeBlog::Outcome FakeBlog::metaNewPost(const XMLRPCArray &parameters)
{
    const XMLRPCValue data = parameters.size() > 3 ? parameters[3] : XMLRPCValue();
    Post &post = addPost(data[u"title"].string(), data[u"description"].string());
    post.status = data[u"post_status"].string();
    return XMLRPCValue(post.id);
}
