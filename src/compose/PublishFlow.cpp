#include "compose/PublishFlow.h"

#include "compose/ComposeButtons.h"

#include <QPointer>

PublishFlow::PublishFlow(const ComposeParts &parts, QObject *parent)
    : UploadFlow(parts, parent)
{
}

QCoro::Task<void> PublishFlow::didPressedPublishButton()
{
    const QPointer<PublishFlow> self(this);
    Q_EMIT m_parts.host.notifications().didPressPublishButton();
    if (!mayBegin())
        co_return;
    const FlowInFlight inFlight(m_parts.state);
    m_parts.page.hidePopupWindows();
    m_parts.view.hidePopupWindows();
    QCoro::Task<bool> taking = takeTitleAndContent();
    const bool taken = co_await taking;
    if (!self || !taken)
        co_return;
    QCoro::Task<bool> checking = checkForEmptyPost();
    const bool wanted = co_await checking;
    if (!self || !wanted)
        co_return;
    QCoro::Task<void> publishing = publishPost();
    co_await publishing;
}

QCoro::Task<bool> PublishFlow::checkForEmptyPost()
{
    const QPointer<PublishFlow> self(this);
    if (isEmptyPost()) {
        alertForEmptyPost();
        co_return false;
    }
    const PostPtr post = m_parts.screen.post();
    if (post->status == ZLWordpressPost::Publish || !post->title.isEmpty()
        || !m_parts.host.boolForKey(QStringLiteral("warnUntitled")))
        co_return true;
    const int generation = m_parts.screen.generation();
    QCoro::Task<int> asking = m_parts.prompts.ask(QStringLiteral("Do you want to publish an untitled article?"), {},
        {QStringLiteral("Ok"), QStringLiteral("Cancel")});
    const int answer = co_await asking;
    co_return self &&answer == 0 && generation == m_parts.screen.generation();
}

QCoro::Task<void> PublishFlow::publishPost()
{
    const QPointer<PublishFlow> self(this);
    if (!m_parts.state->actionsEnabled || !isReachable())
        co_return;
    QCoro::Task<bool> preparing = preparePost();
    const bool prepared = co_await preparing;
    if (self && prepared)
        sendPost();
}

void PublishFlow::sendPost()
{
    const PostPtr post = m_parts.screen.post();
    m_parts.screen.forgetFailedUpload();
    // A draft whose date lies ahead is scheduled for it, as the button says.
    if (post->status != ZLWordpressPost::Publish && !ComposeButtons::isInFuture(*post, m_parts.host.now()))
        post->createdAt = m_parts.host.now();
    takeTaxonomiesAndId();
    int kind = ZLWordpressService::NewPost;
    if (post->status == ZLWordpressPost::Publish) {
        kind = ZLWordpressService::Update;
    } else if (post->status == ZLWordpressPost::Draft) {
        kind = ZLWordpressService::PublishDraft;
        post->status = ZLWordpressPost::Publish;
    }
    startUpload(kind, headingForPost());
}

int PublishFlow::headingForPost() const
{
    const PostPtr post = m_parts.screen.post();
    if (ComposeButtons::isInFuture(*post, m_parts.host.now()))
        return UploadOverlay::SchedulingArticle;
    // A draft has been made "published" by now and thus reads "Updating Article", deliberately.
    return post->status == ZLWordpressPost::Publish ? UploadOverlay::UpdatingArticle : UploadOverlay::PublishingArticle;
}
