#pragma once

#include <QTimer>

#include <chrono>
#include <functional>
#include <utility>

/// Calls `tick` once an interval, first when one has passed, for as long as `owner` lives. The event loop's own unless
/// a test hands in another. Main thread only.
using Ticker =
    std::function<void(QObject& owner, std::chrono::milliseconds interval, const std::function<void()>& tick)>;

inline void timerTicker(QObject& owner, std::chrono::milliseconds interval, const std::function<void()>& tick) {
    auto* const timer = new QTimer{&owner};
    QObject::connect(timer, &QTimer::timeout, &owner, tick);
    timer->start(interval);
}

/// Calls `then` once, when `time` has passed, unless `owner` is gone by then. The event loop's own unless a test hands
/// in another. Main thread only.
using Delay = std::function<void(QObject& owner, std::chrono::milliseconds time, const std::function<void()>& then)>;

inline void timerDelay(QObject& owner, std::chrono::milliseconds time, const std::function<void()>& then) {
    QTimer::singleShot(time, &owner, then);
}
