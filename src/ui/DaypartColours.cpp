#include "ui/DaypartColours.h"

#include "daypart/DaypartController.h"

#include <array>

namespace {

/// In the order of the roles.
constexpr std::array colours{
    &DaypartPalette::background, &DaypartPalette::surface,   &DaypartPalette::surfaceElevated, &DaypartPalette::border,
    &DaypartPalette::text,       &DaypartPalette::textMuted, &DaypartPalette::accent,          &DaypartPalette::success,
    &DaypartPalette::warning,    &DaypartPalette::danger,
};

}

QColor DaypartColours::of(ColourRole role) const {
    return QColor{m_daypart.palette.value().*colours.at(static_cast<std::size_t>(role))};
}
