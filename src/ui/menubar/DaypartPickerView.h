#pragma once

#include "daypart/Daypart.h"
#include "ui/menubar/PanelSection.h"

#include <array>

class Button;
class DaypartController;
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
    TextLabel* m_autoText = nullptr;
    Button* m_autoButton = nullptr;
    std::array<Button*, DaypartInfo::allCases.size()> m_chips{};
};
