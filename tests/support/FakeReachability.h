#pragma once

#include "platform/Reachability.h"

/// A network that a test plugs in and pulls out.
class FakeReachability : public Reachability {
    Q_OBJECT
public:
    using Reachability::isReachable;
    bool isReachable() const override { return reachable; }
    void startNotifier() override { }

    void plugIn()
    {
        reachable = true;
        Q_EMIT becameReachable();
    }
    void pullOut()
    {
        reachable = false;
        Q_EMIT becameUnreachable();
    }

    bool reachable = true;
};
