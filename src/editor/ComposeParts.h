#pragma once

#include "app/Prompts.h"
#include "editor/ComposeHost.h"
#include "editor/ComposePage.h"
#include "editor/ComposeView.h"
#include "editor/PostOnScreen.h"
#include "editor/UploadOverlay.h"

#include <memory>

/// What the flows of the compose screen work on; all of it outlives them.
struct ComposeParts {
    /// Shared with the flows under way, which may outlive the screen by a turn.
    struct State {
        bool actionsEnabled = true; ///< false while a sheet owns the screen
        bool flowInFlight = false;
    };

    ComposeHost &host;
    ComposePage &page;
    ComposeView &view;
    Prompts &prompts;
    PostOnScreen &screen;
    UploadOverlay &overlay;
    std::shared_ptr<State> state = std::make_shared<State>();
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
