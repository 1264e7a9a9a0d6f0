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
