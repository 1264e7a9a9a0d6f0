#include "bridge/VornaBridgeClient.h"

#include "bridge/HttpGet.h"

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto healthIdleLimit = 2s;
constexpr auto monitorIdleLimit = 8s;
constexpr int statusOk = 200;

QUrl appending(const QUrl& base, QLatin1StringView path) {
    QUrl url = base;
    const QString root = base.path(QUrl::FullyEncoded);
    url.setPath((root.endsWith(u'/') ? root : root + u'/') + path, QUrl::StrictMode);
    return base.isValid() ? url : QUrl{}; // a new path makes an address valid again
}

}

QCoro::Task<std::expected<bool, BridgeError>> VornaBridgeClient::health() const {
    const auto answer =
        co_await HttpGet::send(appending(baseURL, "health"_L1), healthIdleLimit, HttpGet::Body::discarded);
    if (!answer) {
        co_return std::unexpected{answer.error()};
    }
    co_return answer->status == statusOk;
}

QCoro::Task<std::expected<DesktopMonitorPayload, BridgeError>> VornaBridgeClient::desktopMonitor() const {
    QUrl url = appending(baseURL, "monitor/desktop"_L1);
    url.setQuery(u"probe_sites=true"_s);
    const auto answer = co_await HttpGet::send(url, monitorIdleLimit);
    if (!answer) {
        co_return std::unexpected{answer.error()};
    }
    if (answer->status != statusOk) {
        co_return std::unexpected{BridgeError::of(BridgeError::Kind::badServerResponse)};
    }
    co_return DesktopMonitorPayload::decode(answer->body);
}
