#include "ui/settings/DaypartTab.h"

#include "daypart/DaypartController.h"
#include "ui/settings/ChoiceButton.h"
#include "ui/settings/FormButton.h"
#include "ui/settings/FormSection.h"
#include "ui/settings/GroupedForm.h"

#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;
using Style = FormText::Style;

DaypartTab::DaypartTab(DaypartController& daypart, QWidget* parent)
    : View{parent}
    , m_daypart{daypart} {
    m_form = new GroupedForm{u"Daypart"_s, this};
    auto& section = m_form->addSection(u"Appearance"_s);
    addPicker(section);
    m_following =
        section.addText(u"Following local clock · dawn 5–10 · day 10–17 · dusk 17–21 · night else"_s, Style::caption)
            .parentWidget();
    m_follow = &section.addButton(u"Follow clock (auto)"_s);
    connect(m_follow, &QPushButton::clicked, &m_daypart, &DaypartController::useAuto);

    auto* const layout = new QVBoxLayout{this};
    layout->setContentsMargins({});
    layout->addWidget(m_form);
    observe(m_daypart);
}

void DaypartTab::addPicker(FormSection& section) {
    const auto& picker = section.addText(u"Daypart"_s);
    for (const auto choice : DaypartInfo::allCases) {
        auto* const button = new ChoiceButton{DaypartInfo::title(choice), DaypartInfo::symbolName(choice)};
        button->setAccessibleDescription(picker.text());
        section.addRow(*button);
        connect(button, &QRadioButton::clicked, &m_daypart, [this, choice] { m_daypart.set(choice); });
        m_choices.at(static_cast<std::size_t>(choice)) = button;
    }
}

void DaypartTab::render() {
    auto* const chosen = m_choices.at(static_cast<std::size_t>(m_daypart.daypart.value()));
    chosen->setChecked(true);
    for (auto* const choice : m_choices) {
        choice->setFocusPolicy(choice == chosen ? Qt::StrongFocus : Qt::ClickFocus);
    }
    if (m_follow->hasFocus() && !m_daypart.isManual) {
        chosen->setFocus();
    }
    m_following->setVisible(!m_daypart.isManual);
    m_follow->setVisible(m_daypart.isManual);
    m_form->layOutNow();
}

#include "moc_DaypartTab.cpp"
