#pragma once

#include "platform/ZLError.h"

#include <QUrl>

class QNetworkReply;

/// What can go wrong between sending a document and having its reply, with a sentence for the user.
namespace TransferErrors {
/// A failure of the network below HTTP.
ZLError ofReply(const QNetworkReply &reply);
/// A status of 400 or more.
ZLError ofStatus(const QNetworkReply &reply);
ZLError timedOut();
ZLError unsupported(const QUrl &url);
ZLError tooLarge(qint64 limit);
ZLError tooManyRedirects(const QUrl &url);
ZLError insecureRedirect(const QUrl &target);
} // namespace TransferErrors
