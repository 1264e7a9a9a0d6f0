#include "app/AppDelegate.h"

#include "daypart/DaypartController.h"
#include "platform/UserDefaults.h"
#include "support/FakeNotificationCenter.h"
#include "system/NotificationService.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using Authorization = NotificationService::Authorization;

namespace {

int timesMadeAccessory = 0;

void pin(Daypart daypart) {
    const auto defaults = UserDefaults::standard();
    defaults->setBoolean(QLatin1StringView{DaypartController::manualKey}, true);
    defaults->setString(QLatin1StringView{DaypartController::storageKey}, DaypartInfo::rawValue(daypart));
}

}

class TestAppDelegate final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void sharedDaypartIsThereWhenNotificationsWereAnswered();
    void asksOnceWhateverTheAnswer_data();
    void asksOnceWhateverTheAnswer();

private:
    QTemporaryDir m_folder;
};

void TestAppDelegate::initTestCase() {
    QVERIFY(m_folder.isValid());
    qputenv("XDG_CONFIG_HOME", m_folder.path().toUtf8());
}

void TestAppDelegate::init() {
    timesMadeAccessory = 0;
}

void TestAppDelegate::sharedDaypartIsThereWhenNotificationsWereAnswered() {
    FakeNotificationCenter center;
    NotificationService notifications{center};
    AppDelegate delegate{notifications, [] { ++timesMadeAccessory; }};
    pin(Daypart::dusk);
    delegate.applicationDidFinishLaunching();
    pin(Daypart::dawn);
    QCOMPARE(DaypartController::shared().daypart.value(), Daypart::dusk);
}

void TestAppDelegate::asksOnceWhateverTheAnswer_data() {
    QTest::addColumn<Authorization>("state");
    QTest::addColumn<bool>("answersAtOnce");
    QTest::newRow("granted") << Authorization::authorized << true;
    QTest::newRow("denied") << Authorization::denied << true;
    QTest::newRow("never answered") << Authorization::notDetermined << false;
}

void TestAppDelegate::asksOnceWhateverTheAnswer() {
    QFETCH(const Authorization, state);
    QFETCH(const bool, answersAtOnce);
    FakeNotificationCenter center;
    center.state = state;
    center.answersAtOnce = answersAtOnce;
    NotificationService notifications{center};
    AppDelegate delegate{notifications, [] { ++timesMadeAccessory; }};
    delegate.applicationDidFinishLaunching();
    QCOMPARE(timesMadeAccessory, 1);
    QCOMPARE(center.authorizationRequests, 1);
    QVERIFY(center.posted.isEmpty());
}

QTEST_GUILESS_MAIN(TestAppDelegate)
#include "TestAppDelegate.moc"
