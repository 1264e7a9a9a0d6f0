#include "system/NotificationService.h"

#include "support/Deferred.h"

#include <QUuid>

#include <variant>

NotificationService::NotificationService(NotificationCenter& center)
    : m_center{center} {}

NotificationService& NotificationService::shared() {
    static const auto center = NotificationCenter::standard();
    static NotificationService service{*center};
    return service;
}

QString NotificationService::freshIdentifier() {
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}

QCoro::Task<> NotificationService::notify(QString title, QString body, QString identifier) {
    const Deferred<std::monostate> taken;
    m_center.post({title, body, identifier}, [taken] { taken.deliver({}); });
    co_await taken;
}

QCoro::Task<NotificationService::Authorization> NotificationService::authorizationStatus() {
    const Deferred<Authorization> answer;
    m_center.authorization([answer](Authorization status) { answer.deliver(status); });
    co_return co_await answer;
}

QCoro::Task<bool> NotificationService::requestAuthorization() {
    const Deferred<bool> answer;
    m_center.requestAuthorization([answer](bool granted) { answer.deliver(granted); });
    co_return co_await answer;
}
