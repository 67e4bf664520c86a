#include "compose/UploadOverlay.h"

#include <array>

namespace {
constexpr std::array stepTexts{
    "Preparing...",
    "Syncing categories and tags...",
    "Syncing images...",
    "Uploading content...",
    "Finishing...",
};
constexpr std::array headingTexts{
    "Publishing Article",
    "Updating Article",
    "Saving Draft",
    "Saving to Evernote",
    "Scheduling Article",
    "Updating Draft",
    "Moving to Drafts",
};
} // namespace

UploadOverlay::UploadOverlay(ComposeView &view)
    : m_view(view)
{
}

QString UploadOverlay::stepText(Upload::Step step)
{
    return QString::fromLatin1(stepTexts.at(std::size_t(step)));
}

QString UploadOverlay::headingText(Heading heading)
{
    return QString::fromLatin1(headingTexts.at(std::size_t(heading)));
}

UploadOverlay::Heading UploadOverlay::headingOf(const ZLWordpressPost &sent, Upload::Kind kind, const QDateTime &now)
{
    const bool isNew = kind == Upload::NewPost;
    if (sent.status == ZLWordpressPost::Draft) {
        const bool wasPublished = sent.localPost && sent.localPost->published;
        return isNew ? Heading::SavingDraft : wasPublished ? Heading::MovingToDrafts : Heading::UpdatingDraft;
    }
    if (isInFuture(sent, now))
        return Heading::SchedulingArticle;
    // Making a draft public reads "Updating Article", deliberately.
    return isNew ? Heading::PublishingArticle : Heading::UpdatingArticle;
}

void UploadOverlay::follow(Upload *upload, const QDateTime &now)
{
    if (upload == m_upload)
        return;
    hide();
    if (!upload)
        return;
    m_upload = upload;
    m_heading = headingText(headingOf(*upload->post(), upload->kind(), now));
    m_view.showLoadingView(m_heading, stepText(upload->step()), upload->blogName());
    connect(upload, &Upload::changed, this, &UploadOverlay::update);
    connect(upload, &Upload::ended, this, &UploadOverlay::end);
    if (upload->outcome())
        end(*upload->outcome());
}

void UploadOverlay::showDeletion(bool isUnderWay, bool isPage)
{
    if (isUnderWay == m_isDeletion)
        return;
    hide();
    m_isDeletion = isUnderWay;
    if (isUnderWay)
        m_view.showDeletingView(isPage ? QStringLiteral("Deleting Page") : QStringLiteral("Deleting Post"),
            QStringLiteral("It goes to the trash of the blog."));
}

void UploadOverlay::update()
{
    m_view.updateLoadingView(m_heading, stepText(m_upload->step()));
    m_view.setUploadProgress(m_upload->progress());
}

void UploadOverlay::end(const UploadOutcome &outcome)
{
    const UploadOutcome told = outcome; // hiding lets go of the upload that holds it
    hide();
    Q_EMIT ended(told);
}

void UploadOverlay::hide()
{
    if (!m_upload && !m_isDeletion)
        return;
    if (m_upload)
        m_upload->disconnect(this);
    m_upload = nullptr;
    m_isDeletion = false;
    m_view.hideLoadingView();
}

void UploadOverlay::cancel()
{
    if (m_upload)
        m_upload->cancel();
}
