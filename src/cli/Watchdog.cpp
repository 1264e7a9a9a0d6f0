#include "cli/Watchdog.h"

#include "cli/ChildProcess.h"

#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr auto pollInterval = 100ms;

/// Seconds as a floating-point number, so that any limit, however absurd, can be added and compared.
double wallClockSeconds() {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

}

Watchdog::Watchdog()
    : m_thread{&Watchdog::guard, this} {}

Watchdog::~Watchdog() {
    if (m_child == nullptr) {
        m_told.count_down();
    }
    m_thread.join();
}

void Watchdog::watch(const ChildProcess& child, double timeout) {
    m_child = &child;
    m_timeout = timeout;
    m_told.count_down();
    m_finished.wait();
}

void Watchdog::guard() {
    m_told.wait();
    if (m_child != nullptr) {
        const double deadline = wallClockSeconds() + m_timeout;
        while (m_child->isRunning() && wallClockSeconds() < deadline) {
            std::this_thread::sleep_for(pollInterval);
        }
        if (m_child->isRunning()) {
            m_child->terminate();
        }
    }
    m_finished.count_down();
}
