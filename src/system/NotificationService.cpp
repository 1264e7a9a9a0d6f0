#include "system/NotificationService.h"

#include "support/Deferred.h"

#include <QUuid>

NotificationService::NotificationService(NotificationCenter& center)
    : m_center{center} {}

/// Never destroyed: what the desktop's center is made of must not outlive the application's own end half alive.
NotificationService& NotificationService::shared() {
    static auto* const service = new NotificationService{*NotificationCenter::standard().release()};
    return *service;
}

QString NotificationService::freshIdentifier() {
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}

QCoro::Task<> NotificationService::notify(QString title, QString body, QString identifier) {
    const Deferred<bool> taken;
    const NotificationCenter::Request request{.title = title, .body = body, .identifier = identifier};
    m_center.post(request, [finish = taken.answer(false)] { finish(true); });
    (void)co_await taken;
}

QCoro::Task<NotificationService::Authorization> NotificationService::authorizationStatus() {
    const Deferred<Authorization> status;
    m_center.authorization(status.answer(Authorization::notDetermined));
    co_return co_await status;
}

QCoro::Task<bool> NotificationService::requestAuthorization() {
    const Deferred<bool> granted;
    m_center.requestAuthorization(granted.answer(false));
    co_return co_await granted;
}
