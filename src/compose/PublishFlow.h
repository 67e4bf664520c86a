#pragma once

#include "compose/UploadFlow.h"

/// The Publish button: a new post goes up, a draft is made public, a published post is updated.
class PublishFlow : public UploadFlow {
    Q_OBJECT
public:
    explicit PublishFlow(const ComposeParts &parts, QObject *parent = nullptr);
    QCoro::Task<void> didPressedPublishButton();

private:
    /// False: there is nothing to publish, or the writer thought better of a post without a title.
    QCoro::Task<bool> checkForEmptyPost();
    QCoro::Task<void> publishPost();
    void sendPost();
    int headingForPost() const;
};
