#pragma once

#include <memory>

class DaypartController;
class NotificationService;
class PanelSection;
class StatusModel;
struct PanelActions;

/// The sections of the panel. What they are handed must outlive them, but for the actions.
namespace PanelSections {

using Section = std::unique_ptr<PanelSection>;

/// The product, its version, the daypart, and a dot for the state of the reverse proxy.
[[nodiscard]] Section header(StatusModel& status, DaypartController& daypart);

/// The three checks, the three figures of the host, the last error and the time of the last poll.
[[nodiscard]] Section metrics(StatusModel& status, const DaypartController& daypart);

/// The first eight probed services, or why there are none.
[[nodiscard]] Section services(StatusModel& status, const DaypartController& daypart);

/// The quick actions, the two actions of the command-line tool, and what the last of these said.
[[nodiscard]] Section actions(StatusModel& status, const DaypartController& daypart, const PanelActions& actions);

/// Pins a daypart, or goes back to the clock's.
[[nodiscard]] Section daypartPicker(DaypartController& daypart);

/// A test notification, the settings, and the end of the program; the last two have keys as well.
[[nodiscard]] Section footer(const DaypartController& daypart, NotificationService& notifications,
                             const PanelActions& actions);

}
