#include "system/NotificationService.h"

#include "support/FakeNotificationCenter.h"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using Authorization = NotificationService::Authorization;

class TestNotificationService final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_center = std::make_unique<FakeNotificationCenter>();
        m_service = std::make_unique<NotificationService>(*m_center);
        m_finished = 0;
    }

    void postsWhatItIsGiven() {
        m_service->notify(u"vorna"_s, u"Desktop notifications are working · Dusk"_s, u"an identifier"_s);
        QCOMPARE(m_center->posted.size(), 1);
        QCOMPARE(m_center->posted.first().title, u"vorna"_s);
        QCOMPARE(m_center->posted.first().body, u"Desktop notifications are working · Dusk"_s);
        QCOMPARE(m_center->posted.first().identifier, u"an identifier"_s);
        QCOMPARE(m_center->authorizationRequests, 0);
    }

    void identifiersAreRandomUpperCaseUuids() {
        static const QRegularExpression form{
            u"^[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}$"_s};
        QSet<QString> identifiers;
        for (int i = 0; i < 1000; ++i) {
            const QString identifier = NotificationService::freshIdentifier();
            QVERIFY2(form.match(identifier).hasMatch(), qPrintable(identifier));
            identifiers.insert(identifier);
        }
        QCOMPARE(identifiers.size(), 1000);
    }

    void postingEndsWhenTheCenterHasTakenOrRefused() {
        m_center->answersAtOnce = false;
        m_center->state = Authorization::denied;
        notify(u"title"_s, u"body"_s);
        QCOMPARE(m_finished, 0);
        QCOMPARE(m_center->posted.size(), 1);
        m_center->answerAll();
        QCOMPARE(m_finished, 1);
    }

    void statusIsTheCentersAndNeverAsks() {
        using enum NotificationCenter::Authorization;
        for (const auto state : {notDetermined, denied, authorized, provisional, ephemeral, unrecognized}) {
            m_center->state = state;
            m_center->answersAtOnce = false;
            std::optional<Authorization> answer;
            m_service->authorizationStatus().then([&](Authorization read) { answer = read; });
            QVERIFY(!answer);
            m_center->answerAll();
            QCOMPARE(answer, state);
        }
        QCOMPARE(m_center->authorizationRequests, 0);
    }

    void asksAndSaysWhetherItWasGranted() {
        for (const auto state : {Authorization::authorized, Authorization::denied}) {
            m_center->state = state;
            QCOMPARE(QCoro::waitFor(m_service->requestAuthorization()), state == Authorization::authorized);
        }
        QCOMPARE(m_center->authorizationRequests, 2);
    }

    void whoWaitsGoesOnWhenTheCenterGoes() {
        m_center->answersAtOnce = false;
        std::optional<Authorization> state;
        std::optional<bool> granted;
        notify(u"title"_s, u"body"_s);
        m_service->authorizationStatus().then([&](Authorization read) { state = read; });
        m_service->requestAuthorization().then([&](bool read) { granted = read; });
        m_service.reset();
        m_center.reset();
        QCOMPARE(m_finished, 1);
        QCOMPARE(state, Authorization::notDetermined);
        QCOMPARE(granted, false);
    }

private:
    void notify(const QString& title, const QString& body) {
        m_service->notify(title, body, NotificationService::freshIdentifier()).then([this] { ++m_finished; });
    }

    int m_finished = 0;
    std::unique_ptr<FakeNotificationCenter> m_center;
    std::unique_ptr<NotificationService> m_service;
};

QTEST_GUILESS_MAIN(TestNotificationService)
#include "TestNotificationService.moc"
