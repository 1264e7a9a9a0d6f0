#include "daypart/DaypartController.h"
#include "ui/kit/TextLabel.h"
#include "ui/settings/Form.h"
#include "ui/settings/SymbolIcon.h"
#include "ui/settings/Tabs.h"

#include <QPushButton>
#include <QRadioButton>

using namespace Qt::StringLiterals;

namespace {

QList<QRadioButton*> addPicker(Form& form, DaypartController& daypart) {
    const auto title = u"Daypart"_s;
    form.addText(title);
    QList<QRadioButton*> choices;
    for (const auto choice : DaypartInfo::allCases) {
        auto* const button = new QRadioButton{DaypartInfo::title(choice)};
        button->setIcon(symbolIcon(DaypartInfo::symbolName(choice)));
        button->setAccessibleDescription(title);
        form.addControl(*button);
        QObject::connect(button, &QRadioButton::clicked, &daypart, [&daypart, choice] { daypart.set(choice); });
        choices.append(button);
    }
    return choices;
}

}

QWidget* Tabs::daypart(DaypartController& daypart, const Colours& colours) {
    auto* const form = new Form{colours};
    form->addSection(u"Appearance"_s);
    const auto choices = addPicker(*form, daypart);
    auto* const following = &form->addText(u"Following local clock · dawn 5–10 · day 10–17 · dusk 17–21 · night else"_s,
                                           FormMetrics::caption);
    auto* const follow = &form->addButton(u"Follow clock (auto)"_s);
    QObject::connect(follow, &QPushButton::clicked, &daypart, &DaypartController::useAuto);
    form->whenRendered([=, &daypart] {
        auto* const chosen = choices.at(static_cast<qsizetype>(daypart.daypart.value()));
        chosen->setChecked(true);
        for (auto* const choice : choices) {
            choice->setFocusPolicy(choice == chosen ? Qt::StrongFocus : Qt::ClickFocus);
        }
        if (follow->hasFocus() && !daypart.isManual) {
            chosen->setFocus();
        }
        following->setVisible(!daypart.isManual);
        follow->setVisible(daypart.isManual);
    });
    form->observe(daypart);
    return form;
}
