#pragma once

#include "app/AppEnvironment.h"

class QNetworkReply;

/// Fetches the icons of blogs from a public look-up service into their folders. When there is none, the built-in icon
/// is stored instead, so that the look-up is not repeated.
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
    void didFinish(QNetworkReply *reply, const AccountPtr &account);
    void storeBuiltInIcon(const QString &path);

    AppEnvironment &m_environment;
    QList<AccountPtr> m_underWay;
};
