#include "daypart/Daypart.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

struct Description {
    Daypart daypart;
    QLatin1StringView rawValue;
    QLatin1StringView title;
    QLatin1StringView symbolName;
};

constexpr std::array descriptions{
    Description{Daypart::dawn, "dawn"_L1, "Dawn"_L1, "sunrise.fill"_L1},
    Description{Daypart::day, "day"_L1, "Day"_L1, "sun.max.fill"_L1},
    Description{Daypart::dusk, "dusk"_L1, "Dusk"_L1, "sunset.fill"_L1},
    Description{Daypart::night, "night"_L1, "Night"_L1, "moon.stars.fill"_L1},
};

struct Span {
    int firstHour;
    int endHour;
    Daypart daypart;
};

constexpr std::array clockSpans{
    Span{5, 10, Daypart::dawn},
    Span{10, 17, Daypart::day},
    Span{17, 21, Daypart::dusk},
};

const Description& describe(Daypart daypart) {
    return descriptions[static_cast<std::size_t>(daypart)];
}

}

Daypart DaypartInfo::fromClock(const QDateTime& date) {
    const int hour = date.time().hour();
    const auto* span =
        std::ranges::find_if(clockSpans, [hour](const Span& s) { return s.firstHour <= hour && hour < s.endHour; });
    return span == clockSpans.end() ? Daypart::night : span->daypart;
}

QString DaypartInfo::rawValue(Daypart daypart) {
    return describe(daypart).rawValue;
}

std::optional<Daypart> DaypartInfo::fromRawValue(QStringView rawValue) {
    const auto* found = std::ranges::find_if(
        descriptions, [rawValue](const Description& description) { return description.rawValue == rawValue; });
    return found == descriptions.end() ? std::nullopt : std::optional{found->daypart};
}

QString DaypartInfo::title(Daypart daypart) {
    return describe(daypart).title;
}

QString DaypartInfo::symbolName(Daypart daypart) {
    return describe(daypart).symbolName;
}
