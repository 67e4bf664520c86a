#pragma once

#include "platform/ZLError.h"
#include "xmlrpc/XMLRPCConnectionManager.h"

#include <QFuture>
#include <QPromise>
#include <QUrl>

/// Looks whether there is a WordPress at an address, before a password is asked for: one call without any login.
class AddressLookup : public XMLRPCConnectionDelegate, public std::enable_shared_from_this<AddressLookup> {
public:
    static std::shared_ptr<AddressLookup> start(XMLRPCConnectionManager &connections, const QString &blogURL);
    ~AddressLookup() override;

    /// Fails with the domain "ZLNoWordpress" where something else answers, with "ZLCancelled", or as the call failed.
    /// Else the address to go on with: the one that was asked, or where it sent on to https.
    QFuture<Result<QString>> result() { return m_answer.future(); }
    void cancel();

    void didReceiveResponse(const RequestPtr &request, const ResponsePtr &response) override;
    void didFailWithError(const RequestPtr &request, const ZLError &error) override;
    void didRedirect(const QUrl &target) override;

private:
    explicit AddressLookup(const QString &blogURL);
    void finish(const Result<QString> &result);

    QString m_blogURL;
    QPromise<Result<QString>> m_answer;
    bool m_isAnswered = false;
};
