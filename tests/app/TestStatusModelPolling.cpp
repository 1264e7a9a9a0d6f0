#include "app/StatusModel.h"

#include "support/FakeNotificationCenter.h"
#include "support/FakeTool.h"
#include "support/ModelRecord.h"
#include "support/ScriptedPeer.h"
#include "system/NotificationService.h"

#include <QTest>
#include <QTimer>

#include <chrono>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Band = StatusModel::Band;
using End = ScriptedPeer::End;
using Poll = void (*)(StatusModel&);

Q_DECLARE_METATYPE(Poll)

namespace {

const QByteArray payload = R"({"host":{"hostname":"desk","cpu_load_1m":1.5,"memory_used_pct":64,"disk_used_pct":70},
    "caddy_sites_up":1,"caddy_sites_total":1,
    "services":[{"name":"caddy.process","ok":true,"detail":"running"},{"name":"postgres","ok":true,"detail":"5432"}]})";

const QDateTime noon{QDate{2026, 1, 15}, QTime{12, 0}};

}

class TestStatusModelPolling final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void initialValuesAreAsDeclared();
    void nothingStartsByItself();
    void bandsHaveTheirRawValues();
    void symbolFollowsBridgeAndBand_data();
    void symbolFollowsBridgeAndBand();

    void pollWritesInOrder_data();
    void pollWritesInOrder();
    void pollKeepsHostFiguresWhenBridgeIsUnreachable();
    void healthyBridgeWithoutDataKeepsPostgres();
    void recoveredBridgeClearsTheError();
    void unhealthyBridgeIsNotAskedForItsMonitor();
    void lastPollMovesForwardAlsoWhenPollsFail();

    void startPollsAtOnceAndOnceMoreEachTime();
    void timerTicksEveryFiveSecondsAndPollsOnly();
    void overlappingPollsBothComplete_data();
    void overlappingPollsBothComplete();
    void whicheverPollEndsLastDecides();

    void teardownInMidPollIsHarmless_data();
    void teardownInMidPollIsHarmless();

private:
    [[nodiscard]] std::unique_ptr<StatusModel> makeModel() {
        return std::make_unique<StatusModel>(m_notifications, m_tool->runner(), m_peer->baseUrl(),
                                             [this] { return m_now; });
    }
    static QTimer* timerOf(const StatusModel& model) { return model.findChild<QTimer*>(); }
    static void pollToItsEnd(StatusModel& model) {
        model.poll();
        QTRY_VERIFY(!model.polling);
    }

    FakeNotificationCenter m_center;
    NotificationService m_notifications{m_center};
    std::unique_ptr<FakeTool> m_tool;
    std::unique_ptr<ScriptedPeer> m_peer;
    QDateTime m_now;
};

void TestStatusModelPolling::init() {
    m_tool = std::make_unique<FakeTool>();
    m_peer = std::make_unique<ScriptedPeer>();
    m_peer->setScript("/health", ScriptedPeer::plain(200));
    m_peer->setScript("/monitor/desktop", ScriptedPeer::plain(200, payload));
    m_now = noon;
}

void TestStatusModelPolling::initialValuesAreAsDeclared() {
    const auto model = makeModel();
    QCOMPARE(ModelRecord::describe(*model),
             (QStringList{u"bridgeOnline = false"_s, u"caddyBand = unknown"_s, u"caddyDetail = —"_s,
                          u"postgresOk = absent"_s, u"postgresDetail = —"_s, u"hostLoad = —"_s, u"hostMemory = —"_s,
                          u"hostDisk = —"_s, u"hostname = "_s, u"services = []"_s, u"lastPoll = absent"_s,
                          u"lastError = absent"_s, u"polling = false"_s, u"cliBusy = false"_s, u"cliMessage = absent"_s,
                          u"accountLine = Not signed in"_s}));
    QCOMPARE(StatusModel::defaultBridge().toString(), u"http://127.0.0.1:43105"_s);
}

void TestStatusModelPolling::nothingStartsByItself() {
    const auto model = makeModel();
    QVERIFY(timerOf(*model) == nullptr);
    QTest::qWait(50);
    QCOMPARE(m_peer->connections, 0);
    QCOMPARE(m_tool->calls.size(), 0);
}

