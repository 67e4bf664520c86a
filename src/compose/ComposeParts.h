#pragma once

#include "app/ComposeHost.h"
#include "app/Prompts.h"
#include "compose/ComposePage.h"
#include "compose/ComposeView.h"
#include "compose/PostOnScreen.h"
#include "compose/UploadOverlay.h"

#include <QUrl>
#include <memory>

/// What the flows of the compose screen work on; all of it outlives them.
struct ComposeParts {
    /// Shared with the flows under way, which may outlive the screen by a turn.
    struct State {
        bool actionsEnabled = true; ///< false while a sheet owns the screen
        bool flowInFlight = false;
        QList<QUrl> deletedFiles; ///< of the posts that the blog was asked to delete and has not answered about
    };

    ComposeHost &host;
    ComposePage &page;
    ComposeView &view;
    Prompts &prompts;
    PostOnScreen &screen;
    UploadOverlay &overlay;
    std::shared_ptr<State> state = std::make_shared<State>();

    /// Whether the blog has been asked to delete the post on the screen.
    bool isBeingDeleted() const
    {
        const LocalPostPtr row = screen.post()->localPost;
        return row && state->deletedFiles.contains(row->localFile);
    }
};

/// Marks a flow as under way for as long as it lives, so that a second press is ignored.
class FlowInFlight {
public:
    explicit FlowInFlight(const std::shared_ptr<ComposeParts::State> &state)
        : m_state(state)
    {
        m_state->flowInFlight = true;
    }
    ~FlowInFlight() { m_state->flowInFlight = false; }
    Q_DISABLE_COPY_MOVE(FlowInFlight)

private:
    std::shared_ptr<ComposeParts::State> m_state;
};
