#include "app/StatusModel.h"

#include "support/FakeNotificationService.h"
#include "support/FakeTool.h"
#include "support/ModelRecord.h"
#include "support/Rows.h"
#include "support/ScriptedPeer.h"

#include <QTest>

#include <chrono>
#include <functional>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Band = StatusModel::Band;
using End = ScriptedPeer::End;

namespace {

const QByteArray payload = R"({"host":{"hostname":"desk","cpu_load_1m":1.5,"memory_used_pct":64,"disk_used_pct":70},
    "caddy_sites_up":1,"caddy_sites_total":1,
    "services":[{"name":"caddy.process","ok":true,"detail":"running"},{"name":"postgres","ok":true,"detail":"5432"}]})";

const QDateTime noon{QDate{2026, 1, 15}, QTime{12, 0}};

}

class TestStatusModelPolling final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_tool = std::make_unique<FakeTool>();
        m_peer = std::make_unique<ScriptedPeer>();
        m_peer->setScript("/health", ScriptedPeer::plain(200));
        m_peer->setScript("/monitor/desktop", ScriptedPeer::plain(200, payload));
        m_now = noon;
        m_intervals.clear();
    }

    void initialValuesAreAsDeclared() {
        const auto model = makeModel();
        QCOMPARE(
            ModelRecord::describe(*model).join(u", "),
            u"bridgeOnline = false, caddyBand = unknown, caddyDetail = —, postgresOk = absent, postgresDetail = —, "
            "hostLoad = —, hostMemory = —, hostDisk = —, hostname = , services = [], lastPoll = absent, lastError = "
            "absent, polling = false, cliBusy = false, cliMessage = absent, accountLine = Not signed in"_s);
        QCOMPARE(StatusModel::defaultBridge().toString(), u"http://127.0.0.1:43105"_s);
    }

    void nothingStartsByItself() {
        const auto model = makeModel();
        QCoreApplication::processEvents();
        QVERIFY(m_intervals.isEmpty());
        QCOMPARE(m_peer->connections, 0);
        QCOMPARE(m_tool->calls.size(), 0);
    }

    void bandsHaveTheirTexts() {
        const auto model = makeModel();
        const QList<std::pair<Band, QStringList>> rows{
            {Band::green, {u"green"_s, u"checkmark.circle.fill"_s, u"all well"_s}},
            {Band::amber, {u"amber"_s, u"exclamationmark.triangle.fill"_s, u"degraded"_s}},
            {Band::red, {u"red"_s, u"xmark.octagon.fill"_s, u"down"_s}},
            {Band::unknown, {u"unknown"_s, u"circle.dashed"_s, u"state unknown"_s}},
        };
        for (const auto& [band, texts] : rows) {
            model->caddyBand = band;
            model->bridgeOnline = false;
            QCOMPARE(model->menuBarSymbol(), u"antenna.radiowaves.left.and.right.slash"_s);
            QCOMPARE(model->menuBarMeaning(), u"bridge offline"_s);
            model->bridgeOnline = true;
            QCOMPARE((QStringList{StatusModel::rawValue(band), model->menuBarSymbol(), model->menuBarMeaning()}),
                     texts);
            QVERIFY(StatusModel::bandFromRawValue(texts.at(0)) == band);
            for (const QString& other : QStringList{texts.at(0).toUpper(), texts.at(0) + u' ', QString{}, u"blue"_s}) {
                QVERIFY(!StatusModel::bandFromRawValue(other));
            }
        }
    }

    void pollWritesInOrder_data() {
        const Rows<bool, int, int, QString> row{"reachable", "health", "monitor", "writes"};
        row("unreachable", false, 0, 0,
            u"polling = true, bridgeOnline = false, caddyBand = unknown, caddyDetail = bridge "
            "unreachable, lastError = Could not connect to the server., lastPoll = "
            "2026-01-15T12:00:00, services = [], postgresOk = absent, polling = false"_s);
        row("offline", true, 503, 200,
            u"polling = true, bridgeOnline = false, caddyBand = unknown, caddyDetail = bridge "
            "offline, services = [], postgresOk = absent, lastError = absent, lastPoll = "
            "2026-01-15T12:00:00, polling = false"_s);
        row("without data", true, 200, 500,
            u"polling = true, bridgeOnline = true, caddyBand = green, caddyDetail = bridge "
            "ok, services = [], lastError = absent, lastPoll = 2026-01-15T12:00:00, "
            "polling = false"_s);
        row("full", true, 200, 200,
            u"polling = true, bridgeOnline = true, hostname = desk, hostLoad = 1.50, hostMemory = "
            "64%, hostDisk = 70%, caddyBand = green, caddyDetail = running, caddyDetail = running · "
            "1/1 sites, nothing, postgresDetail = 5432, services = [caddy.process, postgres], "
            "lastError = absent, lastPoll = 2026-01-15T12:00:00, polling = false"_s);
    }
    void pollWritesInOrder() {
        QFETCH(const bool, reachable);
        QFETCH(const int, health);
        QFETCH(const int, monitor);
        QFETCH(const QString, writes);
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
        QCOMPARE(record.take().join(u", "), writes);
        QCOMPARE(m_peer->requests.size(), !reachable ? 0 : health == 200 ? 2 : 1);
    }

    void pollKeepsHostFiguresWhenBridgeIsUnreachable() {
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

    void healthyBridgeWithoutDataKeepsPostgres() {
        const auto model = makeModel();
        pollToItsEnd(*model);
        m_peer->setScript("/monitor/desktop", ScriptedPeer::plain(200, "{}"));
        pollToItsEnd(*model);

        QCOMPARE(model->menuBarSymbol(), u"checkmark.circle.fill"_s);
        QCOMPARE(model->caddyDetail.value(), u"bridge ok"_s);
        QVERIFY(model->postgresOk.value() == true);
    }

    void lastPollMovesForwardAlsoWhenPollsFail() {
        const auto model = makeModel();
        const std::array healths{ScriptedPeer::plain(200), ScriptedPeer::plain(500), ScriptedPeer::Script{},
                                 ScriptedPeer::plain(200)};
        for (const auto& script : healths) {
            m_peer->setScript("/health", script);
            m_now = m_now.addSecs(5);
            pollToItsEnd(*model);
            QVERIFY(model->lastPoll.value() == m_now);
            QCOMPARE(model->lastError.value().has_value(), script.pieces.isEmpty());
        }
    }

    void startPollsAtOnceAndOnceMoreEachTime() {
        const auto model = makeModel();
        ModelRecord record{*model};
        model->start();
        QCOMPARE(record.take(), QStringList{u"polling = true"_s});
        QCOMPARE(m_tool->calls.size(), 1);
        QTRY_COMPARE(m_peer->requests.size(), 2);

        model->start();
        QTRY_COMPARE(m_peer->requests.size(), 4);
        QCOMPARE(m_tool->calls.size(), 2);
        QCOMPARE(m_intervals, QList<qint64>{5000});
    }

    void ticksPollOnly() {
        const auto model = makeModel();
        model->start();
        QTRY_VERIFY(!model->polling);
        m_tick();
        QVERIFY(model->polling);
        QTRY_COMPARE(m_peer->requests.size(), 4);
        QCOMPARE(m_tool->calls.size(), 1);
    }

    void overlappingPollsBothComplete() {
        m_peer->setScript("/health", {{"HTTP/1.1 200 OK\r\n", "Content-Length: 0\r\n\r\n"}, End::close, 100ms});
        const auto model = makeModel();
        int announcements = 0;
        connect(model.get(), &StatusModel::objectWillChange, this, [&announcements] { ++announcements; });
        model->start();
        QVERIFY(model->polling);
        model->poll();
        m_tick();
        QTRY_COMPARE(m_peer->requests.size(), 6);
        constexpr int writesOfOnePoll = 15;
        QTRY_COMPARE(announcements, 3 * writesOfOnePoll);
        QVERIFY(!model->polling);
    }

    void whicheverPollEndsLastDecides() {
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

    void teardownInMidPollIsHarmless() {
        for (const int requests : {0, 1, 2}) {
            init();
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
    }

private:
    [[nodiscard]] std::unique_ptr<StatusModel> makeModel() {
        return std::make_unique<StatusModel>(
            m_notifications, m_tool->runner(), m_peer->baseUrl(), [this] { return m_now; },
            [this](QObject&, std::chrono::milliseconds interval, const auto& tick) {
                m_intervals.append(interval.count());
                m_tick = tick;
            });
    }
    static void pollToItsEnd(StatusModel& model) {
        model.poll();
        QTRY_VERIFY(!model.polling);
    }

    FakeNotificationService m_notifications;
    std::unique_ptr<FakeTool> m_tool;
    std::unique_ptr<ScriptedPeer> m_peer;
    QDateTime m_now;
    QList<qint64> m_intervals;
    std::function<void()> m_tick;
};

QTEST_GUILESS_MAIN(TestStatusModelPolling)
#include "TestStatusModelPolling.moc"
