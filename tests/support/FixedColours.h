#pragma once

#include "daypart/DaypartPalette.h"
#include "ui/kit/ColourRole.h"

/// The colours of a day that never ends.
class FixedColours final : public Colours {
public:
    using Colours::of;
    [[nodiscard]] QColor of(ColourRole role) const override {
        const auto& day = DaypartPalette::of(Daypart::day);
        const QRgb colours[]{day.background, day.surface, day.surfaceElevated, day.border,  day.text,
                             day.textMuted,  day.accent,  day.success,         day.warning, day.danger};
        return QColor{colours[static_cast<std::size_t>(role)]};
    }
};
