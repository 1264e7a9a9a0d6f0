#pragma once

#include "ui/kit/ButtonStyle.h"

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
