#pragma once

#include <QRect>

/// Where the panel goes. All in points on the virtual desktop.
namespace PanelPlacement {

/// The height that a panel with that much content has inside the work area.
[[nodiscard]] int height(int contentHeight, const QRect& workArea);

/// A panel of this size centred under the anchor, or above it where there is more room, moved so that all of it stays
/// inside the work area; one that is larger than the work area keeps its top left corner there.
[[nodiscard]] QRect place(const QSize& panel, const QRect& anchor, const QRect& workArea);

}
