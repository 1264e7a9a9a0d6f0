#include "platform/NotificationCenter.h"

#include "Doubles.h"

#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <memory>

using namespace Qt::StringLiterals;

using Authorization = NotificationCenter::Authorization;

namespace {

constexpr quint64 alertBadgeAndSound = 7;
constexpr quint64 bannerListAndSound = 26;

const NotificationCenter::Request request{
    .title = u"Grüße 😀"_s, .body = u"a \"body\"\nof <two> lines"_s, .identifier = u"AB-12"_s};

bool onMainThread() {
    return QThread::currentThread() == qApp->thread();
}

}

class TestNotificationCenter final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void asksForAlertsBadgesAndSounds();
    void saysWhetherTheyWereGranted_data();
    void saysWhetherTheyWereGranted();
    void everyStatusHasItsName_data();
    void everyStatusHasItsName();
    void postsWhatItWasGiven();
    void saysDoneAlsoWhenRefused();
    void everyAnswerComesOnTheMainThread();
    void answersGoToThoseWhoAsked();
    void whoWaitsGoesOnOnceTheCenterIsGone();
    void theCenterMayGoInItsOwnAnswer();
    void presentsNotificationsWhileInFront();
    void leavesNoDelegateBehind();
    void answersAtOnceWithoutACenter_data();
    void answersAtOnceWithoutACenter();
};

void TestNotificationCenter::init() {
    Doubles::reset();
}

void TestNotificationCenter::asksForAlertsBadgesAndSounds() {
    const auto center = NotificationCenter::standard();
    int answers = 0;
    center->requestAuthorization().then([&](bool) { ++answers; });
    QTRY_COMPARE(answers, 1);
    QCOMPARE(Doubles::state().authorizationOptions, alertBadgeAndSound);
}

void TestNotificationCenter::saysWhetherTheyWereGranted_data() {
    QTest::addColumn<bool>("grants");
    QTest::addColumn<bool>("fails");
    QTest::newRow("granted") << true << false;
    QTest::newRow("denied") << false << false;
    QTest::newRow("failed") << false << true;
}

void TestNotificationCenter::saysWhetherTheyWereGranted() {
    QFETCH(bool, grants);
    QFETCH(bool, fails);
    Doubles::state().grants = grants;
    Doubles::state().fails = fails;
    const auto center = NotificationCenter::standard();
    std::optional<bool> answer;
    center->requestAuthorization().then([&](bool granted) { answer = granted; });
    QTRY_COMPARE(answer, std::optional{grants});
}

void TestNotificationCenter::everyStatusHasItsName_data() {
    QTest::addColumn<int>("status");
    QTest::addColumn<Authorization>("expected");
    QTest::newRow("not determined") << 0 << Authorization::notDetermined;
    QTest::newRow("denied") << 1 << Authorization::denied;
    QTest::newRow("authorized") << 2 << Authorization::authorized;
    QTest::newRow("provisional") << 3 << Authorization::provisional;
    QTest::newRow("ephemeral") << 4 << Authorization::ephemeral;
    QTest::newRow("of the future") << 5 << Authorization::unrecognized;
    QTest::newRow("negative") << -1 << Authorization::unrecognized;
}

void TestNotificationCenter::everyStatusHasItsName() {
    QFETCH(int, status);
    Doubles::state().authorizationStatus = status;
    const auto center = NotificationCenter::standard();
    std::optional<Authorization> answer;
    center->authorization().then([&](Authorization authorization) { answer = authorization; });
    QVERIFY(!answer);
    QTRY_VERIFY(answer);
    QTEST(*answer, "expected");
    QCOMPARE(Doubles::state().authorizationOptions, quint64{0});
}

void TestNotificationCenter::postsWhatItWasGiven() {
    const auto center = NotificationCenter::standard();
    int done = 0;
    center->post(request).then([&] { ++done; });
    QTRY_COMPARE(done, 1);
    QCOMPARE(Doubles::state().requests.size(), 1);
    const auto& posted = Doubles::state().requests.first();
    QCOMPARE(posted.identifier, request.identifier);
    QCOMPARE(posted.title, request.title);
    QCOMPARE(posted.body, request.body);
    QVERIFY(posted.subtitle.isEmpty());
    QVERIFY(posted.hasDefaultSound);
    QVERIFY(!posted.hasTrigger);
    QVERIFY(!posted.hasBadge);
}

