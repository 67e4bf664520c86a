#include "compose/UploadFlow.h"

#include <QPointer>

UploadFlow::UploadFlow(const ComposeParts &parts, QObject *parent)
    : QObject(parent)
    , m_parts(parts)
{
}

bool UploadFlow::mayBegin() const
{
    // A second upload of a post that is on its way would make a second post on the blog.
    return m_parts.state->actionsEnabled && !m_parts.page.isShowingImageEditor() && !m_parts.state->flowInFlight
        && !m_parts.overlay.isLoading(m_parts.screen.post()->id) && !m_parts.isBeingDeleted();
}

bool UploadFlow::isReachable() const
{
    const bool reachable = m_parts.host.isReachable();
    if (!reachable)
        m_parts.prompts.alert(QStringLiteral("You're offline"),
            QStringLiteral("You need to connect to the Internet to send your post to the blog. "
                           "What you have written is kept on this computer."));
    return reachable;
}

QCoro::Task<bool> UploadFlow::takeTitleAndContent()
{
    const QPointer<UploadFlow> self(this);
    const int generation = m_parts.screen.generation();
    const QString shownTitle = m_parts.view.title();
    QCoro::Task<std::optional<QString>> asking = m_parts.page.getBodyContent();
    const std::optional<QString> content = co_await asking;
    if (!self || generation != m_parts.screen.generation())
        co_return false;
    if (!content) {
        m_parts.prompts.alert(QStringLiteral("The editor is not ready."),
            QStringLiteral("Nothing was sent. Please try again in a moment."));
        co_return false;
    }
    const PostPtr post = m_parts.screen.post();
    post->title = m_parts.screen.titleForBlog(shownTitle);
    post->content = *content;
    co_return true;
}

bool UploadFlow::isEmptyPost() const
{
    const PostPtr post = m_parts.screen.post();
    return post->title.isEmpty() && post->content.isEmpty();
}

void UploadFlow::alertForEmptyPost() const
{
    m_parts.prompts.alert(QStringLiteral("Nothing here. Post title and content are empty."));
}

QCoro::Task<bool> UploadFlow::preparePost()
{
    const QPointer<UploadFlow> self(this);
    QCoro::Task<bool> preparing = m_parts.screen.becomeReady();
    const bool ready = co_await preparing;
    if (!self || !ready)
        co_return false;
    QCoro::Task<bool> taking = takeTitleAndContent();
    const bool taken = co_await taking;
    if (!self || !taken)
        co_return false;
    if (isEmptyPost()) {
        alertForEmptyPost();
        co_return false;
    }
    co_return true;
}

void UploadFlow::takeTaxonomiesAndId()
{
    m_parts.screen.post()->setTaxonomiesFromStringArray(m_parts.view.tokens());
    m_parts.screen.giveIdIfNone();
}

void UploadFlow::startUpload(int kind, int heading)
{
    const PostPtr post = m_parts.screen.post();
    m_parts.overlay.addPostForLoadingList(post, heading);
    m_parts.overlay.showLoadingView(heading);
    m_parts.host.syncCategoriesAndPublishPost(post, kind);
}
