#include "compose/DeleteFlow.h"

DeleteFlow::DeleteFlow(const ComposeParts &parts, QObject *parent)
    : QObject(parent)
    , m_parts(parts)
{
    connect(&m_parts.view, &ComposeView::alertViewDidDismissWithButtonIndex, this,
        &DeleteFlow::alertViewDidDismissWithButtonIndex);
    connect(&m_parts.host.notifications(), &ZLNotifications::deletionDidEnd, this, [this] {
        m_parts.state->deletedFiles.clear();
        m_parts.view.setSaveState({});
    });
}

void DeleteFlow::didPressedDeleteButton()
{
    // A second call for a post that is in the blog's trash by then would delete it for good.
    if (!m_parts.state->actionsEnabled || m_parts.overlay.isLoading(m_parts.screen.post()->id)
        || m_parts.isBeingDeleted())
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
    m_parts.screen.forgetFailedUpload();
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
        if (row)
            m_parts.state->deletedFiles.append(row->localFile);
        m_parts.view.setSaveState(QStringLiteral("Deleting…"));
        m_parts.host.deletePost(post);
    } else {
        if (row) {
            m_parts.host.removeLocalPostFromList(row);
            m_parts.host.deletePostAtLocalURL(row->localFile);
        } else if (const DocumentPtr unwritten = m_parts.screen.currentDocument()) {
            m_parts.host.documentController().forget(unwritten->fileURL());
        }
        Q_EMIT cleanEditorForNewPost();
    }
    Q_EMIT m_parts.host.notifications().didDeletePost();
}
