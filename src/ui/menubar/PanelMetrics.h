#pragma once

#include "ui/kit/TextStyle.h"

#include <QMargins>

/// The panel's measures, in points.
namespace PanelMetrics {

inline constexpr auto monospaced = TextStyle::Design::monospaced;

inline constexpr int width = 340;
inline constexpr int cornerRadius = 10;
inline constexpr QMargins sectionMargins{14, 14, 14, 14};

inline constexpr TextStyle headingText{.size = 10, .weight = QFont::DemiBold, .tracking = 0.8};

namespace Header {
inline constexpr QMargins margins{14, 12, 14, 12};
inline constexpr int spacing = 10;
inline constexpr int textSpacing = 2;
inline constexpr int dot = 10;
inline constexpr int halo = 28;
inline constexpr float haloOpacity = 0.18F;
inline constexpr TextStyle titleText{.size = 16, .weight = QFont::Bold};
inline constexpr TextStyle subtitleText{.size = 11, .design = monospaced};
}

namespace Metrics {
inline constexpr int spacing = 8;
inline constexpr int rowSpacing = 8;
inline constexpr int labelWidth = 64;
inline constexpr int dot = 6;
inline constexpr int dotTopPadding = 4;
inline constexpr int tileSpacing = 8;
inline constexpr int tilesTopPadding = 2;
inline constexpr float updatedOpacity = 0.8F;
inline constexpr TextStyle labelText{.size = 12, .weight = QFont::Medium, .design = monospaced};
inline constexpr TextStyle valueText{.size = 12, .design = monospaced, .lines = 2};
inline constexpr TextStyle errorText{.size = 11, .lines = 2};
inline constexpr TextStyle updatedText{.size = 10};
}

namespace Tile {
inline constexpr int padding = 8;
inline constexpr int spacing = 2;
inline constexpr int cornerRadius = 6;
inline constexpr TextStyle titleText{.size = 9, .weight = QFont::DemiBold, .tracking = 0.6};
inline constexpr TextStyle valueText{.size = 12, .weight = QFont::Medium, .design = monospaced, .minimumScale = 0.7};
}

namespace Services {
inline constexpr int mostRows = 8;
inline constexpr int spacing = 8;
inline constexpr int rowSpacing = 8;
inline constexpr int dot = 6;
inline constexpr TextStyle emptyText{.size = 11};
inline constexpr TextStyle nameText{.size = 11, .design = monospaced};
inline constexpr TextStyle detailText{.size = 10, .design = monospaced};
}

namespace Actions {
inline constexpr int spacing = 6;
inline constexpr int buttonSpacing = 8;
inline constexpr int headingTopPadding = 6;
inline constexpr TextStyle busyText{.size = 11};
inline constexpr TextStyle messageText{.size = 10, .design = monospaced, .lines = 3};
}

namespace Picker {
inline constexpr QMargins margins{14, 14, 10, 14}; ///< and the focus ring's room
inline constexpr int spacing = 8;
inline constexpr int chipSpacing = 4;
inline constexpr int chipVerticalPadding = 8;
inline constexpr int chipLabelSpacing = 3;
inline constexpr int chipSymbol = 16;
inline constexpr int chipCornerRadius = 6;
inline constexpr TextStyle chipText{.size = 9, .weight = QFont::DemiBold};
inline constexpr TextStyle autoText{.size = 11, .weight = QFont::Medium};
}

namespace Footer {
inline constexpr int spacing = 4;
}

namespace AccentButton {
inline constexpr int verticalPadding = 8;
inline constexpr int cornerRadius = 8;
inline constexpr int borderWidth = 1;
inline constexpr float pressedOpacity = 0.8F;
inline constexpr TextStyle text{.size = 12, .weight = QFont::DemiBold};
}

namespace MenuButton {
inline constexpr int horizontalPadding = 10;
inline constexpr int verticalPadding = 7;
inline constexpr int cornerRadius = 6;
inline constexpr float pressedOpacity = 0.15F;
inline constexpr float restOpacity = 0.001F;
inline constexpr TextStyle text{.size = 12};
}

namespace Button {
inline constexpr int symbol = 16;
inline constexpr int symbolSpacing = 6;
inline constexpr float disabledOpacity = 0.4F;
inline constexpr float plainPressedOpacity = 0.7F;
inline constexpr qreal focusRingWidth = 2;
inline constexpr qreal focusRingInset = 2; ///< on a button that is filled with the accent
inline constexpr int focusRingRoom = 4;    ///< beside a text without a fill
}

namespace Placement {
inline constexpr int gap = 6;        ///< between the icon and the panel
inline constexpr int edgeMargin = 8; ///< between the panel and the edge of the work area
inline constexpr int bars = 36;      ///< what the bars of a desktop may take that does not tell its work area
}

namespace ScrollMark {
inline constexpr int width = 3;
inline constexpr int margin = 3;
inline constexpr int leastLength = 24;
inline constexpr float opacity = 0.45F;
}

}
