#pragma once

#include "compose/PostAction.h"

#include <QDateTime>
#include <QString>

/// How the buttons look for a post.
struct PostButtons {
    struct Button {
        bool enabled = true;
        QString image; ///< name of an icon resource
        QString alternateImage; ///< the same while pressed
        QString toolTip;
        QString text; ///< the label of the publish button
        bool operator==(const Button &) const = default;
    };
    Button save, publish, calendar, remove;

    static PostButtons of(const ZLWordpressPost &post, PostActions allowed, const QDateTime &now);
};

/// A post without a date is not in the future.
bool isInFuture(const ZLWordpressPost &post, const QDateTime &now);
