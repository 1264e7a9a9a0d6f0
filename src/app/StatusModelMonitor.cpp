#include "app/StatusModel.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <cstdio>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

using ServiceProbe = DesktopMonitorPayload::ServiceProbe;

constexpr qsizetype maxServices = 12;
constexpr auto sitePrefix = "site."_L1;

/// C's "%.*f" in the POSIX locale, ties to even included.
/// As `printf` rounds, with the point of no language.
QString fixed(double value, int decimals) {
    std::array<char, std::numeric_limits<double>::max_exponent10 + 8> text{};
    std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    return QString::fromLocal8Bit(text.data())
        .replace(QString::fromLocal8Bit(std::localeconv()->decimal_point), u"."_s);
}

QString formatted(const std::optional<double>& value, int decimals, QLatin1StringView unit) {
    return value ? fixed(*value, decimals) + unit : u"—"_s;
}

QString formattedDisk(const DesktopMonitorPayload::HostMetrics& host) {
    QString text = formatted(host.diskUsedPct, 0, "%"_L1);
    if (host.diskUsedPct && host.diskFreeGb) {
        text += u" · " + fixed(*host.diskFreeGb, 0) + u" GB free";
    }
    return text;
}

template <typename Predicate>
const ServiceProbe* firstProbe(const QList<ServiceProbe>& probes, Predicate matches) {
    const auto found = std::ranges::find_if(probes, matches);
    return found == probes.end() ? nullptr : &*found;
}

const ServiceProbe* named(const QList<ServiceProbe>& probes, QLatin1StringView name) {
    return firstProbe(probes, [name](const ServiceProbe& probe) { return probe.name == name; });
}

const ServiceProbe* caddyProbe(const QList<ServiceProbe>& probes) {
    const auto* exact = named(probes, "caddy.process"_L1);
    return exact != nullptr ? exact : firstProbe(probes, [](const ServiceProbe& probe) {
        return probe.name.contains("caddy"_L1) && probe.name.contains("process"_L1);
    });
}

const ServiceProbe* postgresProbe(const QList<ServiceProbe>& probes) {
    const auto* exact = named(probes, "postgres"_L1);
    return exact != nullptr ? exact : named(probes, "postgres.port"_L1);
}

QList<StatusModel::ServiceRow> serviceRows(const QList<ServiceProbe>& probes) {
    QList<StatusModel::ServiceRow> rows;
    for (const auto& probe : probes) {
        if (rows.size() == maxServices) {
            break;
        }
        if (!probe.name.startsWith(sitePrefix)) {
            rows.append({probe.name, probe.name, probe.ok, probe.detail, probe.category.value_or(u"service"_s)});
        }
    }
    return rows;
}

}

void StatusModel::applyMonitor(const DesktopMonitorPayload& payload) {
    hostname = payload.host ? payload.host->hostname.value_or(QString()) : QString();
    if (payload.host) {
        hostLoad = formatted(payload.host->cpuLoad1m, 2, {});
        hostMemory = formatted(payload.host->memoryUsedPct, 0, "%"_L1);
        hostDisk = formattedDisk(*payload.host);
    }
    applyCaddy(payload);
    const auto* postgres = postgresProbe(payload.services);
    postgresOk = postgres != nullptr ? std::optional{postgres->ok} : std::nullopt;
    postgresDetail = postgres != nullptr ? postgres->detail : u"—"_s;
    services = serviceRows(payload.services);
}

void StatusModel::applyCaddy(const DesktopMonitorPayload& payload) {
    const auto* probe = caddyProbe(payload.services);
    if (probe != nullptr) {
        caddyBand = probe->ok ? Band::green : Band::red;
        caddyDetail = probe->detail;
    } else {
        caddyBand = Band::amber;
        caddyDetail = u"no caddy probe"_s;
    }

    const auto up = payload.caddySitesUp;
    const auto total = payload.caddySitesTotal;
    if (total < 1) {
        return;
    }
    caddyDetail = u"%1 · %2/%3 sites"_s.arg(caddyDetail, QString::number(up), QString::number(total));
    if ((up == 0 || up < total / 2) && caddyBand == Band::green) {
        caddyBand = Band::amber;
    }
}
