#pragma once

#include <coroutine>
#include <memory>
#include <optional>
#include <utility>

/// A value that comes once, later, for the one flow that awaits it.
template <class T>
class Later {
public:
    bool await_ready() const { return isGiven(); }
    void await_suspend(std::coroutine_handle<> flow) { m_state->flow = flow; }
    T await_resume() { return std::move(*m_state->value); }

    bool isGiven() const { return m_state->value.has_value(); }
    /// The first value counts. The flow goes on before this returns.
    void give(T value) const
    {
        const auto state = m_state; // the flow may let go of this object
        if (state->value)
            return;
        state->value = std::move(value);
        if (const auto flow = std::exchange(state->flow, nullptr))
            flow.resume();
    }

private:
    struct State {
        std::optional<T> value;
        std::coroutine_handle<> flow;
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};
