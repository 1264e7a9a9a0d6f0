#include "system/NotificationService.h"

#include "support/FakeNotificationCenter.h"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using Authorization = NotificationService::Authorization;

namespace {

QCoro::Task<> notifyThenCount(NotificationService* service, QString title, QString body, int* finished) {
    auto posting = service->notify(title, body, NotificationService::freshIdentifier());
    co_await posting;
    ++*finished;
}

QCoro::Task<> readState(NotificationService* service, std::optional<Authorization>* state) {
    auto reading = service->authorizationStatus();
    *state = co_await reading;
}

QCoro::Task<> ask(NotificationService* service, std::optional<bool>* granted) {
    auto asking = service->requestAuthorization();
    *granted = co_await asking;
}

}

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
        int finished = 0;
        notifyThenCount(m_service.get(), u"same"_s, u"same"_s, &finished);
        notifyThenCount(m_service.get(), u"same"_s, u"same"_s, &finished);
        QCOMPARE(finished, 2);
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
        int finished = 0;
        notifyThenCount(m_service.get(), u"title"_s, u"body"_s, &finished);
        QCOMPARE(finished, 0);
        QCOMPARE(m_center->posted.size(), 1);
        QCOMPARE(m_center->posted.first().body, u"body"_s);
        m_center->answerAll();
        QCOMPARE(finished, 1);
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
            readState(m_service.get(), &answer);
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
        ask(m_service.get(), &answer);
        QCOMPARE(answer, granted);
        QCOMPARE(m_center->authorizationRequests, 1);
    }

    void whoWaitsGoesOnWhenTheCenterGoes() {
        m_center->answersAtOnce = false;
        int finished = 0;
        std::optional<Authorization> state;
        std::optional<bool> granted;
        notifyThenCount(m_service.get(), u"title"_s, u"body"_s, &finished);
        readState(m_service.get(), &state);
        ask(m_service.get(), &granted);
        m_service.reset();
        m_center.reset();
        QCOMPARE(finished, 1);
        QCOMPARE(state, Authorization::notDetermined);
        QCOMPARE(granted, false);
    }

private:
    std::unique_ptr<FakeNotificationCenter> m_center;
    std::unique_ptr<NotificationService> m_service;
};

QTEST_GUILESS_MAIN(TestNotificationService)
#include "TestNotificationService.moc"
