#pragma once

/// What to do with a post once it is on the screen.
namespace AwaitingAction {
enum Value {
    Publish = 0,
    Delete = 1,
    Save = 2,
    None = 3,
    Reload = 4, ///< load the post although its row was selected already
};
} // namespace AwaitingAction
