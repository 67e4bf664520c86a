#pragma once

#include "app/Prompts.h"
#include "compose/ComposePage.h"
#include "compose/PostOnScreen.h"

/// The question about a post that changed both here and on the blog, and what follows from its answer.
class ConflictFlow : public QObject {
    Q_OBJECT
public:
    ConflictFlow(ComposeHost &host, ComposePage &page, Prompts &prompts, PostOnScreen &screen);

    /// Asks about the post on the screen. True: it was answered, and the file is another one now.
    QCoro::Task<bool> ask();

private:
    ComposeHost &m_host;
    ComposePage &m_page;
    Prompts &m_prompts;
    PostOnScreen &m_screen;
};
