#pragma once

#include "ui/DaypartColours.h"

/// The colours of the settings. They are derived from the desktop's palette whenever something is painted, so that the
/// window follows it at once; a dot's are the daypart's. Each colour of a text is readable on a card, which is the
/// surface, and on the window, which is the background. The controller must outlive them.
class FormColours final : public Colours {
public:
    explicit FormColours(const DaypartController& daypart)
        : m_daypart{daypart} {}

    using Colours::of;
    [[nodiscard]] QColor of(ColourRole role) const override;

    /// How well one colour stands out from another: from 1 (not at all) to 21.
    [[nodiscard]] static qreal contrast(const QColor& one, const QColor& other);

private:
    const DaypartColours m_daypart;
};
