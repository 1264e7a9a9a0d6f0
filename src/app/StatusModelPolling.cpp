#include "app/StatusModel.h"

#include <QPointer>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto pollInterval = 5s;

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
