#include "support/FakeBlog.h"

#include "support/XMLRPCDocuments.h"

namespace {
const QString category = u"category"_qs;
const QString tag = u"post_tag"_qs;

XMLRPCStruct option(const XMLRPCValue &value)
{
    return {{u"desc"_qs, u"An option"_qs}, {u"readonly"_qs, false}, {u"value"_qs, value}};
}

/// The parameter of that number, absent where there are fewer.
XMLRPCValue parameter(const XMLRPCArray &parameters, size_t number)
{
    return number < parameters.size() ? parameters[number] : XMLRPCValue();
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
    FakeAnswer answer;
    if (!hasHttp && request.request.url().scheme() == u"http") {
        if (request.body.contains(password.toUtf8()))
            protocolErrors.append(u"the password in clear"_qs);
        answer.status = 301;
        answer.location = u"https://"_qs + m_host + request.request.url().path();
        return answer;
    }
    if (!hasHttps && request.request.url().scheme() == u"https") {
        answer.error = QNetworkReply::ConnectionRefusedError;
        return answer;
    }
    if (request.operation != QNetworkAccessManager::PostOperation
        || !request.request.url().path().endsWith(u"/xmlrpc.php")) {
        answer.status = 404;
        return answer;
    }
    const XMLRPCDocuments::MethodCall parsed = XMLRPCDocuments::parseCall(request.body);
    if (!parsed.error.isNull()) {
        protocolErrors.append(parsed.error);
        answer.body = XMLRPCDocuments::fault(-32700, u"parse error. not well formed"_qs);
        return answer;
    }
    calls.append({parsed.method, parsed.parameters});
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
    if (isDated)
        answer.date = now;
    return answer;
}

const QHash<QString, FakeBlog::Method> &FakeBlog::table()
{
    static const QHash<QString, Method> methods = {
        {u"wp.getOptions"_qs, &FakeBlog::getOptions},
        {u"wp.getPosts"_qs, &FakeBlog::getPosts},
        {u"wp.getPost"_qs, &FakeBlog::getPost},
        {u"wp.newPost"_qs, &FakeBlog::newPost},
        {u"wp.editPost"_qs, &FakeBlog::editPost},
        {u"wp.deletePost"_qs, &FakeBlog::deletePost},
        {u"wp.getTerms"_qs, &FakeBlog::getTerms},
        {u"wp.newCategory"_qs, &FakeBlog::newCategory},
        {u"metaWeblog.getCategories"_qs, &FakeBlog::getCategories},
        {u"metaWeblog.newMediaObject"_qs, &FakeBlog::newMediaObject},
        {u"metaWeblog.getPost"_qs, &FakeBlog::metaGetPost},
        {u"metaWeblog.newPost"_qs, &FakeBlog::metaNewPost},
    };
    return methods;
}

FakeBlog::Outcome FakeBlog::perform(const Call &call)
{
    if (call.method == u"system.listMethods")
        return XMLRPCValue(listMethods());
    const Method method = table().value(call.method);
    if (!method)
        return Refusal{-32601, u"server error. requested method %1 does not exist."_qs.arg(call.method)};
    if (const std::optional<Refusal> refusal = refusedLogin(call))
        return *refusal;
    return (this->*method)(call.parameters);
}

XMLRPCArray FakeBlog::listMethods()
{
    XMLRPCArray names;
    for (auto row = table().keyBegin(); row != table().keyEnd(); ++row)
        names.push_back(*row);
    return names;
}

std::optional<FakeBlog::Refusal> FakeBlog::refusedLogin(const Call &call) const
{
    if (call.parameters.size() < 3)
        return Refusal{400, u"Insufficient arguments passed to this XML-RPC method."_qs};
    if (call.parameters[1].string() != user || call.parameters[2].string() != password)
        return Refusal{403, u"Incorrect username or password."_qs};
    return std::nullopt;
}

FakeBlog::Outcome FakeBlog::getOptions(const XMLRPCArray &)
{
    return XMLRPCValue(XMLRPCStruct{
        {u"software_name"_qs, option(u"WordPress"_qs)},
        {u"blog_url"_qs, option(url())},
        {u"blog_title"_qs, option(title.toHtmlEscaped())},
        {u"post_thumbnail"_qs, option(true)},
        {u"thumbnail_size_w"_qs, option(u"150"_qs)},
        {u"thumbnail_size_h"_qs, option(u"150"_qs)},
        {u"default_comment_status"_qs, option(u"open"_qs)},
        {u"default_ping_status"_qs, option(u"closed"_qs)},
    });
}

bool FakeBlog::mayEdit(const QString &type) const
{
    return role == u"editor" || (type == u"post" && role != u"subscriber");
}

FakeBlog::Outcome FakeBlog::getPosts(const XMLRPCArray &parameters)
{
    const XMLRPCValue given = parameter(parameters, 3);
    const XMLRPCStruct &filter = given.structure();
    const QString type = member(filter, u"post_type", u"post"_qs);
    if (!mayEdit(type))
        return Refusal{401, u"Sorry, you are not allowed to edit posts in this post type."_qs};
    XMLRPCArray found;
    for (const Post &post : std::as_const(posts)) {
        if (post.type == type && post.status != u"trash")
            found.push_back(wpPost(post));
    }
    if (member(filter, u"orderby", {}) == u"ID" && member(filter, u"order", {}) == u"DESC")
        std::reverse(found.begin(), found.end());
    found.resize(std::min(found.size(), size_t(member(filter, u"number", u"10"_qs).toInt())));
    return XMLRPCValue(found);
}

FakeBlog::Outcome FakeBlog::getPost(const XMLRPCArray &parameters)
{
    const auto post = posts.constFind(parameter(parameters, 3).string());
    if (post == posts.constEnd())
        return Refusal{404, u"Invalid post ID."_qs};
    return XMLRPCValue(wpPost(*post));
}

FakeBlog::Outcome FakeBlog::newPost(const XMLRPCArray &parameters)
{
    Post post;
    post.type = u"post"_qs;
    post.status = u"draft"_qs;
    if (const auto refusal = take(post, parameter(parameters, 3).structure()))
        return *refusal;
    post.id = nextId();
    posts.insert(post.id, post);
    return XMLRPCValue(post.id);
}

FakeBlog::Outcome FakeBlog::editPost(const XMLRPCArray &parameters)
{
    const auto post = posts.find(parameter(parameters, 3).string());
    if (post == posts.end())
        return Refusal{404, u"Invalid post ID."_qs};
    Post edited = *post;
    const XMLRPCValue known = parameter(parameters, 4)[u"if_not_modified_since"];
    if (known.date().isValid() && post->modified > known.date())
        return Refusal{409, u"There is a revision of this post that is more recent."_qs};
    if (const auto refusal = take(edited, parameter(parameters, 4).structure()))
        return *refusal;
    *post = edited;
    return XMLRPCValue(true);
}

FakeBlog::Outcome FakeBlog::deletePost(const XMLRPCArray &parameters)
{
    const auto post = posts.find(parameter(parameters, 3).string());
    if (post == posts.end())
        return Refusal{404, u"Invalid post ID."_qs};
    if (post->status == u"trash") {
        posts.erase(post);
    } else {
        post->status = u"trash"_qs;
        post->modified = tick();
    }
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
    post.slug = slugOf(member(content, u"post_name", post.slug));
    if (post.slug.isEmpty() && post.status != u"draft" && post.status != u"pending")
        post.slug = slugOf(post.title);
    post.commentStatus = member(content, u"comment_status", post.commentStatus);
    post.pingStatus = member(content, u"ping_status", post.pingStatus);
    post.modified = tick();
    takeDate(post, content);
    if (post.status == u"publish" && post.date > now)
        post.status = u"future"_qs;
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
    const bool isPage = post.type == u"page";
    const auto isNamed = [](const XMLRPCValue *lists) { return lists && !lists->structure().isEmpty(); };
    if (isPage && (isNamed(ids) || isNamed(names)))
        return Refusal{401, u"Sorry, one of the given taxonomies is not supported by the post type."_qs};
    for (const QString &taxonomy : {category, tag}) {
        const XMLRPCValue *idList = ids ? ids->structure().find(taxonomy) : nullptr;
        const XMLRPCValue *nameList = names ? names->structure().find(taxonomy) : nullptr;
        if (!idList && !nameList)
            continue; // what is not named stays
        QStringList taken;
        for (const XMLRPCValue &id : idList ? idList->array() : XMLRPCArray()) {
            const Term *known = term(taxonomy, &Term::id, id.string());
            if (!known)
                return Refusal{403, u"Invalid term ID."_qs};
            taken.append(known->name);
        }
        for (const XMLRPCValue &name : nameList ? nameList->array() : XMLRPCArray()) {
            const auto isNamed = [&](const Term &known) {
                return known.taxonomy == category && known.name == name.string();
            };
            if (taxonomy == category && std::count_if(terms.cbegin(), terms.cend(), isNamed) > 1)
                return Refusal{401, u"Ambiguous term name used in a hierarchical taxonomy."_qs};
            if (!term(taxonomy, &Term::name, name.string()))
                addTerm(taxonomy, name.string());
            taken.append(name.string());
        }
        (taxonomy == category ? post.categories : post.tags) = taken;
    }
    return std::nullopt;
}

const FakeBlog::Term *FakeBlog::term(const QString &taxonomy, QString Term::*field, const QString &value) const
{
    const auto found = std::find_if(terms.cbegin(), terms.cend(),
        [&](const Term &term) { return term.taxonomy == taxonomy && term.*field == value; });
    return found == terms.cend() ? nullptr : &*found;
}

FakeBlog::Outcome FakeBlog::getTerms(const XMLRPCArray &parameters)
{
    if (!mayEdit(u"post"_qs))
        return Refusal{401, u"Sorry, you are not allowed to assign terms in this taxonomy."_qs};
    XMLRPCArray found;
    for (const Term &term : std::as_const(terms)) {
        if (term.taxonomy == parameter(parameters, 3).string())
            found.push_back(termStruct(term));
    }
    return XMLRPCValue(found);
}

FakeBlog::Outcome FakeBlog::getCategories(const XMLRPCArray &)
{
    if (!mayEdit(u"post"_qs))
        return Refusal{401, u"Sorry, you must be able to edit posts on this site in order to view categories."_qs};
    XMLRPCArray found;
    for (const Term &term : std::as_const(terms)) {
        if (term.taxonomy == category)
            found.push_back(XMLRPCStruct{{u"categoryId"_qs, term.id}, {u"parentId"_qs, u"0"_qs},
                {u"categoryName"_qs, term.name.toHtmlEscaped()}});
    }
    return XMLRPCValue(found);
}

FakeBlog::Outcome FakeBlog::newCategory(const XMLRPCArray &parameters)
{
    const QString name = parameter(parameters, 3)[u"name"].string();
    return XMLRPCValue(addTerm(category, name).toLongLong());
}

FakeBlog::Outcome FakeBlog::newMediaObject(const XMLRPCArray &parameters)
{
    const XMLRPCValue data = parameter(parameters, 3);
    Media item{nextId(), data[u"name"].string(), data[u"type"].string(), data[u"bits"].data(), {}};
    if (item.bytes.isEmpty())
        return Refusal{500, u"Could not write file %1."_qs.arg(item.name)};
    item.url = url() + u"/wp-content/uploads/"_qs + item.id + u'-' + item.name;
    media.append(item);
    return XMLRPCValue(
        XMLRPCStruct{{u"id"_qs, item.id}, {u"file"_qs, item.name}, {u"url"_qs, item.url}, {u"type"_qs, item.type}});
}

FakeBlog::Outcome FakeBlog::metaGetPost(const XMLRPCArray &parameters)
{
    const auto post = posts.constFind(parameters[0].string());
    if (post == posts.constEnd())
        return Refusal{404, u"Sorry, no such post."_qs};
    return XMLRPCValue(metaWeblogPost(*post));
}

FakeBlog::Outcome FakeBlog::metaNewPost(const XMLRPCArray &parameters)
{
    const XMLRPCValue data = parameter(parameters, 3);
    Post &post = addPost(data[u"title"].string(), data[u"description"].string());
    post.status = data[u"post_status"].string();
    return XMLRPCValue(post.id);
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
