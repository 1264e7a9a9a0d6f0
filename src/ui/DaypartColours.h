#pragma once

#include "ui/kit/ColourRole.h"

class DaypartController;

/// The colours of the daypart in force. The controller must outlive them.
class DaypartColours final : public Colours {
public:
    explicit DaypartColours(const DaypartController& daypart)
        : m_daypart{daypart} {}

    using Colours::of;
    [[nodiscard]] QColor of(ColourRole role) const override;

private:
    const DaypartController& m_daypart;
};
