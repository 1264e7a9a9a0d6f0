#include "support/FakeNotificationService.h"
#include "system/PermissionCenter.h"

#include <QSignalSpy>
#include <QtTest>

#include <memory>

using namespace Qt::StringLiterals;
using Authorization = NotificationService::Authorization;
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
    void init() {
        m_notifications = std::make_unique<FakeNotificationService>();
        m_isTrusted = false;
    }

    void isEmptyBeforeTheFirstRefresh() { QVERIFY(newCenter()->items->isEmpty()); }

    void listsSixPermissionsInOrder() {
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
        QCOMPARE(center->items.value(), expected);
    }

    void statesAreThoseOfTheProbes_data() {
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
    void statesAreThoseOfTheProbes() {
        QFETCH(Authorization, state);
        QFETCH(Status, status);
        const auto center = newCenter();
        for (const bool trusted : {false, true}) {
            m_notifications->state = state;
            m_isTrusted = trusted;
            center->refresh();
            QString listed;
            for (const Item& item : center->items.value()) {
                listed += item.id + u' ' + Item::rawValue(item.status) + u'\n';
            }
            QCOMPARE(listed, u"notifications %1\naccessibility %2\nautomation unknown\nfull-disk unknown\n"
                             "developer unknown\nnetwork-local unknown\n"_s.arg(Item::rawValue(status),
                                                                                trusted ? u"granted"_s : u"unknown"_s));
        }
    }

    void linksOnlyWhatThePlatformLinks() {
        const auto center =
            newCenter([](Pane pane) { return pane == Pane::accessibility ? everyLink(pane) : noLink(pane); });
        center->refresh();
        for (qsizetype row = 0; row < 6; ++row) {
            QCOMPARE(center->items->at(row).settingsURL.has_value(), row == 1);
        }
        QCOMPARE(*center->items->at(1).settingsURL, linkTo(Pane::accessibility));
    }

    void eachRefreshReplacesTheListInOneAssignment() {
        const auto center = newCenter();
        QList<QList<Item>> before;
        connect(center.get(), &ObservableObject::objectWillChange, this, [&] { before.append(center->items); });
        center->refresh();
        const QList<Item> first = center->items;
        center->refresh();
        QCOMPARE(before, (QList<QList<Item>>{{}, first}));
    }

    void laterOfTwoOverlappingRefreshesDecides() {
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

    void cancelledRefreshChangesNothingAndALaterOneCounts() {
        m_notifications->answersAtOnce = false;
        const auto center = newCenter();
        const QSignalSpy changes{center.get(), &ObservableObject::objectWillChange};
        center->refresh();
        center->cancelRefresh();
        m_notifications->answerAll();
        QCOMPARE(changes.size(), 0);
        QVERIFY(center->items->isEmpty());
        center->refresh();
        center->cancelRefresh();
        center->refresh();
        m_notifications->answerAll();
        QCOMPARE(changes.size(), 1);
        QCOMPARE(center->items->size(), 6);
    }

    void centerMayGoWhileARefreshIsUnderWay() {
        m_notifications->answersAtOnce = false;
        bool wasProbed = false;
        auto center = std::make_unique<PermissionCenter>(*m_notifications, [&] { return wasProbed = true; }, noLink);
        center->refresh();
        center.reset();
        m_notifications->answerAll();
        QVERIFY(!wasProbed);
    }

    void statusTextsGoBothWays() {
        const QStringList texts{u"granted"_s, u"denied"_s, u"notDetermined"_s, u"unknown"_s};
        for (const auto status : {Status::granted, Status::denied, Status::notDetermined, Status::unknown}) {
            QCOMPARE(Item::rawValue(status), texts.at(static_cast<int>(status)));
            QCOMPARE(Item::statusFromRawValue(Item::rawValue(status)), std::optional{status});
        }
        for (const QString& other : {u"Granted"_s, QString{}, u" denied"_s, u"not_determined"_s}) {
            QVERIFY(!Item::statusFromRawValue(other));
        }
    }

private:
    [[nodiscard]] std::unique_ptr<PermissionCenter> newCenter(PermissionCenter::PaneLink link = everyLink) {
        return std::make_unique<PermissionCenter>(*m_notifications, [this] { return m_isTrusted; }, std::move(link));
    }

    std::unique_ptr<FakeNotificationService> m_notifications;
    bool m_isTrusted = false;
};

QTEST_GUILESS_MAIN(TestPermissionCenter)

#include "TestPermissionCenter.moc"
