#include "support/FakeNotificationCenter.h"
#include "system/NotificationService.h"
#include "system/PermissionCenter.h"

#include <QSignalSpy>
#include <QtTest>

#include <memory>

using namespace Qt::StringLiterals;
using Authorization = NotificationCenter::Authorization;
using Item = PermissionCenter::Item;
using Status = Item::Status;
using SystemSettings::Pane;

namespace {

QUrl linkTo(Pane pane) {
    return QUrl{u"pane:%1"_s.arg(static_cast<int>(pane))};
}

std::optional<QUrl> everyLink(Pane pane) {
    return linkTo(pane);
}

std::optional<QUrl> noLink(Pane) {
    return std::nullopt;
}

}

class TestPermissionCenter final : public QObject {
    Q_OBJECT

private slots:
    void init();

    void isEmptyBeforeTheFirstRefresh();
    void listsSixPermissionsInOrder();
    void mapsTheNotificationState_data();
    void mapsTheNotificationState();
    void accessibilityIsGrantedOrUnknownButNeverDenied();
    void lastFourAreUnknownOnEveryRefresh();
    void linksOnlyWhatThePlatformLinks();
    void localNetworkHasNoLinkEverywhere();
    void replacesTheListInOneAssignment();
    void announcesBeforeTheListChanges();
    void readsTheStatesAnewOnEachRefresh();
    void laterOfTwoOverlappingRefreshesDecides();
    void cancelledRefreshChangesNothing();
    void refreshAfterACancelledOneStillCounts();
    void centerMayGoWhileARefreshIsUnderWay();
    void statusTextsGoBothWays_data();
    void statusTextsGoBothWays();
    void otherTextsAreNoStatus_data();
    void otherTextsAreNoStatus();

private:
    [[nodiscard]] std::unique_ptr<PermissionCenter> newCenter(PermissionCenter::PaneLink link = everyLink) {
        return std::make_unique<PermissionCenter>(*m_service, [this] { return m_isTrusted; }, std::move(link));
    }

    std::unique_ptr<FakeNotificationCenter> m_notifications;
    std::unique_ptr<NotificationService> m_service;
    bool m_isTrusted = false;
};

void TestPermissionCenter::init() {
    m_notifications = std::make_unique<FakeNotificationCenter>();
    m_service = std::make_unique<NotificationService>(*m_notifications);
    m_isTrusted = false;
}

void TestPermissionCenter::isEmptyBeforeTheFirstRefresh() {
    QVERIFY(newCenter()->items->isEmpty());
}

void TestPermissionCenter::listsSixPermissionsInOrder() {
    const auto center = newCenter();
    center->refresh();
    const QList<Item> expected{
        {u"notifications"_s, u"Notifications"_s, u"WARDEN alerts, vote requests, desk events"_s, Status::granted,
         linkTo(Pane::notifications)},
        {u"accessibility"_s, u"Accessibility"_s, u"Optional UI automation (gated features only)"_s, Status::unknown,
         linkTo(Pane::accessibility)},
        {u"automation"_s, u"Automation (Apple Events)"_s, u"Control iTerm / Terminal when recovering desk"_s,
         Status::unknown, linkTo(Pane::automation)},
        {u"full-disk"_s, u"Full Disk Access"_s, u"Optional deep read of ~/dev/logs and protected paths"_s,
         Status::unknown, linkTo(Pane::fullDiskAccess)},
        {u"developer"_s, u"Developer Tools"_s, u"Xcode CLT / debugging attach for agent tooling"_s, Status::unknown,
         linkTo(Pane::developerTools)},
        {u"network-local"_s, u"Local Network"_s, u"Talk to vorna bridge on 127.0.0.1 and .vorna.localhost"_s,
         Status::unknown, std::nullopt},
    };
    QCOMPARE(center->items->size(), expected.size());
    for (qsizetype row = 0; row < expected.size(); ++row) {
        QCOMPARE(center->items->at(row).id, expected.at(row).id);
        QCOMPARE(center->items->at(row).title, expected.at(row).title);
        QCOMPARE(center->items->at(row).detail, expected.at(row).detail);
        QVERIFY(center->items->at(row) == expected.at(row));
    }
}

void TestPermissionCenter::mapsTheNotificationState_data() {
    QTest::addColumn<Authorization>("state");
    QTest::addColumn<Status>("status");
    QTest::newRow("not determined") << Authorization::notDetermined << Status::notDetermined;
    QTest::newRow("denied") << Authorization::denied << Status::denied;
    QTest::newRow("authorized") << Authorization::authorized << Status::granted;
    QTest::newRow("provisional") << Authorization::provisional << Status::granted;
    QTest::newRow("ephemeral") << Authorization::ephemeral << Status::granted;
    QTest::newRow("unrecognized") << Authorization::unrecognized << Status::unknown;
    // NOLINTNEXTLINE(clang-analyzer-optin.core.EnumCastOutOfRange): that is what is tested.
    QTest::newRow("of the future") << static_cast<Authorization>(99) << Status::unknown;
}

void TestPermissionCenter::mapsTheNotificationState() {
    QFETCH(Authorization, state);
    QFETCH(Status, status);
    m_notifications->state = state;
    const auto center = newCenter();
    center->refresh();
    QCOMPARE(center->items->size(), 6);
    QCOMPARE(center->items->at(0).status, status);
}

void TestPermissionCenter::accessibilityIsGrantedOrUnknownButNeverDenied() {
    const auto center = newCenter();
    center->refresh();
    QCOMPARE(center->items->at(1).status, Status::unknown);
    m_isTrusted = true;
    center->refresh();
    QCOMPARE(center->items->at(1).status, Status::granted);
}