void TestStatusModelPolling::bandsHaveTheirRawValues() {
    for (const auto& [band, rawValue] : {std::pair{Band::green, u"green"_s}, std::pair{Band::amber, u"amber"_s},
                                         std::pair{Band::red, u"red"_s}, std::pair{Band::unknown, u"unknown"_s}}) {
        QCOMPARE(StatusModel::rawValue(band), rawValue);
        QVERIFY(StatusModel::bandFromRawValue(rawValue) == band);
        QVERIFY(!StatusModel::bandFromRawValue(rawValue.toUpper()));
    }
    QVERIFY(!StatusModel::bandFromRawValue(u""));
    QVERIFY(!StatusModel::bandFromRawValue(u"blue"));
}

void TestStatusModelPolling::symbolFollowsBridgeAndBand_data() {
    QTest::addColumn<bool>("online");
    QTest::addColumn<Band>("band");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<QString>("meaning");
    for (const auto band : {Band::green, Band::amber, Band::red, Band::unknown}) {
        QTest::addRow("offline %d", static_cast<int>(band))
            << false << band << u"antenna.radiowaves.left.and.right.slash"_s << u"bridge offline"_s;
    }
    QTest::newRow("green") << true << Band::green << u"checkmark.circle.fill"_s << u"all well"_s;
    QTest::newRow("amber") << true << Band::amber << u"exclamationmark.triangle.fill"_s << u"degraded"_s;
    QTest::newRow("red") << true << Band::red << u"xmark.octagon.fill"_s << u"down"_s;
    QTest::newRow("unknown") << true << Band::unknown << u"circle.dashed"_s << u"state unknown"_s;
}

void TestStatusModelPolling::symbolFollowsBridgeAndBand() {
    QFETCH(const bool, online);
    QFETCH(const Band, band);
    QFETCH(const QString, symbol);
    const auto model = makeModel();
    model->bridgeOnline = online;
    model->caddyBand = band;
    QCOMPARE(model->menuBarSymbol(), symbol);
    QTEST(model->menuBarMeaning(), "meaning");
}

void TestStatusModelPolling::pollWritesInOrder_data() {
    QTest::addColumn<bool>("reachable");
    QTest::addColumn<int>("health");
    QTest::addColumn<int>("monitor");
    QTest::addColumn<QStringList>("writes");

    QTest::newRow("unreachable") << false << 0 << 0
                                 << QStringList{u"polling = true"_s,
                                                u"bridgeOnline = false"_s,
                                                u"caddyBand = unknown"_s,
                                                u"caddyDetail = bridge unreachable"_s,
                                                u"lastError = Could not connect to the server."_s,
                                                u"lastPoll = 2026-01-15T12:00:00"_s,
                                                u"services = []"_s,
                                                u"postgresOk = absent"_s,
                                                u"polling = false"_s};
    QTest::newRow("offline") << true << 503 << 200
                             << QStringList{u"polling = true"_s,      u"bridgeOnline = false"_s,
                                            u"caddyBand = unknown"_s, u"caddyDetail = bridge offline"_s,
                                            u"services = []"_s,       u"postgresOk = absent"_s,
                                            u"lastError = absent"_s,  u"lastPoll = 2026-01-15T12:00:00"_s,
                                            u"polling = false"_s};
    QTest::newRow("without data") << true << 200 << 500
                                  << QStringList{u"polling = true"_s,
                                                 u"bridgeOnline = true"_s,
                                                 u"caddyBand = green"_s,
                                                 u"caddyDetail = bridge ok"_s,
                                                 u"services = []"_s,
                                                 u"lastError = absent"_s,
                                                 u"lastPoll = 2026-01-15T12:00:00"_s,
                                                 u"polling = false"_s};
    QTest::newRow("full") << true << 200 << 200
                          << QStringList{u"polling = true"_s,
                                         u"bridgeOnline = true"_s,
                                         u"hostname = desk"_s,
                                         u"hostLoad = 1.50"_s,
                                         u"hostMemory = 64%"_s,
                                         u"hostDisk = 70%"_s,
                                         u"caddyBand = green"_s,
                                         u"caddyDetail = running"_s,
                                         u"caddyDetail = running · 1/1 sites"_s,
                                         u"nothing"_s,
                                         u"postgresDetail = 5432"_s,
                                         u"services = [caddy.process, postgres]"_s,
                                         u"lastError = absent"_s,
                                         u"lastPoll = 2026-01-15T12:00:00"_s,
                                         u"polling = false"_s};
}

