#include "app/StatusModel.h"

#include "platform/NotificationService.h"

#include <QPointer>

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto pollInterval = 5s;

constexpr auto offlineSymbol = "antenna.radiowaves.left.and.right.slash"_L1;
constexpr auto offlineMeaning = "bridge offline"_L1;

struct BandDescription {
    StatusModel::Band band;
    QLatin1StringView rawValue;
    QLatin1StringView symbolName;
    QLatin1StringView meaning;
};

constexpr std::array bands{
    BandDescription{StatusModel::Band::green, "green"_L1, "checkmark.circle.fill"_L1, "all well"_L1},
    BandDescription{StatusModel::Band::amber, "amber"_L1, "exclamationmark.triangle.fill"_L1, "degraded"_L1},
    BandDescription{StatusModel::Band::red, "red"_L1, "xmark.octagon.fill"_L1, "down"_L1},
    BandDescription{StatusModel::Band::unknown, "unknown"_L1, "circle.dashed"_L1, "state unknown"_L1},
};

const BandDescription& describe(StatusModel::Band band) {
    return bands[static_cast<std::size_t>(band)];
}

}

StatusModel::StatusModel(NotificationService& notifications, ToolRunner runTool, QUrl bridge, Clock clock,
                         Ticker ticker, QObject* parent)
    : ObservableObject{parent}
    , m_notifications{notifications}
    , m_runTool{std::move(runTool)}
    , m_client{std::move(bridge)}
    , m_clock{std::move(clock)}
    , m_ticker{std::move(ticker)} {}

QUrl StatusModel::defaultBridge() {
    return QUrl{u"http://127.0.0.1:43105"_s};
}

QString StatusModel::rawValue(Band band) {
    return describe(band).rawValue;
}

std::optional<StatusModel::Band> StatusModel::bandFromRawValue(QStringView rawValue) {
    const auto* found = std::ranges::find_if(
        bands, [rawValue](const BandDescription& description) { return description.rawValue == rawValue; });
    return found == bands.end() ? std::nullopt : std::optional{found->band};
}

QString StatusModel::menuBarSymbol() const {
    return bridgeOnline ? describe(caddyBand).symbolName : offlineSymbol;
}

QString StatusModel::menuBarMeaning() const {
    return bridgeOnline ? describe(caddyBand).meaning : offlineMeaning;
}

void StatusModel::start() {
    poll();
    reportAccountHeartbeat();
    if (!std::exchange(m_isTicking, true)) {
        m_ticker(*this, pollInterval, [this] { poll(); });
    }
}

void StatusModel::poll() {
    polling = true;
    pollOnce();
}

QCoro::Task<> StatusModel::pollOnce() {
    const QPointer<StatusModel> self{this};
    const VornaBridgeClient client = m_client;

    const auto healthy = co_await client.health();
    if (!self) {
        co_return;
    }
    if (!healthy) {
        showUnreachable(healthy.error());
        co_return;
    }
    bridgeOnline = *healthy;
    if (!*healthy) {
        showOffline();
        co_return;
    }

    const auto payload = co_await client.desktopMonitor();
    if (!self) {
        co_return;
    }
    if (payload) {
        applyMonitor(*payload);
    } else {
        showHealthyWithoutData();
    }
    lastError = std::nullopt;
    lastPoll = m_clock();
    polling = false;
}

void StatusModel::showUnreachable(const BridgeError& error) {
    bridgeOnline = false;
    caddyBand = Band::unknown;
    caddyDetail = u"bridge unreachable"_s;
    lastError = error.text;
    lastPoll = m_clock();
    services = QList<ServiceRow>{};
    postgresOk = std::nullopt;
    polling = false;
}

void StatusModel::showOffline() {
    caddyBand = Band::unknown;
    caddyDetail = u"bridge offline"_s;
    services = QList<ServiceRow>{};
    postgresOk = std::nullopt;
    lastError = std::nullopt;
    lastPoll = m_clock();
    polling = false;
}

void StatusModel::showHealthyWithoutData() {
    caddyBand = Band::green;
    caddyDetail = u"bridge ok"_s;
    services = QList<ServiceRow>{};
}

#include "moc_StatusModel.cpp"
