#pragma once

#include <coroutine>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

/// A value that arrives later, once. Copies share it: the producer keeps one and calls `deliver()`, a coroutine awaits
/// another. Main thread only; `deliver()` resumes the waiting coroutine before it returns, so a producer touches
/// nothing of its own after it. A producer that may go away before it has an answer takes `answer()`, or the coroutine
/// waits for ever.
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

    /// A function that delivers what it is called with. When its last copy is dropped uncalled, `fallback` is
    /// delivered.
    [[nodiscard]] std::function<void(T)> answer(T fallback) const {
        return [lastWord = std::make_shared<LastWord>(*this, std::move(fallback))](T value) {
            lastWord->deferred.deliver(std::move(value));
        };
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

    struct LastWord {
        LastWord(const Deferred& owner, T value)
            : deferred{owner}
            , fallback{std::move(value)} {}
        LastWord(const LastWord&) = delete;
        LastWord& operator=(const LastWord&) = delete;
        ~LastWord() { deferred.deliver(std::move(fallback)); }

        Deferred deferred;
        T fallback;
    };

    std::shared_ptr<State> m_state = std::make_shared<State>();
};
