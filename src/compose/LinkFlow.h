#pragma once

#include "app/Prompts.h"
#include "compose/ComposeView.h"
#include "compose/PostOnScreen.h"

/// The link sheet, for a new link around the selection or for a link that is there.
class LinkFlow : public QObject {
    Q_OBJECT
public:
    LinkFlow(ComposeHost &host, ComposePage &page, ComposeView &view, Prompts &prompts, PostOnScreen &screen);

    /// For what is selected, or for the link under the cursor.
    QCoro::Task<void> addLinkToCurrentSelection();
    QCoro::Task<void> edit(PageLink link);

private:
    void take(const LinkAnswer &answer, const PageLink &link);

    ComposeHost &m_host;
    ComposePage &m_page;
    ComposeView &m_view;
    Prompts &m_prompts;
    PostOnScreen &m_screen;
};
