#include "ui/menubar/PanelPlacement.h"

#include "ui/menubar/PanelMetrics.h"

#include <algorithm>

namespace Placement = PanelMetrics::Placement;

namespace {

int inside(int position, int length, int areaStart, int areaLength) {
    const int last = areaStart + areaLength - Placement::edgeMargin - length;
    return std::max(areaStart + Placement::edgeMargin, std::min(position, last));
}

}

int PanelPlacement::height(int contentHeight, const QRect& workArea) {
    return std::min(contentHeight, workArea.height() - 2 * Placement::edgeMargin);
}

int PanelPlacement::columnHeight(int screenHeight) {
    return screenHeight - 2 * Placement::edgeMargin - Placement::bars;
}

QRect PanelPlacement::place(const QSize& panel, const QRect& anchor, const QRect& workArea) {
    const int anchorEnd = anchor.top() + anchor.height();
    const int workAreaEnd = workArea.top() + workArea.height();
    const int below = anchorEnd + Placement::gap;
    const int above = anchor.top() - Placement::gap - panel.height();
    const bool fitsBelow = below + panel.height() + Placement::edgeMargin <= workAreaEnd;
    const bool hasMoreRoomBelow = workAreaEnd - anchorEnd >= anchor.top() - workArea.top();
    const int x = anchor.left() + (anchor.width() - panel.width()) / 2;
    const int y = fitsBelow || hasMoreRoomBelow ? below : above;
    return {QPoint{inside(x, panel.width(), workArea.left(), workArea.width()),
                   inside(y, panel.height(), workArea.top(), workArea.height())},
            panel};
}
