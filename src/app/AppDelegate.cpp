#include "app/AppDelegate.h"

#include "system/NotificationService.h"

#include <utility>

AppDelegate::AppDelegate(NotificationService& notifications, std::function<void()> becomeAccessory,
                         std::function<DaypartController&()> daypart)
    : m_notifications{notifications}
    , m_becomeAccessory{std::move(becomeAccessory)}
    , m_daypart{std::move(daypart)} {}

void AppDelegate::applicationDidFinishLaunching() {
    m_becomeAccessory();
    requestNotifications(m_notifications, m_daypart);
}

QCoro::Task<> AppDelegate::requestNotifications(NotificationService& notifications,
                                                std::function<DaypartController&()> daypart) {
    co_await notifications.requestAuthorization();
    (void)daypart();
}
