#include "compose/DeleteFlow.h"

#include "model/LocalFileURL.h"

#include <QPointer>

DeleteFlow::DeleteFlow(ComposeHost &host, ComposeView &view, Prompts &prompts, PostOnScreen &screen)
    : m_host(host)
    , m_view(view)
    , m_prompts(prompts)
    , m_screen(screen)
{
    connect(&m_host.notifications(), &ZLNotifications::deletionDidEnd, this, [this](const QUrl &file, bool wasRefused) {
        if (wasRefused && isBeingDeleted() && m_screen.isFileOnScreen(file))
            deleteWithNewLogin(file);
        else
            didEndDeletion(file);
    });
}

void DeleteFlow::ask()
{
    m_askedGeneration = m_screen.generation();
    const bool isPage = m_screen.post()->type == ZLWordpressPost::Page;
    m_view.showDeleteAlert(isPage ? QStringLiteral("Deleting Page") : QStringLiteral("Deleting Post"), m_view.title(),
        isOnBlog() ? QStringLiteral("The blog puts it into its trash, where you can get it back.")
                   : QStringLiteral("It is on this computer only and cannot be brought back."));
}

bool DeleteFlow::isOnBlog() const
{
    const LocalPostPtr row = m_screen.post()->localPost;
    const bool isKeptCopy = row && row->status == ZLLocalPostRepresentation::ConflictSolved;
    return m_screen.post()->status != ZLWordpressPost::New && !isKeptCopy && !m_screen.isGoneFromBlog();
}

bool DeleteFlow::isBeingDeleted() const
{
    return std::any_of(m_deletedFiles.cbegin(), m_deletedFiles.cend(),
        [this](const QUrl &file) { return m_screen.isFileOnScreen(file); });
}

QCoro::Task<void> DeleteFlow::deletePost()
{
    const QPointer<DeleteFlow> self(this);
    if (m_askedGeneration != m_screen.generation())
        co_return;
    if (!isOnBlog()) {
        deleteHere();
    } else if (m_host.isReachable()) {
        const bool isLoggedIn = co_await m_host.logIn();
        if (!self || !isLoggedIn || m_askedGeneration != m_screen.generation())
            co_return;
        m_deletedFiles.append(m_screen.currentDocument()->fileURL());
        m_host.deletePost(m_screen.post());
        Q_EMIT didBegin();
    } else {
        m_prompts.alert(QStringLiteral("No internet connection! You have to be connected to delete an online post."));
        co_return;
    }
    Q_EMIT m_host.notifications().didDeletePost();
}

void DeleteFlow::didEndDeletion(const QUrl &file)
{
    m_deletedFiles.removeIf([&file](const QUrl &deleted) { return isSameFile(deleted, file); });
    Q_EMIT didEnd();
}

QCoro::Task<void> DeleteFlow::deleteWithNewLogin(QUrl file)
{
    const QPointer<DeleteFlow> self(this);
    const bool isNew = co_await m_host.newLogin();
    if (!self)
        co_return;
    if (isNew && m_screen.isFileOnScreen(file))
        m_host.deletePost(m_screen.post());
    else
        didEndDeletion(file);
}

void DeleteFlow::deleteHere()
{
    const LocalPostPtr row = m_screen.post()->localPost;
    if (const DocumentPtr document = m_screen.currentDocument())
        m_host.documentController().forget(document->fileURL());
    if (row) {
        m_host.removeLocalPostFromList(row);
        m_host.deletePostAtLocalURL(row->localFile);
    }
    Q_EMIT cleanEditorForNewPost();
}
