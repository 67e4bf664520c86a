#include "editor/DeleteFlow.h"

DeleteFlow::DeleteFlow(const ComposeParts &parts, QObject *parent)
    : QObject(parent)
    , m_parts(parts)
{
    connect(&m_parts.view, &ComposeView::alertViewDidDismissWithButtonIndex, this,
        &DeleteFlow::alertViewDidDismissWithButtonIndex);
}

void DeleteFlow::didPressedDeleteButton()
{
    if (!m_parts.state->actionsEnabled || m_parts.overlay.isLoading(m_parts.screen.post()->id))
        return;
    m_askedGeneration = m_parts.screen.generation();
    const bool isPage = m_parts.screen.post()->type == ZLWordpressPost::Page;
    m_parts.view.showDeleteAlert(
        isPage ? QStringLiteral("Deleting Page") : QStringLiteral("Deleting Post"), m_parts.view.title());
}

void DeleteFlow::alertViewDidDismissWithButtonIndex(int index)
{
    // The answer is about the post that the question named.
    if (index == 1 && m_askedGeneration == m_parts.screen.generation())
        deleteCurrentPost();
}

void DeleteFlow::deleteCurrentPost()
{
    m_parts.screen.forgetFailedFirstUpload();
    const PostPtr post = m_parts.screen.post();
    const LocalPostPtr row = post->localPost;
    const bool isRemote =
        post->status != ZLWordpressPost::New && !(row && row->status == ZLLocalPostRepresentation::ConflictSolved);
    if (isRemote && !m_parts.host.isReachable()) {
        m_parts.prompts.alert(
            QStringLiteral("No internet connection! You have to be connected to delete an online post."));
        return;
    }
    if (isRemote) {
        m_parts.host.deletePost(post);
    } else {
        if (row) {
            m_parts.host.removeLocalPostFromList(row);
            m_parts.host.deletePostAtLocalURL(row->localFile);
        }
        Q_EMIT cleanEditorForNewPost();
    }
    Q_EMIT m_parts.host.notifications().didDeletePost();
}
