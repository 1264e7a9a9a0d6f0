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
