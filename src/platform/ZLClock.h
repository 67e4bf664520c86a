#pragma once

#include <QDateTime>

/// The present moment, handed in so that tests own it.
class ZLClock {
public:
    virtual ~ZLClock() = default;
    virtual QDateTime now() const { return QDateTime::currentDateTimeUtc(); }
};
