#pragma once

#include <QObject>
#include <QUrl>

/// Tells online from offline.
class Reachability : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    /// Whether the network is there now. True where the desktop cannot tell.
    virtual bool isReachable() const = 0;
    /// Whether this blog can be reached: a loopback address counts as online whatever the network says.
    bool isReachable(const QUrl &blog) const;
    virtual void startNotifier() = 0;

Q_SIGNALS:
    void becameReachable();
    void becameUnreachable();
};

/// On QNetworkInformation, where the desktop offers a backend.
Reachability *makeSystemReachability(QObject *parent);
