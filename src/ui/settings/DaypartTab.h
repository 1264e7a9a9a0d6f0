#pragma once

#include "daypart/Daypart.h"
#include "ui/kit/View.h"

#include <array>

class ChoiceButton;
class DaypartController;
class FormButton;
class FormSection;
class GroupedForm;

/// Pins a daypart, or lets it follow the clock.
class DaypartTab final : public View {
    Q_OBJECT

public:
    explicit DaypartTab(DaypartController& daypart, QWidget* parent = nullptr);

protected:
    void render() override;

private:
    void addPicker(FormSection& section);

    DaypartController& m_daypart;
    GroupedForm* m_form = nullptr;
    std::array<ChoiceButton*, DaypartInfo::allCases.size()> m_choices{};
    QWidget* m_following = nullptr;
    FormButton* m_follow = nullptr;
};
