#include "ui/settings/DaypartTab.h"

#include "daypart/DaypartController.h"
#include "ui/kit/TextLabel.h"
#include "ui/settings/SymbolIcon.h"

#include <QPushButton>
#include <QRadioButton>

using namespace Qt::StringLiterals;

DaypartTab::DaypartTab(DaypartController& daypart, const Colours& colours, QWidget* parent)
    : Form{colours, parent}
    , m_daypart{daypart} {
    addSection(u"Appearance"_s);
    addPicker();
    m_following =
        &addText(u"Following local clock · dawn 5–10 · day 10–17 · dusk 17–21 · night else"_s, FormMetrics::caption);
    m_follow = &addButton(u"Follow clock (auto)"_s);
    connect(m_follow, &QPushButton::clicked, &m_daypart, &DaypartController::useAuto);
    observe(m_daypart);
}

void DaypartTab::addPicker() {
    const auto& title = addText(u"Daypart"_s);
    for (const auto choice : DaypartInfo::allCases) {
        auto* const button = new QRadioButton{DaypartInfo::title(choice)};
        button->setIcon(symbolIcon(DaypartInfo::symbolName(choice)));
        button->setAccessibleDescription(title.wholeText());
        addControl(*button);
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
}

#include "moc_DaypartTab.cpp"
