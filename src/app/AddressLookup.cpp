#include "app/AddressLookup.h"

#include "wordpress/ZLWordpressService.h"

namespace {

constexpr double patience = 30; // seconds
constexpr int cannotParseResponse = -1017;

Result<QString> noWordpress()
{
    return failure(u"ZLNoWordpress"_qs, 0, u"There is no WordPress at this address."_qs);
}

bool isWordpress(const XMLRPCValue &methods)
{
    const XMLRPCArray names = methods.array();
    return std::any_of(
        names.begin(), names.end(), [](const XMLRPCValue &name) { return name.string() == u"wp.getOptions"; });
}

} // namespace

AddressLookup::AddressLookup(const QString &blogURL)
    : m_blogURL(blogURL)
{
    m_answer.start();
}

std::shared_ptr<AddressLookup> AddressLookup::start(XMLRPCConnectionManager &connections, const QString &blogURL)
{
    const std::shared_ptr<AddressLookup> lookup(new AddressLookup(blogURL));
    const auto request = std::make_shared<XMLRPCRequest>(ZLWordpressService::apiURLOfBlog(blogURL));
    request->setMethod(u"system.listMethods"_qs, {});
    request->setTimeoutInterval(patience);
    connections.spawnConnectionWithXMLRPCRequest(request, lookup);
    return lookup;
}

AddressLookup::~AddressLookup()
{
    cancel();
}

void AddressLookup::cancel()
{
    finish(failure(u"ZLCancelled"_qs, 0, {}));
}

void AddressLookup::didReceiveResponse(const RequestPtr &, const ResponsePtr &response)
{
    // A refusal is an answer, too: some blogs do not list what they can do.
    const bool answers = response && (response->isFault() || isWordpress(response->object()));
    finish(answers ? m_blogURL : noWordpress());
}

void AddressLookup::didFailWithError(const RequestPtr &, const ZLError &error)
{
    constexpr int statuses[]{404, 410, 501};
    const bool isMissing = error.domain == u"HTTP" && std::count(std::begin(statuses), std::end(statuses), error.code);
    const bool isPage = error.domain == u"NSURLErrorDomain" && error.code == cannotParseResponse;
    finish(isMissing || isPage ? noWordpress() : failure(error));
}

/// Otherwise every later call would carry the password in clear first.
void AddressLookup::didRedirect(const QUrl &target)
{
    const QString suffix = ZLWordpressService::apiURLOfBlog({}).toString();
    const QString url = target.toString(QUrl::RemoveUserInfo);
    if (target.scheme() == u"https" && url.endsWith(suffix))
        m_blogURL = url.chopped(suffix.size());
}

void AddressLookup::finish(const Result<QString> &result)
{
    if (std::exchange(m_isAnswered, true))
        return;
    m_answer.addResult(result);
    m_answer.finish();
}
