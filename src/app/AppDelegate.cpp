#include "app/AppDelegate.h"

#include "platform/NotificationService.h"

QCoro::Task<> AppDelegate::applicationDidFinishLaunching() {
    const auto daypart = m_daypart; // this may be gone when the answer comes
    m_becomeAccessory();
    co_await m_notifications.requestAuthorization();
    (void)daypart();
}
