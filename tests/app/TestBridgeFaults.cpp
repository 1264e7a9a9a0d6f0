#include "app/StatusModel.h"

#include "support/OwnProcess.h"
#include "support/Rows.h"
#include "support/ScriptedPeer.h"
#include "ui/ClockText.h"
#include "ui/menubar/PanelFixture.h"
#include "ui/menubar/PanelReading.h"

#include <QPushButton>

#include <chrono>
#include <optional>

#include <sys/resource.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using OwnProcess::openDescriptors;
using Script = ScriptedPeer::Script;
using End = ScriptedPeer::End;

namespace {

constexpr int waitMs = 30'000;
constexpr auto monitorIsLateBy = 2s; // within its limit, and long enough for another poll on a busy machine

QByteArray snapshot(const QByteArray& more = {}) {
    return R"({"host":{"hostname":"desk","cpu_load_1m":1.5,"memory_used_pct":64,"disk_used_pct":70},
        "caddy_sites_up":1,"caddy_sites_total":1,"services":[{"name":"caddy.process","ok":true,"detail":"running"},
        {"name":"postgres","ok":true,"detail":"on 5432"}])" +
           more + '}';
}

const QByteArray head = "HTTP/1.1 200 OK\r\n";
const QByteArray longHead = head + "Content-Length: 100\r\n\r\n";
const Script silence{{}, End::stall};
const Script good = ScriptedPeer::plain(200, snapshot());

QByteArrayList inPieces(const QByteArray& bytes, qsizetype size) {
    QByteArrayList pieces;
    for (qsizetype at = 0; at < bytes.size(); at += size) {
        pieces += bytes.sliced(at, qMin(size, bytes.size() - at));
    }
    return pieces;
}

/// What the bridge does for one poll; where it answers no health, nobody asks for its monitor.
struct Fault final {
    Script health = ScriptedPeer::plain(200);
    Script monitor = good;
    bool refuses = false;
};

/// What the user then sees.
enum class Outcome { snapshot, onlineWithoutData, offline, unreachable };

bool isOnline(Outcome outcome) {
    return outcome == Outcome::snapshot || outcome == Outcome::onlineWithoutData;
}

QString iconOf(Outcome outcome) {
    return isOnline(outcome) ? u"checkmark.circle.fill, all well"_s
                             : u"antenna.radiowaves.left.and.right.slash, bridge offline"_s;
}

/// The rows from "Bridge" to the last service, as they must read.
QStringList expected(Outcome outcome, const QString& error, const QDateTime& updated) {
    static const QStringList caddy{u"running · 1/1 sites"_s, u"bridge ok"_s, u"bridge offline"_s,
                                   u"bridge unreachable"_s};
    static const QStringList probes{u"ok"_s, u"caddy.process"_s, u"running"_s, u"ok"_s, u"postgres"_s, u"on 5432"_s};
    const bool online = isOnline(outcome);
    const QString dot = online ? u"ok"_s : u"not ok"_s;
    return QStringList{u"Bridge"_s, online ? u"online · :43105"_s : u"offline"_s, dot} +
           QStringList{u"Caddy"_s, caddy.at(static_cast<int>(outcome)), dot, u"Postgres"_s, u"on 5432"_s, dot} +
           QStringList{u"LOAD"_s, u"1.50"_s, u"MEMORY"_s, u"64%"_s, u"DISK"_s, u"70%"_s} +
           (error.isEmpty() ? QStringList{} : QStringList{error}) +
           QStringList{u"Updated " + ClockText::withSeconds(updated), u"SERVICES"_s} +
           (outcome == Outcome::snapshot ? probes
            : online                     ? QStringList{u"No probes yet"_s}
                                         : QStringList{u"Start bridge: vorna server start"_s});
}

/// A panel that is shown, over a bridge that answers as it is told to.
class Desk final {
public:
    Desk() {
        heal();
        view->show();
        peerPort = peer.serverPort();
    }

    void heal() {
        set({});
        if (!peer.isListening() && !peer.listen(QHostAddress::LocalHost, peerPort)) {
            qFatal("The scripted peer cannot listen again.");
        }
    }
    void set(const Fault& fault) {
        peer.setScript("/health", fault.health);
        peer.setScript("/monitor/desktop", fault.monitor);
        if (fault.refuses) {
            peer.close();
        }
    }
    void press(const QString& title) {
        QTest::mouseClick(PanelReading::named<QPushButton>(*view, title), Qt::LeftButton);
    }
    void refresh() {
        now = now.addSecs(5);
        press(u"Refresh"_s);
    }
    [[nodiscard]] bool settle() {
        return QTest::qWaitFor([this] { return panel.isStill() && peer.openConnections == 0; }, waitMs);
    }
    [[nodiscard]] QStringList shown() {
        (void)drawn(*view);
        const QStringList names = PanelReading::names(*view);
        const auto first = names.indexOf(u"Bridge"_s);
        return names.mid(first, names.indexOf(u"Refresh"_s) - first);
    }
    [[nodiscard]] QString icon() { return panel.status.menuBarSymbol() + u", " + panel.status.menuBarMeaning(); }

