#pragma once

#include "model/ZLWordpressPost.h"
#include "store/Account.h"
#include "xmlrpc/XMLRPCConnectionManager.h"

#include <QPointer>

class ZLWordpressService;
class ZLWordpressXMLRPCRequest;

/// What a call carries along to its reply.
struct CallInfo {
    PostPtr processingPost;
    QString processingCategory;
    QString processingMedia; ///< address of the local picture, as the body has it
    int processingType = -1; ///< publish kind
    bool lacksPicture = false; ///< the local picture could not be read, so its bytes are missing from the call
    bool hasTermIds = false; ///< some of the post's terms went by id
    bool termsByName = false; ///< all of them went by name, after the blog had refused an id
    // The blog that the call was made for: a service may be given another one before the reply is there.
    AccountPtr account;
    QString blogName;
};

/// Hears the replies of a service's calls.
class ReplyReceiver {
public:
    virtual ~ReplyReceiver() = default;
    virtual void didReceiveResponse(const ZLWordpressXMLRPCRequest &call, const ResponsePtr &response) = 0;
    virtual void didFailWithError(const ZLWordpressXMLRPCRequest &call, const ZLError &error) = 0;
    virtual void didSendBodyData(const ZLWordpressXMLRPCRequest &call, float progress) = 0;
};

/// One call of a service: its type and context, kept alive by its connection. It looks up the service with each
/// answer, so an answer that comes after the service's end is dropped.
class ZLWordpressXMLRPCRequest : public XMLRPCConnectionDelegate,
                                 public std::enable_shared_from_this<ZLWordpressXMLRPCRequest> {
public:
    ZLWordpressXMLRPCRequest(const RequestPtr &request, int type, const CallInfo &info, ZLWordpressService &service,
        ReplyReceiver &receiver);

    const RequestPtr currentRequest;
    const int currentRequestType;
    const CallInfo additionalInfo;

    void spawnConnectionXMLRPCRequest(XMLRPCConnectionManager &connections);
    void cancel();
    bool isAnswered() const { return m_answered; }
    /// Whether the service still stands for the blog that the call went to; it may have been pointed at another one.
    bool isForCurrentBlog() const;

    void didReceiveResponse(const RequestPtr &request, const ResponsePtr &response) override;
    void didFailWithError(const RequestPtr &request, const ZLError &error) override;
    void didSendBodyData(const RequestPtr &request, float progress) override;

private:
    void closeConnection();

    QString m_connectionIdentifier;
    QPointer<XMLRPCConnectionManager> m_connections;
    QPointer<ZLWordpressService> m_service;
    ReplyReceiver &m_receiver; ///< lives as long as the service
    bool m_answered = false;
};
using ServiceCallPtr = std::shared_ptr<ZLWordpressXMLRPCRequest>;
