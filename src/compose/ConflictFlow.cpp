#include "compose/ConflictFlow.h"

#include "model/ConflictResolver.h"

#include <QPointer>

ConflictFlow::ConflictFlow(ComposeHost &host, ComposePage &page, Prompts &prompts, PostOnScreen &screen)
    : m_host(host)
    , m_page(page)
    , m_prompts(prompts)
    , m_screen(screen)
{
}

QCoro::Task<bool> ConflictFlow::ask()
{
    const QPointer<ConflictFlow> self(this);
    const int generation = m_screen.generation();
    const LocalPostPtr row = m_screen.post()->localPost;
    ZLDocumentController &documents = m_host.documentController();
    const ConflictAnswer answer = co_await m_prompts.askAboutConflict(conflictSides(row, documents));
    if (!self || answer == ConflictAnswer::NotNow || generation != m_screen.generation())
        co_return false;
    // The version that is kept or left holds all that was typed: the page reports it before it answers.
    (void)co_await m_page.getBodyContent();
    if (!self || generation != m_screen.generation())
        co_return false;
    const bool isKept = answer == ConflictAnswer::KeepBothLocal || answer == ConflictAnswer::KeepBothRemote;
    const bool isLocal = answer == ConflictAnswer::ChooseLocal || answer == ConflictAnswer::KeepBothLocal;
    const ConflictResolver::Outcome outcome =
        ConflictResolver::resolve(isKept ? ConflictResolver::KeepBoth : ConflictResolver::Choose,
            isLocal ? ConflictResolver::Local : ConflictResolver::Remote, row, documents, m_host.now());
    if (!outcome.isDone) {
        m_prompts.alert(QStringLiteral("The versions of this post could not be brought in order."),
            QStringLiteral("Both are kept as they are. Make room on the disk, or see that you may write to its folder, "
                           "then try again."));
        co_return false;
    }
    m_host.loadLocalPosts(); // the rows as the files are now, a copy's with them
    co_return true;
}
