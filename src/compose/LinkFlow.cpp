#include "compose/LinkFlow.h"

#include <QPointer>

LinkFlow::LinkFlow(const ComposeParts &parts, QObject *parent)
    : QObject(parent)
    , m_parts(parts)
{
    connect(&m_parts.page, &ComposePage::openAddLink, this, &LinkFlow::showSheet);
    connect(&m_parts.view, &ComposeView::addLinkDidClickDone, this, &LinkFlow::addLinkDidClickDone);
    connect(&m_parts.view, &ComposeView::addLinkDidClickCancel, this, &LinkFlow::addLinkDidClickCancel);
}

QCoro::Task<void> LinkFlow::addLinkToCurrentSelection()
{
    const QPointer<LinkFlow> self(this);
    if (!m_parts.state->actionsEnabled || m_isAsking || m_parts.overlay.isLoading(m_parts.screen.post()->id))
        co_return;
    m_isAsking = true;
    const int generation = m_parts.screen.generation();
    QCoro::Task<std::optional<PageLink>> marking = m_parts.page.addLinkMarkToCurrentSelection();
    const PageLink link = (co_await marking).value_or(PageLink());
    if (!self)
        co_return;
    m_isAsking = false;
    if (generation != m_parts.screen.generation() || !m_parts.state->actionsEnabled)
        co_return;
    const bool newWindow = m_parts.host.boolForKey(QStringLiteral("linksInNewWindowByDefault"));
    showSheet(link.url, link.tooltip, link.isLink ? link.newWindow : newWindow);
}

void LinkFlow::showSheet(const QString &url, const QString &tooltip, bool newWindow)
{
    m_parts.state->actionsEnabled = false;
    m_shownURL = url;
    m_parts.view.showAddLinkSheet(url, tooltip, newWindow);
}

void LinkFlow::addLinkDidClickDone(const QString &url, const QString &tooltip, bool newWindow)
{
    // An address that is there already ("mailto:", "#top", "/about") stays as it is.
    const bool isWhole = (url == m_shownURL && !url.isEmpty()) || url.startsWith(QLatin1String("http://"))
        || url.startsWith(QLatin1String("https://"));
    m_parts.state->actionsEnabled = true;
    m_parts.page.focus();
    m_parts.page.addLinkToSelection(isWhole ? url : QLatin1String("http://") + url, tooltip, newWindow);
}

void LinkFlow::addLinkDidClickCancel()
{
    m_parts.state->actionsEnabled = true;
    m_parts.page.focus();
    m_parts.page.removeLinkMarkForCurrentSelection();
}
