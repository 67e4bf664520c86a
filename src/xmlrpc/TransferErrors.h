#pragma once

#include "platform/ZLError.h"

#include <QUrl>

class QNetworkReply;

/// What can go wrong between sending a document and having its reply, with words for the user: which host, what it did,
/// and what helps.
namespace TransferErrors {
/// A failure of the network below HTTP.
ZLError ofReply(const QNetworkReply &reply);
/// A status of 400 or more.
ZLError ofStatus(const QNetworkReply &reply);
ZLError timedOut();
ZLError unsupported(const QUrl &url);
ZLError tooLarge(const QUrl &url, qint64 limit);
/// An answer that is empty, cut, or no document.
ZLError unreadable(const QUrl &url);
ZLError tooManyRedirects(const QUrl &url);
ZLError insecureRedirect(const QUrl &target);
ZLError redirectToOtherHost(const QUrl &from, const QUrl &target);

/// Whether the outcome of a failed call is not known: it went out, and no answer tells whether the host has carried it
/// out. False for what never went out and for what was refused.
bool mayHaveHappened(const ZLError &error);
/// Whether the host is known, and nothing answers there that could be trusted to be it.
bool isSilence(const ZLError &error);
/// Whether the host answered, and nobody could read it.
bool isUnreadable(const ZLError &error);
} // namespace TransferErrors
