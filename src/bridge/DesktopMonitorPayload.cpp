#include "bridge/DesktopMonitorPayload.h"

#include "support/Json.h"

#include <cmath>
#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Kind = BridgeError::Kind;
using HostMetrics = DesktopMonitorPayload::HostMetrics;
using ServiceProbe = DesktopMonitorPayload::ServiceProbe;

// The keys of a record and where their values go. A `std::optional` may be missing or null, all else is required.

constexpr auto fieldsOf(const HostMetrics& /*host*/) {
    return std::tuple{
        std::pair{"hostname", &HostMetrics::hostname},
        std::pair{"platform", &HostMetrics::platform},
        std::pair{"cpu_load_1m", &HostMetrics::cpuLoad1m},
        std::pair{"cpu_load_5m", &HostMetrics::cpuLoad5m},
        std::pair{"cpu_load_15m", &HostMetrics::cpuLoad15m},
        std::pair{"memory_used_pct", &HostMetrics::memoryUsedPct},
        std::pair{"disk_used_pct", &HostMetrics::diskUsedPct},
        std::pair{"disk_free_gb", &HostMetrics::diskFreeGb},
    };
}

constexpr auto fieldsOf(const ServiceProbe& /*probe*/) {
    return std::tuple{
        std::pair{"name", &ServiceProbe::name},
        std::pair{"ok", &ServiceProbe::ok},
        std::pair{"detail", &ServiceProbe::detail},
        std::pair{"category", &ServiceProbe::category},
    };
}

constexpr auto fieldsOf(const DesktopMonitorPayload& /*payload*/) {
    return std::tuple{
        std::pair{"host", &DesktopMonitorPayload::host},
        std::pair{"caddy_sites_up", &DesktopMonitorPayload::caddySitesUp},
        std::pair{"caddy_sites_total", &DesktopMonitorPayload::caddySitesTotal},
        std::pair{"services", &DesktopMonitorPayload::services},
    };
}

template <typename T>
constexpr bool isOptional = false;
template <typename T>
constexpr bool isOptional<std::optional<T>> = true;

/// What is wrong, and where below the value that was decoded, such as ".services[3].ok".
struct Fault final {
    Kind kind;
    QStringView what;
    QString path;
};

/// Decodes values into fields, one overload a type; nothing is wrong when the outcome is nothing.
struct Decoder final {
    using Outcome = std::optional<Fault>;

    static Outcome decode(const Json& json, QString& text) { return copy(json, text, u"is not a text"); }
    static Outcome decode(const Json& json, bool& truth) { return copy(json, truth, u"is neither true nor false"); }

    static Outcome decode(const Json& json, double& number) {
        const auto* integer = json.as<qint64>();
        return copy(integer != nullptr ? Json{static_cast<double>(*integer)} : json, number, u"is not a number");
    }

    /// Takes 2.0 for 2; a number that was rounded to -2^63 would be one too many.
    static Outcome decode(const Json& json, qint64& integer) {
        constexpr double limit = 0x1p63;
        const auto* number = json.as<double>();
        const bool isWhole = number != nullptr && std::abs(*number) < limit && std::trunc(*number) == *number;
        return copy(isWhole ? Json{static_cast<qint64>(*number)} : json, integer, u"is not a whole number of 64 bits");
    }

    template <typename T>
    static Outcome decode(const Json& json, std::optional<T>& field) {
        return decode(json, field.emplace());
    }

    template <typename T>
    static Outcome decode(const Json& json, QList<T>& list) {
        const auto* elements = json.as<Json::List>();
        if (elements == nullptr) {
            return mismatch(u"is not a list");
        }
        list.reserve(static_cast<qsizetype>(elements->size()));
        for (const Json& element : *elements) {
            if (auto fault = decode(element, list.emplaceBack())) {
                fault->path.prepend(u'[' + QString::number(list.size() - 1) + u']');
                return fault;
            }
        }
        return {};
    }

    template <typename Record>
    static Outcome decode(const Json& json, Record& record) {
        if (json.as<Json::Object>() == nullptr) {
            return mismatch(u"is not an object");
        }
        Outcome fault;
        const auto decodes = [&](const auto& field) { return !(fault = decodeMember(json, record, field)); };
        std::apply([&](const auto&... field) { (void)(decodes(field) && ...); }, fieldsOf(record));
        return fault;
    }

private:
    template <typename Record, typename T>
    static Outcome decodeMember(const Json& object, Record& record, std::pair<const char*, T Record::*> field) {
        const Json* json = object.member(field.first);
        Outcome fault;
        if (json != nullptr && json->as<std::nullptr_t>() == nullptr) {
            fault = decode(*json, record.*field.second);
        } else if (!isOptional<T>) {
            fault = json == nullptr ? Fault{Kind::keyNotFound, u"is missing", {}}
                                    : Fault{Kind::valueNotFound, u"is null", {}};
        }
        if (fault) {
            fault->path.prepend(u'.' + QString::fromLatin1(field.first));
        }
        return fault;
    }

    template <typename T>
    static Outcome copy(const Json& json, T& field, QStringView otherwise) {
        const auto* value = json.as<T>();
        if (value == nullptr) {
            return mismatch(otherwise);
        }
        field = *value;
        return {};
    }

    static Outcome mismatch(QStringView what) { return Fault{Kind::typeMismatch, what, {}}; }
};

std::unexpected<BridgeError> error(const Fault& fault) {
    const QString subject = fault.path.isEmpty() ? u"The answer"_s : u"“"_s + fault.path.sliced(1) + u"” in the answer";
    return std::unexpected{BridgeError{fault.kind, subject + u" of the bridge " + fault.what + u'.'}};
}

}

std::expected<DesktopMonitorPayload, BridgeError> DesktopMonitorPayload::decode(const QByteArray& json) {
    const auto document = Json::parse(json);
    if (!document) {
        return error({Kind::dataCorrupted, u"is not JSON", {}});
    }
    DesktopMonitorPayload payload;
    if (const auto fault = Decoder::decode(*document, payload)) {
        return error(*fault);
    }
    return payload;
}
