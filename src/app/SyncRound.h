#pragma once

#include "wordpress/ZLWordpressService.h"

/// One round of synchronising: the blogs that it waits for. Each service reports the end of its share once, whatever
/// failed; with the last report the round ends.
class SyncRound : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Starts the service's share; one that is waited for already is not asked again.
    void add(const ServicePtr &service);
    void didSync(const ZLWordpressService *service);
    /// Ends the shares that are still waited for.
    void stop();
    bool isOver() const { return m_waitingFor.isEmpty(); }

Q_SIGNALS:
    void ended();

private:
    QList<ServicePtr> m_waitingFor;
};
