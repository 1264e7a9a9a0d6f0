#pragma once

#include <QCoro/QCoroTask>

#include <functional>

class DaypartController;
class NotificationService;

/// What is done once when the process has launched. Main thread only; `notifications` must outlive it.
class AppDelegate final {
public:
    AppDelegate(NotificationService& notifications, std::function<void()> becomeAccessory,
                std::function<DaypartController&()> daypart);

    /// Becomes an accessory of the desktop, then asks for notifications. Nothing waits for the answer; whatever it is,
    /// the daypart controller is there from then on.
    void applicationDidFinishLaunching();

private:
    static QCoro::Task<> requestNotifications(NotificationService& notifications,
                                              std::function<DaypartController&()> daypart);

    NotificationService& m_notifications;
    std::function<void()> m_becomeAccessory;
    std::function<DaypartController&()> m_daypart;
};