void TestNotificationCenter::saysDoneAlsoWhenRefused() {
    Doubles::state().fails = true;
    const auto center = NotificationCenter::standard();
    int done = 0;
    center->post(request).then([&] { ++done; });
    QTRY_COMPARE(done, 1);
    QCOMPARE(Doubles::state().requests.size(), 1);
}

void TestNotificationCenter::everyAnswerComesOnTheMainThread() {
    const auto center = NotificationCenter::standard();
    int onMain = 0;
    center->requestAuthorization().then([&](bool) { onMain += onMainThread() ? 1 : 0; });
    center->authorization().then([&](Authorization) { onMain += onMainThread() ? 1 : 0; });
    center->post(request).then([&] { onMain += onMainThread() ? 1 : 0; });
    QTRY_COMPARE(onMain, 3);
}

void TestNotificationCenter::answersGoToThoseWhoAsked() {
    Doubles::state().holdsAnswers = true;
    Doubles::state().authorizationStatus = 2;
    const auto center = NotificationCenter::standard();
    QStringList answers;
    center->post(request).then([&] { answers.append(u"posted"_s); });
    center->authorization().then(
        [&](Authorization status) { answers.append(status == Authorization::authorized ? u"authorized"_s : u"?"_s); });
    center->requestAuthorization().then([&](bool granted) { answers.append(granted ? u"granted"_s : u"?"_s); });
    Doubles::answerAll();
    QVERIFY(answers.isEmpty());
    QTRY_COMPARE(answers, (QStringList{u"posted"_s, u"authorized"_s, u"granted"_s}));
}

void TestNotificationCenter::whoWaitsGoesOnOnceTheCenterIsGone() {
    Doubles::state().holdsAnswers = true;
    Doubles::state().grants = true;
    Doubles::state().authorizationStatus = 2;
    auto center = NotificationCenter::standard();
    std::optional<bool> granted;
    std::optional<Authorization> status;
    int done = 0;
    center->requestAuthorization().then([&](bool answer) { granted = answer; });
    center->authorization().then([&](Authorization answer) { status = answer; });
    center->post(request).then([&] { ++done; });
    QVERIFY(!granted && !status && done == 0);
    center.reset();
    QCOMPARE(granted, std::optional{false});
    QCOMPARE(status, std::optional{Authorization::notDetermined});
    QCOMPARE(done, 1);
    Doubles::answerAll();
    QCoreApplication::processEvents();
    QCOMPARE(done, 1);
}

void TestNotificationCenter::theCenterMayGoInItsOwnAnswer() {
    auto center = NotificationCenter::standard();
    int answers = 0;
    center->authorization().then([&](Authorization) {
        center.reset();
        ++answers;
    });
    QTRY_COMPARE(answers, 1);
}

void TestNotificationCenter::presentsNotificationsWhileInFront() {
    const auto center = NotificationCenter::standard();
    QCOMPARE(Doubles::presentation(), std::optional{bannerListAndSound});
}

void TestNotificationCenter::leavesNoDelegateBehind() {
    NotificationCenter::standard().reset();
    QCOMPARE(Doubles::presentation(), std::nullopt);
}

void TestNotificationCenter::answersAtOnceWithoutACenter_data() {
    QTest::addColumn<bool>("hasBundle");
    QTest::newRow("without a bundle") << false;
    QTest::newRow("a bundle that the system does not know") << true;
}

void TestNotificationCenter::answersAtOnceWithoutACenter() {
    QFETCH(bool, hasBundle);
    hasBundle ? Doubles::state().bundleIsUnknown = true : (Doubles::state().bundleIdentifier.reset(), false);
    const auto center = NotificationCenter::standard();
    std::optional<bool> granted;
    std::optional<Authorization> status;
    int done = 0;
    center->requestAuthorization().then([&](bool answer) { granted = answer; });
    center->authorization().then([&](Authorization answer) { status = answer; });
    center->post(request).then([&] { ++done; });
    QCOMPARE(granted, std::optional{false});
    QCOMPARE(status, std::optional{Authorization::notDetermined});
    QCOMPARE(done, 1);
    QCOMPARE(Doubles::state().centersAskedFor, hasBundle ? 1 : 0);
    QVERIFY(Doubles::state().requests.isEmpty());
}

QTEST_MAIN(TestNotificationCenter)
#include "TestNotificationCenter.moc"
