#include "Fuzz.h"

#include "app/StatusModel.h"
#include "support/FakeNotificationService.h"
#include "ui/kit/TextFitting.h"

#include <algorithm>
#include <array>
#include <cstdio>

using namespace Qt::StringLiterals;
using Fuzz::require;
using Band = StatusModel::Band;
using Payload = DesktopMonitorPayload;

/// The way to a member that is private: an explicit instantiation may name it.
template <auto Member>
struct Opened {
    friend void applyMonitor(StatusModel& model, const Payload& payload) { (model.*Member)(payload); }
};
void applyMonitor(StatusModel& model, const Payload& payload);
template struct Opened<&StatusModel::applyMonitor>;

namespace {

constexpr qsizetype mostServices = 12;
constexpr qsizetype maxPreparedLength = 2000;
constexpr qsizetype longestErrorText = 100;
constexpr std::array decodeErrors{BridgeError::Kind::keyNotFound, BridgeError::Kind::typeMismatch,
                                  BridgeError::Kind::valueNotFound, BridgeError::Kind::dataCorrupted};
const QString unknown = u"—"_s;
const QString old = u"old figure"_s;

/// What C's own printf makes of a figure.
QString printed(const char* format, const std::optional<double>& value) {
    if (!value) {
        return unknown;
    }
    std::array<char, 400> text{};
    std::snprintf(text.data(), text.size(), format, *value);
    return QString::fromUtf8(text.data());
}

void requireHost(const StatusModel& model, const Payload& payload) {
    if (!payload.host) {
        require(model.hostname->isEmpty() && model.hostLoad == old && model.hostMemory == old && model.hostDisk == old);
        return;
    }
    const auto& host = *payload.host;
    const QString free = host.diskUsedPct && host.diskFreeGb ? printed(" · %.0f GB free", host.diskFreeGb) : QString{};
    require(model.hostname.value() == host.hostname.value_or(QString{}));
    require(model.hostLoad.value() == printed("%.2f", host.cpuLoad1m));
    require(model.hostMemory.value() == printed("%.0f%%", host.memoryUsedPct));
    require(model.hostDisk.value() == printed("%.0f%%", host.diskUsedPct) + free);
}

void requireServices(const StatusModel& model, const Payload& payload) {
    const auto& rows = model.services.value();
    auto probe = payload.services.begin();
    const auto skipSites = [&] {
        probe =
            std::find_if(probe, payload.services.end(), [](const auto& p) { return !p.name.startsWith("site."_L1); });
    };
    for (const auto& row : rows) {
        skipSites();
        require(probe != payload.services.end());
        require(row == (StatusModel::ServiceRow{probe->name, probe->name, probe->ok, probe->detail,
                                                probe->category.value_or(u"service"_s)}));
        ++probe;
    }
    skipSites();
    require(rows.size() <= mostServices && (rows.size() == mostServices || probe == payload.services.end()));
}

void requireCaddyAndPostgres(const StatusModel& model, const Payload& payload) {
    const auto& probes = payload.services;
    const bool hasSites = payload.caddySitesTotal >= 1;
    const QString sites = u" · %1/%2 sites"_s.arg(payload.caddySitesUp).arg(payload.caddySitesTotal);
    const QString ending = hasSites ? sites : QString{};
    const QString& detail = model.caddyDetail;
    require(detail.endsWith(ending));
    const QStringView said = QStringView{detail}.chopped(ending.size());
    const auto isSaid = [&](bool ok) {
        return std::ranges::any_of(probes, [&](const auto& probe) { return probe.ok == ok && probe.detail == said; });
    };
    const Band band = model.caddyBand;
    const bool noProbe = said == "no caddy probe"_L1;
    const bool halfUp = payload.caddySitesUp != 0 && payload.caddySitesUp >= payload.caddySitesTotal / 2;
    require(band != Band::green || (isSaid(true) && (!hasSites || halfUp)));
    require(band != Band::amber || noProbe || (hasSites && isSaid(true)));
    require(band != Band::red || isSaid(false));
    require(band != Band::unknown);
    const auto& postgres = model.postgresOk.value();
    const auto isPostgres = [](const auto& p) { return p.name == "postgres"_L1 || p.name == "postgres.port"_L1; };
    require(std::ranges::any_of(probes, isPostgres) == postgres.has_value());
    require(postgres || model.postgresDetail.value() == unknown);
}

/// What the panel draws of a text is one line a line, of bounded length, without control characters, and ends with a
/// whole character.
void requireDrawable(const QString& text) {
    const auto prepared = TextFitting::prepared(text);
    require(prepared.text.size() <= maxPreparedLength && prepared.text.size() <= text.size());
    require(std::ranges::none_of(prepared.text, [](QChar c) { return c.category() == QChar::Other_Control; }));
    require(!text.isValidUtf16() || prepared.text.isValidUtf16());
    const QString line = TextFitting::firstLine(prepared);
    require(!line.contains(QChar::LineSeparator) && line.size() <= prepared.text.size() + 1);
}

void requireDrawable(const StatusModel& model) {
    for (const QString& text : {model.hostname.value(), model.hostLoad.value(), model.hostMemory.value(),
                                model.hostDisk.value(), model.caddyDetail.value(), model.postgresDetail.value()}) {
        requireDrawable(text);
    }
    for (const auto& row : model.services.value()) {
        requireDrawable(row.name);
        requireDrawable(row.detail);
        requireDrawable(row.category);
    }
}

}

/// The input is what the bridge answers when it is asked for the snapshot. What costs most is done with some of them.
void Fuzz::monitor(const QByteArray& input) {
    static FakeNotificationService notifications;
    static StatusModel model{notifications};
    const auto payload = Payload::decode(input);
    if (!payload) {
        const auto& [kind, text] = payload.error();
        require(std::ranges::count(decodeErrors, kind) == 1);
        require(!text.isEmpty() && text.size() <= longestErrorText && !text.contains(u'\n'));
        return;
    }
    const bool isRepeated = Fuzz::Choices{input}.oneIn(8);
    require(!isRepeated || Payload::decode(input) == payload);
    for (int i = isRepeated ? 0 : 1; i < 2; ++i) {
        model.hostLoad = old;
        model.hostMemory = old;
        model.hostDisk = old;
        applyMonitor(model, *payload);
        requireHost(model, *payload);
        requireCaddyAndPostgres(model, *payload);
        requireServices(model, *payload);
    }
    requireDrawable(model);
}
