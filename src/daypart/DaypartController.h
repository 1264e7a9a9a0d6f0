#pragma once

#include "daypart/DaypartPalette.h"
#include "support/Clock.h"
#include "support/ObservableObject.h"
#include "support/Published.h"
#include "support/Ticker.h"

class UserDefaults;

/// The daypart in force and its palette: the clock's, looked at once a minute, or the one that the user pinned. The
/// pinned one outlives the process in two user defaults. Main thread only; `defaults` must outlive the controller.
class DaypartController final : public ObservableObject {
    Q_OBJECT

public:
    static constexpr auto storageKey = "vorna.macos.daypart";
    static constexpr auto manualKey = "vorna.macos.daypart.manual";

    explicit DaypartController(UserDefaults& defaults, Clock clock = wallClock, const Ticker& ticker = timerTicker,
                               QObject* parent = nullptr);

    /// The application's one controller, made on first use over the standard defaults and the wall clock.
    [[nodiscard]] static DaypartController& shared();

    Published<bool> isManual;
    Published<Daypart> daypart;
    Published<DaypartPalette> palette;

    /// Pins a daypart, also the current one.
    void set(Daypart choice);

    /// Follows the clock again, from now on.
    void useAuto();

private:
    void applyClock();

    UserDefaults& m_defaults;
    Clock m_clock;
};
