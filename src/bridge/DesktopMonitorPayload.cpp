#include "bridge/DesktopMonitorPayload.h"

#include "support/Json.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::string_view_literals;

namespace {

using Kind = BridgeError::Kind;
using HostMetrics = DesktopMonitorPayload::HostMetrics;
using ServiceProbe = DesktopMonitorPayload::ServiceProbe;

// The keys of a record and where their values go. A `std::optional` may be missing or null, all else is required.

constexpr auto fieldsOf(const HostMetrics& /*host*/) {
    return std::tuple{
        std::pair{"hostname"sv, &HostMetrics::hostname},
        std::pair{"platform"sv, &HostMetrics::platform},
        std::pair{"cpu_load_1m"sv, &HostMetrics::cpuLoad1m},
        std::pair{"cpu_load_5m"sv, &HostMetrics::cpuLoad5m},
        std::pair{"cpu_load_15m"sv, &HostMetrics::cpuLoad15m},
        std::pair{"memory_used_pct"sv, &HostMetrics::memoryUsedPct},
        std::pair{"disk_used_pct"sv, &HostMetrics::diskUsedPct},
        std::pair{"disk_free_gb"sv, &HostMetrics::diskFreeGb},
    };
}

constexpr auto fieldsOf(const ServiceProbe& /*probe*/) {
    return std::tuple{
        std::pair{"name"sv, &ServiceProbe::name},
        std::pair{"ok"sv, &ServiceProbe::ok},
        std::pair{"detail"sv, &ServiceProbe::detail},
        std::pair{"category"sv, &ServiceProbe::category},
    };
}

constexpr auto fieldsOf(const DesktopMonitorPayload& /*payload*/) {
    return std::tuple{
        std::pair{"host"sv, &DesktopMonitorPayload::host},
        std::pair{"caddy_sites_up"sv, &DesktopMonitorPayload::caddySitesUp},
        std::pair{"caddy_sites_total"sv, &DesktopMonitorPayload::caddySitesTotal},
        std::pair{"services"sv, &DesktopMonitorPayload::services},
    };
}

template <typename T>
constexpr bool isOptional = false;
template <typename T>
constexpr bool isOptional<std::optional<T>> = true;

/// Decodes values into fields, one overload a type. When one answers false, `error()` says what is wrong and where.
class Decoder final {
public:
    bool decode(const Json& json, QString& text) { return copy(json, text, "is not a text"); }
    bool decode(const Json& json, bool& truth) { return copy(json, truth, "is neither true nor false"); }

    bool decode(const Json& json, double& number) {
        const auto* integer = json.as<qint64>();
        number = integer != nullptr ? static_cast<double>(*integer) : 0;
        return integer != nullptr || copy(json, number, "is not a number");
    }

    /// Takes 2.0 for 2; a number that was rounded to -2^63 would be one too many.
    bool decode(const Json& json, qint64& integer) {
        const auto* number = json.as<double>();
        const bool isWhole = number != nullptr && std::abs(*number) < 0x1p63 && std::trunc(*number) == *number;
        integer = isWhole ? static_cast<qint64>(*number) : 0;
        return isWhole || copy(json, integer, "is not a whole number of 64 bits");
    }

    template <typename T>
    bool decode(const Json& json, std::optional<T>& field) {
        return decode(json, field.emplace());
    }

    template <typename T>
    bool decode(const Json& json, QList<T>& list) {
        const auto* elements = json.as<Json::List>();
        if (elements == nullptr) {
            return fail(Kind::typeMismatch, "is not a list");
        }
        list.reserve(static_cast<qsizetype>(elements->size()));
        return std::ranges::all_of(*elements, [&](const Json& element) {
            return decode(element, list.emplaceBack()) || failBelow(u'[' + QString::number(list.size() - 1) + u']');
        });
    }

    template <typename Record>
    bool decode(const Json& json, Record& record) {
        const auto decodes = [&](const auto& field) {
            return decodeMember(json.member(field.first), record.*field.second) ||
                   failBelow(u'.' + QLatin1StringView{field.first});
        };
        return json.as<Json::Object>() != nullptr
                   ? std::apply([&](const auto&... field) { return (decodes(field) && ...); }, fieldsOf(record))
                   : fail(Kind::typeMismatch, "is not an object");
    }

    bool fail(Kind kind, const char* what) {
        m_kind = kind;
        m_what = what;
        return false;
    }

    [[nodiscard]] std::unexpected<BridgeError> error() const {
        const QString subject = m_path.isEmpty() ? u"The answer"_s : u"“"_s + m_path.sliced(1) + u"” in the answer";
        return std::unexpected{BridgeError{m_kind, subject + u" of the bridge " + QLatin1StringView{m_what} + u'.'}};
    }

private:
    template <typename T>
    bool decodeMember(const Json* json, T& field) {
        if (json != nullptr && json->as<std::nullptr_t>() == nullptr) {
            return decode(*json, field);
        }
        return isOptional<T> ||
               (json == nullptr ? fail(Kind::keyNotFound, "is missing") : fail(Kind::valueNotFound, "is null"));
    }

    template <typename T>
    bool copy(const Json& json, T& field, const char* otherwise) {
        const auto* value = json.as<T>();
        field = value != nullptr ? *value : T{};
        return value != nullptr || fail(Kind::typeMismatch, otherwise);
    }

    bool failBelow(const QString& step) {
        m_path.prepend(step);
        return false;
    }

    Kind m_kind{};
    const char* m_what = nullptr;
    QString m_path; ///< below the value that was decoded, such as ".services[3].ok"
};

}

std::expected<DesktopMonitorPayload, BridgeError> DesktopMonitorPayload::decode(const QByteArray& json) {
    Decoder decoder;
    DesktopMonitorPayload payload;
    const auto document = Json::parse(json);
    const bool holds = document ? decoder.decode(*document, payload) : decoder.fail(Kind::dataCorrupted, "is not JSON");
    return holds ? std::expected<DesktopMonitorPayload, BridgeError>{std::move(payload)} : decoder.error();
}