void TestStatusModelPolling::pollWritesInOrder() {
    QFETCH(const bool, reachable);
    QFETCH(const int, health);
    QFETCH(const int, monitor);
    QFETCH(const QStringList, writes);
    m_peer->setScript("/health", ScriptedPeer::plain(health));
    m_peer->setScript("/monitor/desktop", ScriptedPeer::plain(monitor, payload));
    const auto model = makeModel();
    ModelRecord::fill(*model);
    model->bridgeOnline = !reachable || health != 200;
    if (!reachable) {
        m_peer->close();
    }
    ModelRecord record{*model};

    model->poll();
    QVERIFY(model->polling);
    QTRY_VERIFY(!model->polling);
    QCOMPARE(record.take(), writes);
}

void TestStatusModelPolling::pollKeepsHostFiguresWhenBridgeIsUnreachable() {
    const auto model = makeModel();
    pollToItsEnd(*model);
    m_peer->close();
    pollToItsEnd(*model);

    QVERIFY(!model->bridgeOnline);
    QCOMPARE(model->menuBarSymbol(), u"antenna.radiowaves.left.and.right.slash"_s);
    QCOMPARE(model->caddyDetail.value(), u"bridge unreachable"_s);
    QVERIFY(model->lastError.value() == u"Could not connect to the server."_s);
    QVERIFY(model->services->isEmpty());
    QVERIFY(!model->postgresOk.value());
    QCOMPARE(model->postgresDetail.value(), u"5432"_s);
    QCOMPARE(model->hostname.value(), u"desk"_s);
    QCOMPARE(model->hostLoad.value(), u"1.50"_s);
    QCOMPARE(model->hostMemory.value(), u"64%"_s);
    QCOMPARE(model->hostDisk.value(), u"70%"_s);
}

void TestStatusModelPolling::healthyBridgeWithoutDataKeepsPostgres() {
    const auto model = makeModel();
    pollToItsEnd(*model);
    m_peer->setScript("/monitor/desktop", ScriptedPeer::plain(200, "{}"));
    pollToItsEnd(*model);

    QCOMPARE(model->menuBarSymbol(), u"checkmark.circle.fill"_s);
    QCOMPARE(model->caddyDetail.value(), u"bridge ok"_s);
    QVERIFY(model->services->isEmpty());
    QVERIFY(!model->lastError.value());
    QVERIFY(model->postgresOk.value() == true);
}

void TestStatusModelPolling::recoveredBridgeClearsTheError() {
    const auto model = makeModel();
    m_peer->setScript("/health", {});
    pollToItsEnd(*model);
    QVERIFY(model->lastError.value() == u"The network connection was lost."_s);
    m_peer->setScript("/health", ScriptedPeer::plain(200));
    pollToItsEnd(*model);
    QVERIFY(!model->lastError.value());
    QVERIFY(model->bridgeOnline);
}

void TestStatusModelPolling::unhealthyBridgeIsNotAskedForItsMonitor() {
    m_peer->setScript("/health", ScriptedPeer::plain(204));
    const auto model = makeModel();
    pollToItsEnd(*model);
    QCOMPARE(m_peer->requests.size(), 1);
    QCOMPARE(model->caddyDetail.value(), u"bridge offline"_s);
    QCOMPARE(model->menuBarSymbol(), u"antenna.radiowaves.left.and.right.slash"_s);
}

void TestStatusModelPolling::lastPollMovesForwardAlsoWhenPollsFail() {
    const auto model = makeModel();
    const std::array healths{ScriptedPeer::plain(200), ScriptedPeer::plain(500), ScriptedPeer::Script{}};
    for (const auto& script : healths) {
        m_peer->setScript("/health", script);
        m_now = m_now.addSecs(5);
        pollToItsEnd(*model);
        QVERIFY(model->lastPoll.value() == m_now);
    }
}

