#include "compose/UploadOutcome.h"

UploadOutcome::UploadOutcome(const ComposeParts &parts, ComposeButtons &buttons, QObject *parent)
    : QObject(parent)
    , m_parts(parts)
    , m_buttons(buttons)
{
    ZLNotifications &notifications = m_parts.host.notifications();
    connect(&notifications, &ZLNotifications::didUpdatePost, this, &UploadOutcome::didLoadedPost);
    connect(&notifications, &ZLNotifications::didFailToUploadPost, this, &UploadOutcome::didFailToUploadPost);
    observeSteps();
}

void UploadOutcome::observeSteps()
{
    ZLNotifications &notifications = m_parts.host.notifications();
    const auto observe = [this, &notifications](auto signal, int step) {
        connect(&notifications, signal, this, [this, step](const PostPtr &post) {
            m_parts.overlay.didUpdateLoadingStatus(post, step, m_parts.screen.post());
        });
    };
    observe(&ZLNotifications::syncingTaxonomiesPostStatus, UploadOverlay::SyncingTaxonomies);
    observe(&ZLNotifications::syncingImagesPostStatus, UploadOverlay::SyncingImages);
    observe(&ZLNotifications::syncingContentPostStatus, UploadOverlay::UploadingContent);
}

void UploadOutcome::didLoadedPost(const PostPtr &returned, const UpdatedPostInfo &info)
{
    if (info.originalPost)
        m_parts.overlay.removePostFromLoadingList(info.originalPost->id);
    m_parts.overlay.removePostFromLoadingList(returned->id);
    if (info.localPost)
        m_parts.overlay.removePostOfRow(info.localPost);
    if (!m_parts.overlay.isShowingLoadingView())
        return;
    const PostPtr post = m_parts.screen.post();
    if (info.originalPost || info.localPost) {
        didLoadOriginalPost(returned, info);
    } else if (!post->id.isEmpty()) {
        if (UploadOverlay::matches(*post, *returned))
            m_parts.overlay.hideLoadingView();
    } else if (post->title == returned->title) {
        m_parts.screen.replaceAfterUpload(returned, post->localPost);
        m_buttons.setButtonsAfterUpload(*returned, false);
        m_parts.overlay.hideLoadingView();
    }
}

void UploadOutcome::didLoadOriginalPost(const PostPtr &returned, const UpdatedPostInfo &info)
{
    // Another object leaves the overlay up: the list loads the post anew from its file, and that takes it away.
    if (m_parts.screen.post() != info.originalPost)
        return;
    m_parts.screen.replaceAfterUpload(returned, info.localPost);
    m_buttons.setButtonsAfterUpload(*returned, true);
    m_parts.overlay.hideLoadingView();
}

void UploadOutcome::didFailToUploadPost(const PostPtr &post)
{
    m_parts.overlay.removePostFromLoadingList(post->id);
    const PostPtr onScreen = m_parts.screen.post();
    if (onScreen != post && !UploadOverlay::matches(*onScreen, *post))
        return;
    m_parts.overlay.hideLoadingView();
    // Not every failure comes with an alert.
    m_parts.view.setSaveState(QStringLiteral("Not sent to the blog"));
}
