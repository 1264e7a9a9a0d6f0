#include "app/AppDelegate.h"

#include "daypart/DaypartController.h"
#include "platform/Launch.h"
#include "system/NotificationService.h"

AppDelegate::AppDelegate(NotificationService& notifications, QObject* parent)
    : QObject{parent}
    , m_notifications{notifications} {}

void AppDelegate::applicationDidFinishLaunching() {
    Launch::becomeAccessory();
    requestNotifications(m_notifications);
}

QCoro::Task<> AppDelegate::requestNotifications(NotificationService& notifications) {
    co_await notifications.requestAuthorization();
    (void)DaypartController::shared();
}

#include "moc_AppDelegate.cpp"
