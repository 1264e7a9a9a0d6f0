#pragma once

#include "platform/NotificationCenter.h"

/// Posts the companion's notifications and says whether the user allows them. Failures to post are silent. Main thread
/// only; `center` must outlive the service.
class NotificationService final {
public:
    using Authorization = NotificationCenter::Authorization;

    explicit NotificationService(NotificationCenter& center);

    /// The application's one service, over the desktop's own notification center.
    [[nodiscard]] static NotificationService& shared();

    /// A fresh random UUID in canonical upper-case form, so that no notification replaces another.
    [[nodiscard]] static QString freshIdentifier();

    /// Posts one notification at once, with the default sound; ends when it was taken or refused.
    QCoro::Task<> notify(const QString& title, const QString& body, const QString& identifier);

    /// What the user allows. Never asks.
    [[nodiscard]] QCoro::Task<Authorization> authorizationStatus();

    /// Asks the user for alerts, badges and sounds; true when granted.
    QCoro::Task<bool> requestAuthorization();

private:
    NotificationCenter& m_center;
};
