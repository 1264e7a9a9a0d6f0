#pragma once

#include <coroutine>
#include <functional>
#include <set>
#include <utility>

/// Suspends a coroutine that awaits it until a callback, which must come from the event loop. A coroutine that is still
/// suspended when the application ends never goes on; it stays reachable with all that it holds. Main thread only.
class EventLoopWait final {
public:
    using Callback = std::function<void()>;

    /// `start` is handed the callback, which is to be called at most once, and not before `start` has returned.
    explicit EventLoopWait(std::function<void(Callback)> start)
        : m_start{std::move(start)} {}

    [[nodiscard]] bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> coroutine) const {
        suspended().insert(coroutine.address());
        m_start([coroutine] {
            suspended().erase(coroutine.address());
            coroutine.resume();
        });
    }
    void await_resume() const noexcept {}

private:
    static std::set<void*>& suspended() {
        static auto* const frames = new std::set<void*>;
        return *frames;
    }

    std::function<void(Callback)> m_start;
};
