#pragma once

#include <QRect>

/// Where the panel goes. All in points on the virtual desktop.
namespace PanelPlacement {

/// The height that a panel with that much content has inside the work area.
[[nodiscard]] int height(int contentHeight, const QRect& workArea);

/// The height of the column that a panel lives in where its place is not ours to choose: as much as a screen has that
/// is that high and has bars of the usual height.
[[nodiscard]] int columnHeight(int screenHeight);

/// A panel of this size centred under the anchor, or above it where there is more room, moved so that all of it stays
/// inside the work area; one that is larger than the work area keeps its top left corner there.
[[nodiscard]] QRect place(const QSize& panel, const QRect& anchor, const QRect& workArea);

}
