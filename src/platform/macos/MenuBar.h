#pragma once

#include <QList>
#include <QRect>

#include <chrono>
#include <optional>

/// Where the status item is in the menu bars, and which clicks on it are new. In points on the virtual desktop.
namespace MenuBar {

struct Screen {
    QRect geometry;
    QRect workArea;
};

[[nodiscard]] QList<Screen> screens();

/// Whether a pointer is on the item or on its copy in the menu bar of another screen: anywhere in the bar's height,
/// the screen's upper edge included.
[[nodiscard]] bool isOnItem(QPoint pointer, const QRect& item, const QList<Screen>& screens);

/// What the panel hangs from after a click: the item; where the click was in a menu bar but beside the item, as large a
/// place around it in that bar.
[[nodiscard]] QRect anchor(const QRect& item, std::optional<QPoint> click, const QList<Screen>& screens);

/// One click can be heard of twice: by the button's action and by a monitor. Tells a new one from an echo.
class Openings final {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// Whether the menu opens for a click that is heard of now.
    [[nodiscard]] bool begin(Time now);
    void end(Time now);

private:
    std::optional<Time> m_latest;
};

}
