#include "compose/LinkFlow.h"

LinkFlow::LinkFlow(const ComposeParts &parts, QObject *parent)
    : QObject(parent)
    , m_parts(parts)
{
    connect(&m_parts.page, &ComposePage::openAddLink, this, &LinkFlow::showSheet);
    connect(&m_parts.view, &ComposeView::addLinkDidClickDone, this, &LinkFlow::addLinkDidClickDone);
    connect(&m_parts.view, &ComposeView::addLinkDidClickCancel, this, &LinkFlow::addLinkDidClickCancel);
}

void LinkFlow::addLinkToCurrentSelection()
{
    if (!m_parts.state->actionsEnabled || m_parts.overlay.isLoading(m_parts.screen.post()->id))
        return;
    m_parts.page.addLinkMarkToCurrentSelection(); // keeps the selection while the sheet has the focus
    showSheet({}, {}, m_parts.host.boolForKey(QStringLiteral("linksInNewWindowByDefault")));
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
