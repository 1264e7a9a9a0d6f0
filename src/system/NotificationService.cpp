#include "system/NotificationService.h"

#include <QUuid>

NotificationService::NotificationService(NotificationCenter& center)
    : m_center{center} {}

/// Never destroyed: the desktop's center must not be taken apart after the application.
NotificationService& NotificationService::shared() {
    static auto* const service = new NotificationService{*NotificationCenter::standard().release()};
    return *service;
}

QString NotificationService::freshIdentifier() {
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}

QCoro::Task<> NotificationService::notify(const QString& title, const QString& body, const QString& identifier) {
    return m_center.post({.title = title, .body = body, .identifier = identifier});
}

QCoro::Task<NotificationService::Authorization> NotificationService::authorizationStatus() {
    return m_center.authorization();
}

QCoro::Task<bool> NotificationService::requestAuthorization() {
    return m_center.requestAuthorization();
}