void TestStatusModelPolling::startPollsAtOnceAndOnceMoreEachTime() {
    const auto model = makeModel();
    ModelRecord record{*model};
    model->start();
    QCOMPARE(record.take(), QStringList{u"polling = true"_s});
    QCOMPARE(m_tool->calls.size(), 1);
    const auto* timer = timerOf(*model);
    QTRY_COMPARE(m_peer->requests.size(), 2);

    model->start();
    QTRY_COMPARE(m_peer->requests.size(), 4);
    QCOMPARE(m_tool->calls.size(), 2);
    QCOMPARE(model->findChildren<QTimer*>().size(), 1);
    QVERIFY(timerOf(*model) == timer);
}

void TestStatusModelPolling::timerTicksEveryFiveSecondsAndPollsOnly() {
    const auto model = makeModel();
    model->start();
    QTRY_VERIFY(!model->polling);
    QCOMPARE(timerOf(*model)->interval(), 5000);
    QVERIFY(timerOf(*model)->isActive() && !timerOf(*model)->isSingleShot());

    QMetaObject::invokeMethod(timerOf(*model), "timeout");
    QVERIFY(model->polling);
    QTRY_COMPARE(m_peer->requests.size(), 4);
    QCOMPARE(m_tool->calls.size(), 1);
}

void TestStatusModelPolling::overlappingPollsBothComplete_data() {
    QTest::addColumn<Poll>("pollAgain");
    QTest::newRow("asked for") << Poll{[](StatusModel& model) { model.poll(); }};
    QTest::newRow("started again") << Poll{[](StatusModel& model) { model.start(); }};
    QTest::newRow("at a tick") << Poll{
        [](StatusModel& model) { QMetaObject::invokeMethod(timerOf(model), "timeout"); }};
}

void TestStatusModelPolling::overlappingPollsBothComplete() {
    QFETCH(const Poll, pollAgain);
    m_peer->setScript("/health", {{"HTTP/1.1 200 OK\r\n", "Content-Length: 0\r\n\r\n"}, End::close, 100ms});
    const auto model = makeModel();
    int announcements = 0;
    connect(model.get(), &StatusModel::objectWillChange, this, [&announcements] { ++announcements; });
    model->start();
    timerOf(*model)->stop();
    QVERIFY(model->polling);
    pollAgain(*model);
    QTRY_COMPARE(m_peer->requests.size(), 4);
    constexpr int writesOfOnePoll = 15;
    QTRY_COMPARE(announcements, 2 * writesOfOnePoll);
    QVERIFY(!model->polling);
}

void TestStatusModelPolling::whicheverPollEndsLastDecides() {
    const auto model = makeModel();
    m_peer->setScript("/health", {{"HTTP/1.1 500 Late\r\n", "Content-Length: 0\r\n\r\n"}, End::close, 200ms});
    model->poll();
    QTRY_COMPARE(m_peer->requests.size(), 1);
    m_peer->setScript("/health", ScriptedPeer::plain(200));
    model->poll();
    QTRY_COMPARE(model->caddyDetail.value(), u"running · 1/1 sites"_s);
    QVERIFY(!model->polling);
    QTRY_COMPARE(model->caddyDetail.value(), u"bridge offline"_s);
    QVERIFY(!model->polling);
    QVERIFY(!model->bridgeOnline);
}

void TestStatusModelPolling::teardownInMidPollIsHarmless_data() {
    QTest::addColumn<int>("requests");
    QTest::newRow("before any request is out") << 0;
    QTest::newRow("while health is awaited") << 1;
    QTest::newRow("while the monitor is awaited") << 2;
}

void TestStatusModelPolling::teardownInMidPollIsHarmless() {
    QFETCH(const int, requests);
    const auto path = requests == 2 ? "/monitor/desktop" : "/health";
    m_peer->setScript(path, {{"HTTP/1.1 200 OK\r\n", "Content-Length: 0\r\n\r\n"}, End::close, 100ms});
    auto model = makeModel();
    model->start();
    QTRY_COMPARE(m_peer->requests.size(), requests);
    model.reset();
    QTRY_COMPARE(m_peer->openConnections, 0);
    QTest::qWait(50);
    QVERIFY(m_peer->requests.size() <= qMax(1, requests));
}

QTEST_GUILESS_MAIN(TestStatusModelPolling)
#include "TestStatusModelPolling.moc"
