#include "bridge/DesktopMonitorPayload.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

using Kind = BridgeError::Kind;
using HostMetrics = DesktopMonitorPayload::HostMetrics;
using ServiceProbe = DesktopMonitorPayload::ServiceProbe;

/// Where a value stands in the document; spelled out, such as "services[3].ok", only when something is wrong with it.
struct Place {
    const Place* above = nullptr;
    QLatin1StringView key;
    qsizetype index = -1;

    [[nodiscard]] QString path() const {
        if (above == nullptr) {
            return {};
        }
        const QString start = above->path();
        if (index >= 0) {
            return start + u'[' + QString::number(index) + u']';
        }
        return start.isEmpty() ? QString{key} : start + u'.' + key;
    }
};

bool fail(BridgeError& error, Kind kind, const Place& place, QStringView what) {
    const QString path = place.path();
    const QString subject = path.isEmpty() ? u"The answer"_s : u"“"_s + path + u"” in the answer";
    error = {kind, subject + u" of the bridge " + what + u'.'};
    return false;
}

bool mismatch(BridgeError& error, const Place& place, QStringView what) {
    return fail(error, Kind::typeMismatch, place, what);
}

// Each of these decodes one value into its field; on failure it fills in the error and returns false.

bool decode(const QJsonValue& value, const Place& place, QString& text, BridgeError& error) {
    text = value.toString();
    return value.isString() || mismatch(error, place, u"is not a text");
}

bool decode(const QJsonValue& value, const Place& place, bool& truth, BridgeError& error) {
    truth = value.toBool();
    return value.isBool() || mismatch(error, place, u"is neither true nor false");
}

bool decode(const QJsonValue& value, const Place& place, double& number, BridgeError& error) {
    number = value.toDouble();
    return value.isDouble() || mismatch(error, place, u"is not a number");
}

bool decode(const QJsonValue& value, const Place& place, qint64& integer, BridgeError& error) {
    integer = value.toInteger(0);
    const bool isInteger = integer != 0 || value.toInteger(1) == 0;
    return isInteger || mismatch(error, place, u"is not a whole number of 64 bits");
}

bool decode(const QJsonValue& value, const Place& place, HostMetrics& host, BridgeError& error);
bool decode(const QJsonValue& value, const Place& place, ServiceProbe& probe, BridgeError& error);

template <typename T>
bool decode(const QJsonValue& value, const Place& place, QList<T>& list, BridgeError& error) {
    if (!value.isArray()) {
        return mismatch(error, place, u"is not a list");
    }
    const auto array = value.toArray();
    list.reserve(array.size());
    for (const auto& element : array) {
        const Place here{.above = &place, .key = {}, .index = list.size()};
        if (!decode(element, here, list.emplaceBack(), error)) {
            return false;
        }
    }
    return true;
}

/// The members of one JSON object, decoded in the order in which they are asked for.
struct Members {
    const QJsonObject object;
    const Place& place;
    BridgeError& error;

    template <typename T>
    [[nodiscard]] bool required(QLatin1StringView key, T& field) const {
        const Place here{.above = &place, .key = key};
        const auto value = object.value(key);
        if (value.isUndefined()) {
            return fail(error, Kind::keyNotFound, here, u"is missing");
        }
        if (value.isNull()) {
            return fail(error, Kind::valueNotFound, here, u"is null");
        }
        return decode(value, here, field, error);
    }

    template <typename T>
    [[nodiscard]] bool optional(QLatin1StringView key, std::optional<T>& field) const {
        const Place here{.above = &place, .key = key};
        const auto value = object.value(key);
        return value.isUndefined() || value.isNull() || decode(value, here, field.emplace(), error);
    }
};

bool decode(const QJsonValue& value, const Place& place, HostMetrics& host, BridgeError& error) {
    const Members members{value.toObject(), place, error};
    return (value.isObject() || mismatch(error, place, u"is not an object")) &&
           members.optional("hostname"_L1, host.hostname) && members.optional("platform"_L1, host.platform) &&
           members.optional("cpu_load_1m"_L1, host.cpuLoad1m) && members.optional("cpu_load_5m"_L1, host.cpuLoad5m) &&
           members.optional("cpu_load_15m"_L1, host.cpuLoad15m) &&
           members.optional("memory_used_pct"_L1, host.memoryUsedPct) &&
           members.optional("disk_used_pct"_L1, host.diskUsedPct) &&
           members.optional("disk_free_gb"_L1, host.diskFreeGb);
}

bool decode(const QJsonValue& value, const Place& place, ServiceProbe& probe, BridgeError& error) {
    const Members members{value.toObject(), place, error};
    return (value.isObject() || mismatch(error, place, u"is not an object")) &&
           members.required("name"_L1, probe.name) && members.required("ok"_L1, probe.ok) &&
           members.required("detail"_L1, probe.detail) && members.optional("category"_L1, probe.category);
}

bool decode(const QJsonValue& value, const Place& place, DesktopMonitorPayload& payload, BridgeError& error) {
    const Members members{value.toObject(), place, error};
    return (value.isObject() || mismatch(error, place, u"is not an object")) &&
           members.optional("host"_L1, payload.host) && members.required("caddy_sites_up"_L1, payload.caddySitesUp) &&
           members.required("caddy_sites_total"_L1, payload.caddySitesTotal) &&
           members.required("services"_L1, payload.services);
}

/// Any JSON value, while Qt's parser takes only objects and lists at the top: what it refuses is tried again as the
/// one element of a list.
std::optional<QJsonValue> parse(const QByteArray& json) {
    QJsonParseError outcome;
    const auto document = QJsonDocument::fromJson(json, &outcome);
    if (outcome.error == QJsonParseError::NoError) {
        return document.isObject() ? QJsonValue{document.object()} : QJsonValue{document.array()};
    }
    if (outcome.error != QJsonParseError::IllegalValue) {
        return std::nullopt;
    }
    const auto list = QJsonDocument::fromJson('[' + json + ']').array();
    return list.size() == 1 ? std::optional{list.first()} : std::nullopt;
}

}

std::expected<DesktopMonitorPayload, BridgeError> DesktopMonitorPayload::decode(const QByteArray& json) {
    BridgeError error{};
    const auto value = parse(json);
    if (!value) {
        fail(error, Kind::dataCorrupted, {}, u"is not JSON");
        return std::unexpected{error};
    }
    DesktopMonitorPayload payload;
    if (!::decode(*value, {}, payload, error)) {
        return std::unexpected{error};
    }
    return payload;
}
