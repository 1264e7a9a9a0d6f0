#pragma once

#include "daypart/Daypart.h"
#include "ui/settings/Form.h"

#include <array>

class DaypartController;
class QRadioButton;

/// Pins a daypart, or lets it follow the clock.
class DaypartTab final : public Form {
    Q_OBJECT

public:
    DaypartTab(DaypartController& daypart, const Colours& colours, QWidget* parent = nullptr);

protected:
    void render() override;

private:
    void addPicker();

    DaypartController& m_daypart;
    std::array<QRadioButton*, DaypartInfo::allCases.size()> m_choices{};
    TextLabel* m_following = nullptr;
    QPushButton* m_follow = nullptr;
};
