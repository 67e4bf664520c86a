#include "compose/LinkFlow.h"

#include <QPointer>

LinkFlow::LinkFlow(ComposeHost &host, ComposePage &page, ComposeView &view, Prompts &prompts, PostOnScreen &screen)
    : m_host(host)
    , m_page(page)
    , m_view(view)
    , m_prompts(prompts)
    , m_screen(screen)
{
}

QCoro::Task<void> LinkFlow::addLinkToCurrentSelection()
{
    const QPointer<LinkFlow> self(this);
    const int generation = m_screen.generation();
    std::optional<PageLink> link = co_await m_page.addLinkMarkToCurrentSelection();
    if (!self || !link || generation != m_screen.generation())
        co_return;
    if (!link->isLink)
        link->newWindow = m_host.boolForKey(QStringLiteral("linksInNewWindowByDefault"));
    co_await edit(*link);
}

QCoro::Task<void> LinkFlow::edit(PageLink link)
{
    const QPointer<LinkFlow> self(this);
    const int generation = m_screen.generation();
    const LinkAnswer answer = co_await m_view.askForLink(link);
    if (!self)
        co_return;
    m_page.focus();
    if (generation == m_screen.generation())
        take(answer, link);
    else if (answer.deed != LinkAnswer::Cancel)
        m_prompts.alert(QStringLiteral("The link was not set."),
            QStringLiteral("The text that it was for is not on the screen any more."));
}

void LinkFlow::take(const LinkAnswer &answer, const PageLink &link)
{
    const bool isUnchanged =
        answer.url == link.url && answer.tooltip == link.tooltip && answer.newWindow == link.newWindow;
    if (answer.deed == LinkAnswer::Cancel || (answer.deed == LinkAnswer::Done && link.isLink && isUnchanged))
        return m_page.removeLinkMarkForCurrentSelection();
    if (answer.deed == LinkAnswer::Remove)
        return m_page.removeLink();
    // An address that is there already ("mailto:", "#top", "/about") stays as it is.
    const bool isWhole = (answer.url == link.url && !answer.url.isEmpty())
        || answer.url.startsWith(QLatin1String("http://")) || answer.url.startsWith(QLatin1String("https://"));
    m_page.addLinkToSelection(
        isWhole ? answer.url : QLatin1String("http://") + answer.url, answer.tooltip, answer.newWindow);
}
