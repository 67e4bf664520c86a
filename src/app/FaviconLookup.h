#pragma once

#include "app/AppEnvironment.h"

class QNetworkReply;

/// Fetches the icons of blogs, from the blogs themselves, into their folders: WordPress sends who asks for
/// "/?favicon=1" on to its site icon; others have "/favicon.ico". Nothing is asked of another host. When there is no
/// icon, the built-in one is stored instead, so that the look-up is not repeated.
class FaviconLookup : public QObject {
    Q_OBJECT
public:
    explicit FaviconLookup(AppEnvironment &environment);

    void getFavIconForAccount(const AccountPtr &account);
    /// The path of the blog's icon when there is a picture in it; null otherwise.
    QString usableFaviconPath(const QString &blogName) const;

Q_SIGNALS:
    void didStoreFavicon(const AccountPtr &account);

private:
    QCoro::Task<void> lookUp(AccountPtr account);
    /// The picture at this address, or nothing.
    QCoro::Task<QByteArray> fetch(QUrl url);
    void store(const AccountPtr &account, const QByteArray &icon);

    AppEnvironment &m_environment;
    QList<AccountPtr> m_underWay;
};
