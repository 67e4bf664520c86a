#pragma once

#include "platform/ZLWorkspace.h"

/// The desktop's browser and clipboard.
class DesktopWorkspace : public ZLWorkspace {
public:
    void openURL(const QUrl &url) override;
    bool copyLink(const QUrl &url) override;
};
