#include "daypart/DaypartController.h"
#include "ui/kit/Button.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/PanelSection.h"
#include "ui/menubar/PanelSections.h"

#include <QHBoxLayout>

#include <array>

using namespace Qt::StringLiterals;
namespace Picker = PanelMetrics::Picker;

namespace {

/// One daypart to choose: its symbol over its title, filled with the accent while it is the current one, and checked.
class DaypartChip final : public Button {
public:
    DaypartChip(Daypart daypart, PanelSection& section)
        : Button{DaypartInfo::title(daypart), DaypartInfo::symbolName(daypart), Picker::chip, section.colours(),
                 &section} {
        setCheckable(true);
    }

protected:
    [[nodiscard]] const ButtonStyle& look() const override { return isChecked() ? Picker::selectedChip : Picker::chip; }

    /// A press leaves the choice to whoever hears of it.
    void nextCheckState() override {}
};

}

PanelSections::Section PanelSections::daypartPicker(DaypartController& daypart) {
    auto section = std::make_unique<PanelSection>(daypart, Picker::margins, Picker::spacing);
    auto& heading = section->addText(PanelMetrics::headingText, u"DAYPART"_s);
    auto& autoText = section->addText(Picker::autoText, u"Auto"_s);
    auto& autoButton = section->addButton(u"Auto"_s, {}, Picker::autoButton, [&daypart] { daypart.useAuto(); });
    autoText.setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    autoText.setFixedWidth(autoText.naturalWidth() + Picker::focusRingRoom);
    auto& top = section->addRow(0);
    top.addWidget(&heading, 1, Qt::AlignVCenter);
    top.addWidget(&autoText, 0, Qt::AlignVCenter);
    top.addWidget(&autoButton, 0, Qt::AlignVCenter);

    std::array<DaypartChip*, DaypartInfo::allCases.size()> chips{};
    auto& row = section->addRow(Picker::chipSpacing);
    row.setContentsMargins(0, 0, Picker::focusRingRoom, 0);
    for (std::size_t i = 0; i < chips.size(); ++i) {
        const Daypart choice = DaypartInfo::allCases[i];
        chips[i] = new DaypartChip{choice, *section};
        QObject::connect(chips[i], &QPushButton::clicked, section.get(), [&daypart, choice] { daypart.set(choice); });
        row.addWidget(chips[i], 1);
    }
    section->follow({&daypart}, [&daypart, &autoText, &autoButton, chips] {
        autoText.setVisible(!daypart.isManual);
        autoButton.setVisible(daypart.isManual);
        for (std::size_t i = 0; i < chips.size(); ++i) {
            chips[i]->setChecked(DaypartInfo::allCases[i] == daypart.daypart);
        }
    });
    return section;
}
