#pragma once

#include "ui/kit/TextStyle.h"

#include <optional>

/// How a button looks, as a value. Lengths are points.
struct ButtonStyle {
    enum class Arrangement { leading, centred, stacked };

    TextStyle text; ///< its colour is the symbol's too
    Arrangement arrangement = Arrangement::leading;
    int horizontalPadding = 0;
    int verticalPadding = 0;
    int symbolSpacing = 6; ///< between symbol and title
    int cornerRadius = 0;
    std::optional<Tint> fill{};
    std::optional<Tint> pressedFill{}; ///< in place of `fill` while pressed
    std::optional<Tint> outline{};
    float pressedOpacity = 1; ///< of the whole button
    bool underlinesWhenHovered = false;
    ColourRole focusRing = ColourRole::accent;
    int focusRingInset = 0;
};

/// A button that looks like a link: its title alone, underlined under the pointer.
inline constexpr ButtonStyle linkButtonStyle{.text = {.colour = {ColourRole::accent}},
                                             .horizontalPadding = 4,
                                             .verticalPadding = 2,
                                             .cornerRadius = 4,
                                             .underlinesWhenHovered = true};
