#pragma once

#include "daypart/Daypart.h"
#include "ui/kit/Button.h"

/// One daypart to choose: its symbol over its title, filled with the accent while it is the current one, and checked.
class DaypartChip final : public Button {
    Q_OBJECT

public:
    DaypartChip(Daypart daypart, const Colours& colours, QWidget* parent = nullptr);

protected:
    [[nodiscard]] const ButtonStyle& look() const override;

    /// A press leaves the choice to whoever hears of it.
    void nextCheckState() override;
};
