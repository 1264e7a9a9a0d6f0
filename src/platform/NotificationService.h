#pragma once

#include <QCoro/QCoroTask>

#include <QString>
#include <QUuid>

#include <memory>

/// Posts local notifications and says whether the user allows them. Every operation starts at once, blocks nothing,
/// never fails, and resumes its caller on the main thread; it also ends when the service goes before there is an
/// answer. Main thread only.
class NotificationService {
public:
    enum class Authorization { notDetermined, denied, authorized, provisional, ephemeral, unrecognized };

    NotificationService() = default;
    NotificationService(const NotificationService&) = delete;
    NotificationService& operator=(const NotificationService&) = delete;
    virtual ~NotificationService() = default;

    /// The application's one service. Never destroyed: it must not be taken apart after the application.
    [[nodiscard]] static NotificationService& shared() {
        static auto* const service = standard().release();
        return *service;
    }

    /// A service of the desktop's.
    [[nodiscard]] static std::unique_ptr<NotificationService> standard();

    /// A fresh random UUID in canonical upper-case form, so that no notification replaces another.
    [[nodiscard]] static QString freshIdentifier() {
        return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    }

    /// Asks the user for alerts, badges and sounds; true when they were granted.
    virtual QCoro::Task<bool> requestAuthorization() = 0;

    /// What the user allows; never asks.
    [[nodiscard]] virtual QCoro::Task<Authorization> authorizationStatus() = 0;

    /// Posts one notification at once, with the default sound; ends when it was taken or refused, or waited for long
    /// enough, and does not say which.
    virtual QCoro::Task<> notify(QString title, QString body, QString identifier) = 0;
};
