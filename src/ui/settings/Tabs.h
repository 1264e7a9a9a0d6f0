#pragma once

#include <QUrl>

#include <functional>

class Colours;
class DaypartController;
class PermissionCenter;
class QWidget;
class StatusModel;

/// Opens a page of the dashboard, or a pane of the desktop's own settings.
using OpenUrl = std::function<void(const QUrl&)>;

/// The pages of the settings window, new and without a parent. What they are given must outlive them.
namespace Tabs {

/// Where the bridge is expected and whether it answers, the account, and how to start the bridge by hand.
[[nodiscard]] QWidget* bridge(StatusModel& status, DaypartController& daypart, const Colours& colours);

/// The permissions that the platform's features may need, as a list. It asks for their state each time it is shown,
/// and drops the answer when it is hidden before that comes.
[[nodiscard]] QWidget* permissions(PermissionCenter& permissions, const OpenUrl& openPane, const Colours& colours);

/// Pins a daypart, or lets it follow the clock.
[[nodiscard]] QWidget* daypart(DaypartController& daypart, const Colours& colours);

/// What the program is, its version, its role, and the dashboard's pages.
[[nodiscard]] QWidget* about(const OpenUrl& openPage, const Colours& colours);

}
