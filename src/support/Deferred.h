#pragma once

#include <coroutine>
#include <memory>
#include <optional>
#include <utility>

/// A value that arrives later, once. Copies share it: the producer keeps one and calls `deliver()`, a coroutine awaits
/// another. A value that is never delivered leaves its coroutine waiting for ever. Main thread only; `deliver()`
/// resumes the waiting coroutine before it returns, so a producer touches nothing of its own after it.
template <typename T>
class Deferred final {
public:
    /// Hands the value over; only the first delivery counts.
    void deliver(T value) const {
        const auto state = m_state;
        if (state->delivered) {
            return;
        }
        state->delivered = true;
        state->value.emplace(std::move(value));
        if (state->waiter) {
            std::exchange(state->waiter, {}).resume();
        }
    }

    [[nodiscard]] bool await_ready() const noexcept { return m_state->delivered; }
    void await_suspend(std::coroutine_handle<> waiter) const noexcept { m_state->waiter = waiter; }
    // NOLINTNEXTLINE(bugprone-unchecked-optional-access): a waiter resumes only when there is a value.
    [[nodiscard]] T await_resume() const { return std::move(*m_state->value); }

private:
    struct State {
        std::optional<T> value;
        std::coroutine_handle<> waiter;
        bool delivered = false;
    };

    std::shared_ptr<State> m_state = std::make_shared<State>();
};
