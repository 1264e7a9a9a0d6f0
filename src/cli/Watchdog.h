#pragma once

#include <latch>
#include <thread>

class ChildProcess;

/// Ends a child that outlives its time, from a thread of its own. The thread is there before the child is, so that no
/// child runs unwatched. Plain C++, no Qt.
class Watchdog final {
public:
    /// Throws `std::system_error` when there is no thread to be had.
    Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;
    ~Watchdog();

    /// Looks at the child every 0.1 seconds and returns when it has ended, or when `timeout` seconds of wall-clock time
    /// have passed and it was asked to terminate, once. To be called at most once.
    void watch(const ChildProcess& child, double timeout);

private:
    void guard();

    const ChildProcess* m_child = nullptr;
    double m_timeout = 0;
    std::latch m_told{1};
    std::latch m_finished{1};
    std::thread m_thread;
};
