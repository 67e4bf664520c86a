#pragma once

#include <QUrl>

/// What lies outside the program: the default browser and the clipboard.
class ZLWorkspace {
public:
    virtual ~ZLWorkspace() = default;
    virtual void openURL(const QUrl &url) = 0;
    /// Puts a link on the clipboard; false when that failed.
    virtual bool copyLink(const QUrl &url) = 0;
};
