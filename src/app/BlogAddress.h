#pragma once

#include "store/Account.h"

#include <QUrl>
#include <optional>

/// A blog's address, as the user types it.
struct BlogAddress {
    QString url; ///< with a scheme; without a login, a query or a fragment
    QString username; ///< of a login that stood in it
    bool hasScheme = false; ///< typed; otherwise it is "https://", which was put in front

    /// None when the text names no host.
    static std::optional<BlogAddress> typed(const QString &text);
    /// The same blog by plain http.
    static QString overHttp(const QString &url);

    /// Whether both addresses lead to one blog. The scheme, its default port, "www.", the case of the host and a slash
    /// at the end make no difference.
    static bool isSameBlog(const QString &one, const QString &other);
    /// Whether one leads over https and the other does not.
    static bool isSafer(const QString &one, const QString &other);
    /// The host, with the port where it is not the usual one: for people.
    static QString host(const QString &url);
    /// What a new account is filed under: what the blog says of itself, not what the user typed. An address that is
    /// none, that is of another host or port, which would then get the password, that would lead from https down to
    /// http, or that is another account's does not count.
    static QString toldOrTyped(const QString &told, const QString &typed, const QList<AccountPtr> &accounts);
    /// The account of this address, or null.
    static AccountPtr accountAt(const QString &url, const QList<AccountPtr> &accounts);
};
