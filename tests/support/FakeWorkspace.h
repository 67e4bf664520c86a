#pragma once

#include "platform/ZLWorkspace.h"

#include <QList>

/// Notes what would be opened in the browser or put on the clipboard.
class FakeWorkspace : public ZLWorkspace {
public:
    void openURL(const QUrl &url) override { opened.append(url); }
    bool copyLink(const QUrl &url) override
    {
        if (clipboardWorks)
            copied.append(url);
        return clipboardWorks;
    }

    QList<QUrl> opened;
    QList<QUrl> copied;
    bool clipboardWorks = true;
};
