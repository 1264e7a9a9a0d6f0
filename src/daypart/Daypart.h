#pragma once

#include <QDateTime>
#include <QString>

#include <array>
#include <optional>

/// The four times of day that theme the companion.
enum class Daypart { dawn, day, dusk, night };

namespace DaypartInfo {

/// Every daypart, in the order in which pickers show them.
inline constexpr std::array allCases{Daypart::dawn, Daypart::day, Daypart::dusk, Daypart::night};

/// The daypart of a moment, by the hour that its own time zone shows.
[[nodiscard]] Daypart fromClock(const QDateTime& date);

/// The text under which a daypart is stored, and its way back: nothing for any other text.
[[nodiscard]] QString rawValue(Daypart daypart);
[[nodiscard]] std::optional<Daypart> fromRawValue(QStringView rawValue);

/// What a person reads, and the name of the symbol shown beside it.
[[nodiscard]] QString title(Daypart daypart);
[[nodiscard]] QString symbolName(Daypart daypart);

}
