#pragma once

#include "platform/NotificationCenter.h"

#include <QUuid>

/// Posts the companion's notifications and says whether the user allows them. Failures to post are silent. Main thread
/// only; `center` must outlive the service.
class NotificationService final {
public:
    using Authorization = NotificationCenter::Authorization;

    explicit NotificationService(NotificationCenter& center)
        : m_center{center} {}

    /// The application's one service, over the desktop's own notification center. Never destroyed: that center must
    /// not be taken apart after the application.
    [[nodiscard]] static NotificationService& shared() {
        static auto* const service = new NotificationService{*NotificationCenter::standard().release()};
        return *service;
    }

    /// A fresh random UUID in canonical upper-case form, so that no notification replaces another.
    [[nodiscard]] static QString freshIdentifier() {
        return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    }

    /// Posts one notification at once, with the default sound; ends when it was taken or refused.
    QCoro::Task<> notify(const QString& title, const QString& body, const QString& identifier) {
        return m_center.post({.title = title, .body = body, .identifier = identifier});
    }

    /// What the user allows. Never asks.
    [[nodiscard]] QCoro::Task<Authorization> authorizationStatus() { return m_center.authorization(); }

    /// Asks the user for alerts, badges and sounds; true when granted.
    QCoro::Task<bool> requestAuthorization() { return m_center.requestAuthorization(); }

private:
    NotificationCenter& m_center;
};
