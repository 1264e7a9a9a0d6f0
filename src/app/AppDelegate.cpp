#include "app/AppDelegate.h"

#include "daypart/DaypartController.h"
#include "system/NotificationService.h"

#include <utility>

AppDelegate::AppDelegate(NotificationService& notifications, std::function<void()> becomeAccessory, QObject* parent)
    : QObject{parent}
    , m_notifications{notifications}
    , m_becomeAccessory{std::move(becomeAccessory)} {}

void AppDelegate::applicationDidFinishLaunching() {
    m_becomeAccessory();
    requestNotifications(m_notifications);
}

QCoro::Task<> AppDelegate::requestNotifications(NotificationService& notifications) {
    co_await notifications.requestAuthorization();
    (void)DaypartController::shared();
}

#include "moc_AppDelegate.cpp"
