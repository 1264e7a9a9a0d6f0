#pragma once

#include "bridge/DesktopMonitorPayload.h"

#include <QCoro/QCoroTask>

#include <QUrl>

#include <expected>

/// Talks to the local bridge over HTTP. A small value: it keeps nothing but the address, and each call is one request
/// of its own, never repeated, redirected, cached or sent through a proxy. Calls may overlap. Main thread only.
struct VornaBridgeClient final {
    QUrl baseURL;

    /// Whether the bridge answers GET /health with status 200. Fails when nothing moves for 2 seconds or the transport
    /// fails; any other answer is `false`.
    [[nodiscard]] QCoro::Task<std::expected<bool, BridgeError>> health() const;

    /// The snapshot behind GET /monitor/desktop?probe_sites=true. Fails when nothing moves for 8 seconds, when the
    /// transport fails, when the status is not 200 (`badServerResponse`), and when the answer cannot be decoded.
    [[nodiscard]] QCoro::Task<std::expected<DesktopMonitorPayload, BridgeError>> desktopMonitor() const;
};
