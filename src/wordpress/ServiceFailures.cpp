#include "wordpress/ServiceFailures.h"

#include "xmlrpc/TransferErrors.h"

namespace {
enum Fault { NotAllowed = 401, Forbidden = 403, NotFound = 404, Conflict = 409, BadLogin = 425 };

QString faultDomain()
{
    return QStringLiteral("Response error");
}

QString cancelledDomain()
{
    return QStringLiteral("ZLCancelled");
}
} // namespace

ZLError ServiceFailures::ofFault(const XMLRPCResponse &fault)
{
    const int code = int(fault.faultCode());
    const QString text = fault.faultString();
    return {faultDomain(), code,
        text.isEmpty() ? QStringLiteral("The blog refused the call (fault %1) without saying why.").arg(code) : text};
}

ZLError ServiceFailures::cancelled()
{
    return {cancelledDomain(), 0, QStringLiteral("Cancelled.")};
}

bool ServiceFailures::isCancelled(const ZLError &error)
{
    return error.domain == cancelledDomain();
}

ZLError ServiceFailures::upload(Upload code, const QString &text)
{
    return {QStringLiteral("ZLUpload"), code, text};
}

ZLError ServiceFailures::gone()
{
    return upload(
        Gone, QStringLiteral("The blog does not have the post any more: it was deleted, or is in the trash there."));
}

bool ServiceFailures::isGone(const ZLError &error)
{
    return error.domain == gone().domain && error.code == Gone;
}

bool ServiceFailures::isNotFound(const ZLError &error)
{
    return error.domain == faultDomain() && error.code == NotFound;
}

ZLError ServiceFailures::unusable()
{
    return {QStringLiteral("ZLReply"), 1, QStringLiteral("The blog's answer could not be used. Nothing was changed.")};
}

ZLError ServiceFailures::postMayBeThere(ZLError error)
{
    if (TransferErrors::isUnreadable(error))
        error.description = QStringLiteral("The blog's answer could not be read; the post may be there");
    return error;
}

bool ServiceFailures::isForbidden(const ZLError &error)
{
    return error.domain == faultDomain() && error.code == NotAllowed;
}

bool ServiceFailures::isConflict(const ZLError &error)
{
    return error.domain == faultDomain() && error.code == Conflict;
}

bool isRefusedLogin(const ZLError &error, ZLWordpressServiceRequestType type)
{
    // A post whose terms go by id is sent again with their names before a 403 is told, so that none is left that could
    // be about a term. The list of tags has the same code for a blog that has no tags.
    return error.domain == faultDomain() && (error.code == Forbidden || error.code == BadLogin)
        && type != ZLWordpressServiceRequestTypeSyncTags;
}
