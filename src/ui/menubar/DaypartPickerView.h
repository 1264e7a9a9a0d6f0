#pragma once

#include "daypart/Daypart.h"
#include "ui/menubar/PanelSection.h"

#include <array>

class DaypartChip;
class DaypartController;
class PlainButton;
class TextLabel;

/// Pins a daypart, or goes back to the clock's.
class DaypartPickerView final : public PanelSection {
    Q_OBJECT

public:
    explicit DaypartPickerView(DaypartController& daypart, QWidget* parent = nullptr);

protected:
    void render() override;

private:
    void addHeading();
    void addChips();

    DaypartController& m_daypart;
    TextLabel* m_heading;
    TextLabel* m_autoText;
    PlainButton* m_autoButton;
    std::array<DaypartChip*, DaypartInfo::allCases.size()> m_chips{};
};
