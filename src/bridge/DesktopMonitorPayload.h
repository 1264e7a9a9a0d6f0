#pragma once

#include "bridge/BridgeError.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <expected>
#include <optional>

/// The bridge's snapshot of the desktop: the host's figures, two site counters and every probed service. Read only.
struct DesktopMonitorPayload final {
    /// Absent figures are figures that the bridge did not report.
    struct HostMetrics final {
        std::optional<QString> hostname;
        std::optional<QString> platform;
        std::optional<double> cpuLoad1m;
        std::optional<double> cpuLoad5m;
        std::optional<double> cpuLoad15m;
        std::optional<double> memoryUsedPct; ///< percent, 0 to 100
        std::optional<double> diskUsedPct;   ///< percent, 0 to 100
        std::optional<double> diskFreeGb;    ///< gigabytes

        friend bool operator==(const HostMetrics&, const HostMetrics&) = default;
    };

    struct ServiceProbe final {
        QString name;
        bool ok = false;
        QString detail;
        std::optional<QString> category;

        friend bool operator==(const ServiceProbe&, const ServiceProbe&) = default;
    };

    std::optional<HostMetrics> host;
    qint64 caddySitesUp = 0;
    qint64 caddySitesTotal = 0;
    QList<ServiceProbe> services;

    /// Decodes one UTF-8 JSON document. All or nothing: the first key that is missing, null or of the wrong type ends
    /// it with an error that names the key. Keys that nobody reads are ignored.
    [[nodiscard]] static std::expected<DesktopMonitorPayload, BridgeError> decode(const QByteArray& json);

    friend bool operator==(const DesktopMonitorPayload&, const DesktopMonitorPayload&) = default;
};
