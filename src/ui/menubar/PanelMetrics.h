#pragma once

#include "ui/kit/ButtonStyle.h"
#include "ui/kit/DotLabel.h"

#include <QMargins>

/// The panel's measures, in points.
namespace PanelMetrics {

inline constexpr auto monospaced = FontDesign::monospaced;
inline constexpr Tint muted{ColourRole::textMuted};

inline constexpr int width = 340;
inline constexpr int cornerRadius = 10;
inline constexpr int rule = 1; ///< between sections
inline constexpr QMargins sectionMargins{14, 14, 14, 14};

inline constexpr TextStyle headingText{.size = 10, .weight = QFont::DemiBold, .tracking = 0.8, .colour = muted};

namespace Header {
inline constexpr QMargins margins{14, 12, 14, 12};
inline constexpr int spacing = 10;
inline constexpr int textSpacing = 2;
inline constexpr int dot = 10;
inline constexpr DotLabel::Halo halo{.diameter = 28, .opacity = 0.18F};
inline constexpr TextStyle titleText{.size = 16, .weight = QFont::Bold, .design = FontDesign::rounded};
inline constexpr TextStyle subtitleText{.size = 11, .design = monospaced, .colour = muted};
}

namespace Metrics {
inline constexpr int spacing = 8;
inline constexpr int rowSpacing = 8;
inline constexpr int labelWidth = 64;
inline constexpr int dot = 6;
inline constexpr int dotTopPadding = 4;
inline constexpr int tileSpacing = 8;
inline constexpr int tilesTopPadding = 2;
inline constexpr TextStyle labelText{.size = 12, .weight = QFont::Medium, .design = monospaced, .colour = muted};
inline constexpr TextStyle valueText{.size = 12, .design = monospaced, .lines = 2};
inline constexpr TextStyle errorText{.size = 11, .colour = {ColourRole::danger}, .lines = 2};
inline constexpr TextStyle updatedText{.size = 10, .colour = {ColourRole::textMuted, 0.8F}};
}

namespace Tile {
inline constexpr int padding = 8;
inline constexpr int spacing = 2;
inline constexpr int cornerRadius = 6;
inline constexpr TextStyle titleText{.size = 9, .weight = QFont::DemiBold, .tracking = 0.6, .colour = muted};
inline constexpr TextStyle valueText{.size = 12, .weight = QFont::Medium, .design = monospaced, .minimumScale = 0.7};
}

namespace Services {
inline constexpr int maxRows = 8;
inline constexpr int spacing = 8;
inline constexpr int rowSpacing = 8;
inline constexpr int dot = 6;
inline constexpr TextStyle emptyText{.size = 11, .colour = muted};
inline constexpr TextStyle nameText{.size = 11, .design = monospaced};
inline constexpr TextStyle detailText{.size = 10, .design = monospaced, .colour = muted};
}

namespace Actions {
inline constexpr int spacing = 6;
inline constexpr int buttonSpacing = 8;
inline constexpr int headingTopPadding = 6;
inline constexpr TextStyle busyText{.size = 11, .colour = muted};
inline constexpr TextStyle messageText{.size = 10, .design = monospaced, .colour = muted, .lines = 3};
}

namespace Picker {
inline constexpr QMargins margins{14, 14, 10, 14}; ///< and the focus ring's room
inline constexpr int spacing = 8;
inline constexpr int chipSpacing = 4;
inline constexpr int focusRingRoom = 4; ///< beside "Auto"
inline constexpr TextStyle autoText{.size = 11, .weight = QFont::Medium, .colour = {ColourRole::accent}};
inline constexpr ButtonStyle autoButton{.text = autoText,
                                        .arrangement = ButtonStyle::Arrangement::centred,
                                        .horizontalPadding = focusRingRoom,
                                        .cornerRadius = 4,
                                        .pressedOpacity = 0.7F};
inline constexpr ButtonStyle chip{.text = {.size = 9, .weight = QFont::DemiBold, .colour = muted},
                                  .arrangement = ButtonStyle::Arrangement::stacked,
                                  .verticalPadding = 8,
                                  .symbolSpacing = 3,
                                  .cornerRadius = 6,
                                  .fill = Tint{ColourRole::surface},
                                  .outline = Tint{ColourRole::border},
                                  .pressedOpacity = 0.7F};
inline constexpr ButtonStyle selectedChip = [] {
    ButtonStyle style = chip;
    style.text.colour = {ColourRole::background};
    style.fill = style.outline = Tint{ColourRole::accent};
    style.pressedFill = Tint{ColourRole::accent, 0.9F};
    style.pressedOpacity = 1;
    style.focusRing = ColourRole::background;
    style.focusRingInset = 2;
    return style;
}();
}

namespace Footer {
inline constexpr int spacing = 4;
}

namespace Placement {
inline constexpr int gap = 6;        ///< between the icon and the panel
inline constexpr int edgeMargin = 8; ///< between the panel and the edge of the work area
inline constexpr int bars = 36;      ///< what the bars of a desktop may take that does not tell its work area
}

namespace ScrollMark {
inline constexpr int width = 3;
inline constexpr int margin = 3;
inline constexpr int minLength = 24;
inline constexpr float opacity = 0.45F;
}

}
