#pragma once

#include <QDateTime>

#include <functional>

/// Where "now" comes from; the wall clock in the local time zone unless a test hands in another.
using Clock = std::function<QDateTime()>;

[[nodiscard]] inline QDateTime wallClock() {
    return QDateTime::currentDateTime();
}