void TestPermissionCenter::lastFourAreUnknownOnEveryRefresh() {
    const auto center = newCenter();
    m_isTrusted = true;
    for (const auto state : {Authorization::authorized, Authorization::denied, Authorization::notDetermined}) {
        m_notifications->state = state;
        center->refresh();
        for (qsizetype row = 2; row < 6; ++row) {
            QCOMPARE(center->items->at(row).status, Status::unknown);
        }
    }
}

void TestPermissionCenter::linksOnlyWhatThePlatformLinks() {
    const auto center =
        newCenter([](Pane pane) { return pane == Pane::accessibility ? everyLink(pane) : noLink(pane); });
    center->refresh();
    for (qsizetype row = 0; row < 6; ++row) {
        QCOMPARE(center->items->at(row).settingsURL.has_value(), row == 1);
    }
    QCOMPARE(*center->items->at(1).settingsURL, linkTo(Pane::accessibility));
}

void TestPermissionCenter::localNetworkHasNoLinkEverywhere() {
    const auto center = newCenter(everyLink);
    center->refresh();
    QVERIFY(!center->items->at(5).settingsURL);
}

void TestPermissionCenter::replacesTheListInOneAssignment() {
    const auto center = newCenter();
    const QSignalSpy changes{center.get(), &ObservableObject::objectWillChange};
    center->refresh();
    QCOMPARE(changes.size(), 1);
    center->refresh();
    QCOMPARE(changes.size(), 2);
}

void TestPermissionCenter::announcesBeforeTheListChanges() {
    const auto center = newCenter();
    qsizetype rowsAtAnnouncement = -1;
    connect(center.get(), &ObservableObject::objectWillChange, this,
            [&] { rowsAtAnnouncement = center->items->size(); });
    center->refresh();
    QCOMPARE(rowsAtAnnouncement, 0);
    QCOMPARE(center->items->size(), 6);
}

void TestPermissionCenter::readsTheStatesAnewOnEachRefresh() {
    const auto center = newCenter();
    m_notifications->state = Authorization::notDetermined;
    center->refresh();
    m_notifications->state = Authorization::denied;
    QCOMPARE(center->items->at(0).status, Status::notDetermined);
    center->refresh();
    QCOMPARE(center->items->at(0).status, Status::denied);
}

void TestPermissionCenter::laterOfTwoOverlappingRefreshesDecides() {
    m_notifications->answersAtOnce = false;
    const auto center = newCenter();
    const QSignalSpy changes{center.get(), &ObservableObject::objectWillChange};
    center->refresh();
    center->refresh();
    QVERIFY(center->items->isEmpty());
    m_notifications->state = Authorization::denied;
    m_notifications->answerAll();
    QCOMPARE(changes.size(), 2);
    QCOMPARE(center->items->size(), 6);
    QCOMPARE(center->items->at(0).status, Status::denied);
}

void TestPermissionCenter::cancelledRefreshChangesNothing() {
    m_notifications->answersAtOnce = false;
    const auto center = newCenter();
    const QSignalSpy changes{center.get(), &ObservableObject::objectWillChange};
    center->refresh();
    center->cancelRefresh();
    m_notifications->answerAll();
    QCOMPARE(changes.size(), 0);
    QVERIFY(center->items->isEmpty());
}

void TestPermissionCenter::refreshAfterACancelledOneStillCounts() {
    m_notifications->answersAtOnce = false;
    const auto center = newCenter();
    const QSignalSpy changes{center.get(), &ObservableObject::objectWillChange};
    center->refresh();
    center->cancelRefresh();
    center->refresh();
    m_notifications->answerAll();
    QCOMPARE(changes.size(), 1);
    QCOMPARE(center->items->size(), 6);
}

void TestPermissionCenter::centerMayGoWhileARefreshIsUnderWay() {
    m_notifications->answersAtOnce = false;
    bool wasProbed = false;
    auto center = std::make_unique<PermissionCenter>(*m_service, [&] { return wasProbed = true; }, noLink);
    center->refresh();
    center.reset();
    m_notifications->answerAll();
    QVERIFY(!wasProbed);
}

void TestPermissionCenter::statusTextsGoBothWays_data() {
    QTest::addColumn<Status>("status");
    QTest::addColumn<QString>("text");
    QTest::newRow("granted") << Status::granted << u"granted"_s;
    QTest::newRow("denied") << Status::denied << u"denied"_s;
    QTest::newRow("notDetermined") << Status::notDetermined << u"notDetermined"_s;
    QTest::newRow("unknown") << Status::unknown << u"unknown"_s;
}

void TestPermissionCenter::statusTextsGoBothWays() {
    QFETCH(Status, status);
    QFETCH(QString, text);
    QCOMPARE(Item::rawValue(status), text);
    QCOMPARE(Item::statusFromRawValue(text), std::optional{status});
}

void TestPermissionCenter::otherTextsAreNoStatus_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("capitalised") << u"Granted"_s;
    QTest::newRow("empty") << QString{};
    QTest::newRow("padded") << u" denied"_s;
    QTest::newRow("snake case") << u"not_determined"_s;
}

void TestPermissionCenter::otherTextsAreNoStatus() {
    QFETCH(QString, text);
    QVERIFY(!Item::statusFromRawValue(text));
}

QTEST_GUILESS_MAIN(TestPermissionCenter)

#include "TestPermissionCenter.moc"
