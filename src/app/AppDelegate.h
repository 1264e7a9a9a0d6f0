#pragma once

#include "platform/Desktop.h"

#include <QCoro/QCoroTask>

#include <QObject>

#include <functional>

class NotificationService;

/// What is done once when the process has launched. Main thread only; `notifications` must outlive it.
class AppDelegate final : public QObject {
    Q_OBJECT

public:
    explicit AppDelegate(NotificationService& notifications,
                         std::function<void()> becomeAccessory = Desktop::becomeAccessory, QObject* parent = nullptr);

    /// Becomes an accessory of the desktop and asks for notifications; whatever the answer, nothing waits for it.
    void applicationDidFinishLaunching();

private:
    static QCoro::Task<> requestNotifications(NotificationService& notifications);

    NotificationService& m_notifications;
    std::function<void()> m_becomeAccessory;
};
