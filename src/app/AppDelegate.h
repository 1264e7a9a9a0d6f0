#pragma once

#include "platform/NotificationService.h"

#include <functional>
#include <utility>

class DaypartController;

/// What is done once when the process has launched. Main thread only; `notifications` must outlive it.
class AppDelegate final {
public:
    AppDelegate(NotificationService& notifications, std::function<void()> becomeAccessory,
                std::function<DaypartController&()> daypart)
        : m_notifications{notifications}
        , m_becomeAccessory{std::move(becomeAccessory)}
        , m_daypart{std::move(daypart)} {}

    /// Becomes an accessory of the desktop, then asks for notifications. Nothing waits for the answer; whatever it is,
    /// the daypart controller is there from then on.
    QCoro::Task<> applicationDidFinishLaunching() {
        const auto daypart = m_daypart; // this may be gone when the answer comes
        m_becomeAccessory();
        co_await m_notifications.requestAuthorization();
        (void)daypart();
    }

private:
    NotificationService& m_notifications;
    std::function<void()> m_becomeAccessory;
    std::function<DaypartController&()> m_daypart;
};
