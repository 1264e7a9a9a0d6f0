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
    }

    void postsWhatItIsGiven() {
        m_service->notify(u"vorna"_s, u"Desktop notifications are working · Dusk"_s, u"an identifier"_s);
        QCOMPARE(m_center->posted.size(), 1);
        QCOMPARE(m_center->posted.first().title, u"vorna"_s);
        QCOMPARE(m_center->posted.first().body, u"Desktop notifications are working · Dusk"_s);
        QCOMPARE(m_center->posted.first().identifier, u"an identifier"_s);
        QCOMPARE(m_center->authorizationRequests, 0);
    }

    void equalNotificationsHaveIdentifiersOfTheirOwn() {
        m_finished = 0;
        notify(u"same"_s, u"same"_s);
        notify(u"same"_s, u"same"_s);
        QCOMPARE(m_finished, 2);
        QCOMPARE(m_center->posted.size(), 2);
        QVERIFY(m_center->posted.at(0).identifier != m_center->posted.at(1).identifier);
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
        m_finished = 0;
        notify(u"title"_s, u"body"_s);
        QCOMPARE(m_finished, 0);
        QCOMPARE(m_center->posted.size(), 1);
        QCOMPARE(m_center->posted.first().body, u"body"_s);
        m_center->answerAll();
        QCOMPARE(m_finished, 1);
    }

    void statusIsTheCentersAndNeverAsks_data() {
        QTest::addColumn<Authorization>("state");
        QTest::newRow("not determined") << Authorization::notDetermined;
        QTest::newRow("denied") << Authorization::denied;
        QTest::newRow("authorized") << Authorization::authorized;
        QTest::newRow("provisional") << Authorization::provisional;
        QTest::newRow("ephemeral") << Authorization::ephemeral;
        QTest::newRow("unrecognized") << Authorization::unrecognized;
    }

    void statusIsTheCentersAndNeverAsks() {
        QFETCH(Authorization, state);
        for (const bool atOnce : {true, false}) {
            m_center->state = state;
            m_center->answersAtOnce = atOnce;
            std::optional<Authorization> answer;
            m_service->authorizationStatus().then([&](Authorization read) { answer = read; });
            QCOMPARE(answer.has_value(), atOnce);
            m_center->answerAll();
            QCOMPARE(answer, state);
        }
        QCOMPARE(m_center->authorizationRequests, 0);
    }

    void asksAndSaysWhetherItWasGranted_data() {
        QTest::addColumn<Authorization>("state");
        QTest::addColumn<bool>("granted");
        QTest::newRow("granted") << Authorization::authorized << true;
        QTest::newRow("denied") << Authorization::denied << false;
    }

    void asksAndSaysWhetherItWasGranted() {
        QFETCH(Authorization, state);
        QFETCH(bool, granted);
        m_center->state = state;
        std::optional<bool> answer;
        m_service->requestAuthorization().then([&](bool read) { answer = read; });
        QCOMPARE(answer, granted);
        QCOMPARE(m_center->authorizationRequests, 1);
    }

    void whoWaitsGoesOnWhenTheCenterGoes() {
        m_center->answersAtOnce = false;
        m_finished = 0;
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
