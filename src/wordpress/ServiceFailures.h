#pragma once

#include "platform/ZLError.h"
#include "wordpress/ZLWordpressServiceRequestType.h"
#include "xmlrpc/XMLRPCResponse.h"

/// The failures of a blog's calls, and what they mean.
namespace ServiceFailures {
/// A fault. Domain "Response error", the blog's own code and words.
ZLError ofFault(const XMLRPCResponse &fault);
/// Nobody waits for the answer any more. It is told to nobody, and the flow that meets it ends at once.
ZLError cancelled();
bool isCancelled(const ZLError &error);
/// What goes wrong with a post on its way beside the calls themselves.
enum Upload { NotReadBack = 2, NoAddress, NotOnTheWeb, NoKindOfPicture, NotTaken, Gone };
ZLError upload(Upload code, const QString &text);
/// The post was deleted on the blog, or lies in its trash.
ZLError gone();
bool isGone(const ZLError &error);
/// A post that the call names is not there. By its fault and not by the status of a page that is missing.
bool isNotFound(const ZLError &error);
/// An answer of another kind than the call gives.
ZLError unusable();
/// The call may have been carried out: in the words for a post.
ZLError postMayBeThere(ZLError error);
/// The user may not do this on the blog, as authors may not list pages.
bool isForbidden(const ZLError &error);
/// The post has changed on the blog since the date that was named.
bool isConflict(const ZLError &error);
} // namespace ServiceFailures

/// Whether the blog refused user name or password in a call of this type. An HTTP 403, as a firewall gives it, is no
/// such thing, and neither is a fault about a term.
bool isRefusedLogin(const ZLError &error, ZLWordpressServiceRequestType type);