    QDateTime now{QDate{2026, 1, 15}, QTime{12, 0}};
    ScriptedPeer peer;
    quint16 peerPort = 0;
    PanelFixture panel{.bridge = peer.baseUrl(), .clock = [this] { return now; }};
    std::unique_ptr<MenuBarView> view = panel.makeView();
};

}

class TestBridgeFaults final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_desk.emplace();
        requireSettled(Outcome::snapshot);
        m_descriptors = openDescriptors();
    }
    void cleanup() {
        m_desk->heal();
        m_desk->refresh();
        requireSettled(Outcome::snapshot);
        QTRY_COMPARE(openDescriptors(), m_descriptors);
        m_desk.reset();
    }

    void faultIsShownAndGotOver_data() {
        const Rows<Fault, Outcome, QString> row{"fault", "outcome", "error"};
        const QString lost = u"The network connection was lost."_s;
        const QString late = u"The request timed out."_s;
        const QString tooMuch = u"The server sent more data than expected."_s;
        const auto health = [](const Script& script) { return Fault{.health = script}; };
        const auto monitor = [](const Script& script) { return Fault{.monitor = script}; };
        const auto json = [](const QByteArray& body) { return Fault{.monitor = ScriptedPeer::plain(200, body)}; };
        const QByteArray answer = good.pieces.first();
        const Script endless{{head + "\r\n", QByteArray(256 * 1024, ' ')}, End::repeatLastPiece};

        row("refuse", {.refuses = true}, Outcome::unreachable, u"Could not connect to the server."_s);
        row("stall, health", health(silence), Outcome::unreachable, late);
        row("stall, monitor", monitor(silence), Outcome::onlineWithoutData, {});
        row("drip under the limit",
            {.health = {inPieces(head + "\r\n", 4), End::close, 100ms},
             .monitor = {inPieces(answer, 30), End::stall, 40ms}},
            Outcome::snapshot, {});
        row("drip over the limit", health({inPieces(longHead, 8), End::close, 2500ms}), Outcome::unreachable, late);
        row("reset, health", health({{longHead + "{"}, End::reset, 20ms}), Outcome::unreachable, lost);
        row("closed, health", health({}), Outcome::unreachable, lost);
        row("closed between health and monitor", monitor({}), Outcome::onlineWithoutData, {});
        row("half-closed, health", health({{longHead}, End::halfClose}), Outcome::unreachable, lost);
        row("status 500, health", health(ScriptedPeer::plain(500)), Outcome::offline, {});
        row("status 204 with odd headers, health",
            health({{"HTTP/1.1 204 No Content\r\nContent-Length: -1\r\n\r\n"}, End::stall}), Outcome::offline, {});
        row("garbage: not HTTP, health", health({{"SSH-2.0-OpenSSH_9.2\r\n"}, End::stall}), Outcome::offline, {});
        row("garbage: headers, health", health({{head + "nonsense\r\n\r\n"}}), Outcome::unreachable,
            u"The answer of the server was garbled."_s);
        row("deep", json(snapshot(R"(,"x":)" + QByteArray(100'000, '[') + QByteArray(100'000, ']'))),
            Outcome::onlineWithoutData, {});
        row("giant: endless body, health", health(endless), Outcome::unreachable, tooMuch);
        row("giant: endless body, monitor", monitor(endless), Outcome::onlineWithoutData, {});
        row("giant: endless header", health({{head + "X: ", QByteArray(10'000, 'x')}, End::repeatLastPiece}),
            Outcome::unreachable, tooMuch);
        row("giant: as large as may be", json(snapshot(QByteArray(8 * 1024 * 1024 - snapshot().size(), ' '))),
            Outcome::snapshot, {});
    }
    void faultIsShownAndGotOver() {
        QFETCH(const Fault, fault);
        QFETCH(const Outcome, outcome);
        QFETCH(const QString, error);
        poll(fault, outcome, error);
    }

    void panelWorksWhileTheBridgeHangs() {
        const auto before = m_desk->shown();
        beginPoll({.health = silence}, 1);
        m_desk->press(u"Console"_s);
        QTRY_COMPARE(m_desk->panel.pagesOpened.size(), 1);
        m_desk->press(u"Night"_s);
        QCOMPARE(m_desk->shown(), before);
        QVERIFY(PanelReading::names(*m_desk->view).join(u' ').contains(u" · Night"_s));
        m_desk->press(u"Desk backup now"_s);
        QTRY_VERIFY(PanelReading::named<QWidget>(*m_desk->view, u"Running vorna…"_s) != nullptr);
        QVERIFY(m_desk->panel.status.polling);
        QCOMPARE(m_desk->peer.openConnections, 1);
        requireSettled(Outcome::unreachable, u"The request timed out."_s);
    }

    void bridgeThatIsBackShowsWhileAnOlderPollHangs() {
        poll({.refuses = true}, Outcome::unreachable, u"Could not connect to the server."_s);
        m_desk->heal();
        beginPoll({.health = silence}, 1);
        m_desk->heal();
        m_desk->refresh();
        QTRY_COMPARE(m_desk->shown(), expected(Outcome::snapshot, {}, m_desk->now));
        QCOMPARE(m_desk->peer.mostOpenConnections, 2);
        QVERIFY(m_desk->settle());
    }

    void manyHangingPollsAreAllLetGo() {
        constexpr int polls = 50;
        m_desk->set({.health = silence});
        for (int i = 0; i < polls; ++i) {
            m_desk->refresh();
        }
        QTRY_COMPARE(m_desk->peer.openConnections, polls);
        requireSettled(Outcome::unreachable, u"The request timed out."_s);
    }

    void upAndDownAtEveryPollShowsEach() {
        for (int turn = 0; turn < 4; ++turn) {
            poll({.refuses = true}, Outcome::unreachable, u"Could not connect to the server."_s);
            m_desk->heal();
            poll({}, Outcome::snapshot);
            poll({.health = ScriptedPeer::plain(503)}, Outcome::offline);
            poll({}, Outcome::snapshot);
            poll({.monitor = ScriptedPeer::plain(503)}, Outcome::onlineWithoutData);
        }
    }

    void lateSnapshotOfABridgeThatHasGoneStandsUntilTheNextPoll() {
        beginPoll({.monitor = {{QByteArray{}, good.pieces.first()}, End::close, monitorIsLateBy}}, 2);
        m_desk->set({.health = {}});
        m_desk->refresh();
        const auto gone = expected(Outcome::unreachable, u"The network connection was lost."_s, m_desk->now);
        QTRY_COMPARE(m_desk->shown(), gone);

        auto late = expected(Outcome::snapshot, {}, m_desk->now);
        late.replace(1, u"offline"_s);
        late.replace(2, u"not ok"_s);
        QTRY_COMPARE(m_desk->shown(), late);
        QCOMPARE(m_desk->icon(), iconOf(Outcome::offline));
        QVERIFY(m_desk->settle());
    }

    void noDescriptorForASocketIsAnUnreachableBridge() {
        rlimit before{};
        QCOMPARE(getrlimit(RLIMIT_NOFILE, &before), 0);
        const rlimit none{.rlim_cur = 3, .rlim_max = before.rlim_max};
        QCOMPARE(setrlimit(RLIMIT_NOFILE, &none), 0);
        m_desk->refresh();
        const bool ended = m_desk->settle();
        QCOMPARE(setrlimit(RLIMIT_NOFILE, &before), 0);
        QVERIFY(ended);
        QCOMPARE(m_desk->shown(), expected(Outcome::unreachable, u"Could not connect to the server."_s, m_desk->now));
    }

private:
    void requireSettled(Outcome outcome, const QString& error = {}) {
        QVERIFY(m_desk->settle());
        QCOMPARE(m_desk->shown(), expected(outcome, error, m_desk->now));
        QCOMPARE(m_desk->icon(), iconOf(outcome));
    }

    void poll(const Fault& fault, Outcome outcome, const QString& error = {}) {
        m_desk->set(fault);
        const auto requests = m_desk->peer.requests.size();
        m_desk->refresh();
        QVERIFY(m_desk->panel.status.polling);
        requireSettled(outcome, error);
        QCOMPARE(m_desk->peer.requests.size() - requests, fault.refuses ? 0 : isOnline(outcome) ? 2 : 1);
    }

    /// Begins a poll that hangs behind so many requests.
    void beginPoll(const Fault& fault, qsizetype requests) {
        const auto before = m_desk->peer.requests.size();
        m_desk->set(fault);
        m_desk->refresh();
        QTRY_COMPARE(m_desk->peer.requests.size(), before + requests);
    }

    std::optional<Desk> m_desk;
    qsizetype m_descriptors = 0;
};

QTEST_MAIN(TestBridgeFaults)
#include "TestBridgeFaults.moc"
