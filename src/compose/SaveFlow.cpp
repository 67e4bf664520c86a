#include "compose/SaveFlow.h"

#include <QPointer>

SaveFlow::SaveFlow(const ComposeParts &parts, QObject *parent)
    : UploadFlow(parts, parent)
{
}

QCoro::Task<void> SaveFlow::didPressedSaveButton()
{
    const QPointer<SaveFlow> self(this);
    if (!mayBegin() || !isReachable())
        co_return;
    const FlowInFlight inFlight(m_parts.state);
    QCoro::Task<bool> preparing = preparePost();
    const bool prepared = co_await preparing;
    if (self && prepared)
        saveDraft();
}

void SaveFlow::saveDraft()
{
    const PostPtr post = m_parts.screen.post();
    m_parts.screen.forgetFailedUpload();
    post->createdAt = m_parts.host.now();
    takeTaxonomiesAndId();
    if (post->status == ZLWordpressPost::Draft) {
        startUpload(ZLWordpressService::Update, UploadOverlay::UpdatingDraft);
        return;
    }
    const bool wasPublished = post->status == ZLWordpressPost::Publish;
    post->status = ZLWordpressPost::Draft;
    if (wasPublished)
        startUpload(ZLWordpressService::Update, UploadOverlay::MovingToDrafts);
    else
        startUpload(ZLWordpressService::NewPost, UploadOverlay::SavingDraft);
}
