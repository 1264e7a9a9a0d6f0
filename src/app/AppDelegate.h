#pragma once

#include <QCoro/QCoroTask>

#include <QObject>

class NotificationService;

/// What is done once when the process has launched. Main thread only; `notifications` must outlive it.
class AppDelegate final : public QObject {
    Q_OBJECT

public:
    explicit AppDelegate(NotificationService& notifications, QObject* parent = nullptr);

    /// Becomes an accessory of the desktop and asks for notifications; whatever the answer, nothing waits for it.
    void applicationDidFinishLaunching();

private:
    static QCoro::Task<> requestNotifications(NotificationService& notifications);

    NotificationService& m_notifications;
};
