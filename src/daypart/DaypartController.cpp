#include "daypart/DaypartController.h"

#include "platform/UserDefaults.h"

#include <QCoreApplication>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto clockInterval = 60s;

Daypart storedOrClock(const UserDefaults& defaults, bool isManual, const Clock& clock) {
    const auto stored = isManual ? defaults.string(QLatin1StringView{DaypartController::storageKey}) : std::nullopt;
    const auto pinned = stored ? DaypartInfo::fromRawValue(*stored) : std::nullopt;
    return pinned ? *pinned : DaypartInfo::fromClock(clock());
}

}

DaypartController::DaypartController(UserDefaults& defaults, Clock clock, const Ticker& ticker, QObject* parent)
    : ObservableObject{parent}
    , isManual{*this, defaults.boolean(QLatin1StringView{manualKey})}
    , daypart{*this, storedOrClock(defaults, isManual, clock)}
    , palette{*this, DaypartPalette::of(daypart)}
    , m_defaults{defaults}
    , m_clock{std::move(clock)} {
    ticker(*this, clockInterval, [this] {
        if (!isManual) {
            applyClock();
        }
    });
}

DaypartController& DaypartController::shared() {
    static const auto defaults = UserDefaults::standard();
    static auto* const controller =
        new DaypartController{*defaults, wallClock, timerTicker, QCoreApplication::instance()};
    return *controller;
}

void DaypartController::set(Daypart choice) {
    daypart = choice;
    palette = DaypartPalette::of(choice);
    isManual = true;
    m_defaults.setBoolean(QLatin1StringView{manualKey}, true);
    m_defaults.setString(QLatin1StringView{storageKey}, DaypartInfo::rawValue(choice));
}

void DaypartController::useAuto() {
    isManual = false;
    m_defaults.setBoolean(QLatin1StringView{manualKey}, false);
    m_defaults.remove(QLatin1StringView{storageKey});
    applyClock();
}

void DaypartController::applyClock() {
    const auto current = DaypartInfo::fromClock(m_clock());
    if (current == daypart) {
        return;
    }
    daypart = current;
    palette = DaypartPalette::of(current);
}

#include "moc_DaypartController.cpp"
