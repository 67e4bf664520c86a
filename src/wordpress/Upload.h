#pragma once

#include "wordpress/UploadOutcome.h"

#include <QObject>
#include <optional>

/// A post on its way to its blog, as the screen and the list look at it. It ends once, with one outcome; after that it
/// is deleted on a later turn of the event loop.
class Upload : public QObject {
    Q_OBJECT
public:
    enum Kind { NewPost, Update, PublishDraft };
    enum Step { Preparing, SyncingTaxonomies, SyncingImages, UploadingContent, Finishing };

    using QObject::QObject;

    virtual const PostPtr &post() const = 0;
    virtual Kind kind() const = 0;
    virtual QString blogName() const = 0;
    virtual Step step() const = 0;
    virtual float progress() const = 0; ///< of the step, from 0 to 1
    virtual const std::optional<UploadOutcome> &outcome() const = 0; ///< nothing before the end
    /// The writer gave up. What went out already may still reach the blog: the next upload of a new post looks there.
    virtual void cancel() = 0;

Q_SIGNALS:
    void changed(); ///< the step, or how far it has come
    void ended(const UploadOutcome &outcome);
};
