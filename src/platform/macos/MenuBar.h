#pragma once

#include <QList>
#include <QRect>

#include <optional>

/// Where the status item is in the menu bars. In points on the virtual desktop.
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

}
