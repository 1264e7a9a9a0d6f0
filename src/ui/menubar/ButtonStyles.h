#pragma once

#include "ui/kit/ButtonStyle.h"

/// How a quick action looks: symbol and title in the middle of an accent fill.
struct VornaAccentButtonStyle final : ButtonStyle {
    constexpr VornaAccentButtonStyle()
        : ButtonStyle{.text = {.size = 12, .weight = QFont::DemiBold, .colour = {ColourRole::background}},
                      .arrangement = Arrangement::centred,
                      .verticalPadding = 8,
                      .cornerRadius = 8,
                      .fill = Tint{ColourRole::accent},
                      .pressedFill = Tint{ColourRole::accent, 0.8F},
                      .outline = Tint{ColourRole::accent},
                      .focusRing = ColourRole::background,
                      .focusRingInset = 2} {}
};

/// How a row of a menu looks: symbol and title at its leading edge, flat, with a faint tint while it is pressed.
struct VornaMenuButtonStyle final : ButtonStyle {
    constexpr VornaMenuButtonStyle()
        : ButtonStyle{.text = {.size = 12},
                      .horizontalPadding = 10,
                      .verticalPadding = 7,
                      .cornerRadius = 6,
                      .fill = Tint{ColourRole::surfaceElevated, 0.001F},
                      .pressedFill = Tint{ColourRole::accent, 0.15F}} {}
};
