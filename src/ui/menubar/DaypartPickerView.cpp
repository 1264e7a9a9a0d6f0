#include "ui/menubar/DaypartPickerView.h"

#include "daypart/DaypartController.h"
#include "ui/kit/Button.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/PanelMetrics.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
namespace Picker = PanelMetrics::Picker;

namespace {

/// One daypart to choose: its symbol over its title, filled with the accent while it is the current one, and checked.
class DaypartChip final : public Button {
public:
    DaypartChip(Daypart daypart, const Colours& colours, QWidget* parent)
        : Button{DaypartInfo::title(daypart), DaypartInfo::symbolName(daypart), Picker::chip, colours, parent} {
        setCheckable(true);
    }

protected:
    [[nodiscard]] const ButtonStyle& look() const override { return isChecked() ? Picker::selectedChip : Picker::chip; }

    /// A press leaves the choice to whoever hears of it.
    void nextCheckState() override {}
};

}

DaypartPickerView::DaypartPickerView(DaypartController& daypart, QWidget* parent)
    : PanelSection{daypart, parent, Picker::margins, Picker::spacing}
    , m_daypart{daypart} {
    addHeading();
    addChips();
    observe(daypart);
}

void DaypartPickerView::addHeading() {
    const QString automatic = u"Auto"_s;
    auto* heading = new TextLabel{PanelMetrics::headingText, colours(), this, u"DAYPART"_s};
    m_autoText = new TextLabel{Picker::autoText, colours(), this, automatic};
    m_autoButton = new Button{automatic, {}, Picker::autoButton, colours(), this};
    m_autoText->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_autoText->setFixedWidth(m_autoText->naturalWidth() + Picker::focusRingRoom);
    connect(m_autoButton, &QPushButton::clicked, this, [this] { m_daypart.useAuto(); });
    auto* row = new QHBoxLayout;
    row->setSpacing(0);
    row->addWidget(heading, 1, Qt::AlignVCenter);
    row->addWidget(m_autoText, 0, Qt::AlignVCenter);
    row->addWidget(m_autoButton, 0, Qt::AlignVCenter);
    column().addLayout(row);
}

void DaypartPickerView::addChips() {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 0, Picker::focusRingRoom, 0);
    row->setSpacing(Picker::chipSpacing);
    for (std::size_t i = 0; i < m_chips.size(); ++i) {
        const Daypart daypart = DaypartInfo::allCases[i];
        m_chips[i] = new DaypartChip{daypart, colours(), this};
        connect(m_chips[i], &QPushButton::clicked, this, [this, daypart] { m_daypart.set(daypart); });
        row->addWidget(m_chips[i], 1);
    }
    column().addLayout(row);
}

void DaypartPickerView::render() {
    const bool isManual = m_daypart.isManual;
    m_autoText->setVisible(!isManual);
    m_autoButton->setVisible(isManual);
    for (std::size_t i = 0; i < m_chips.size(); ++i) {
        m_chips[i]->setChecked(DaypartInfo::allCases[i] == m_daypart.daypart);
    }
}

#include "moc_DaypartPickerView.cpp"
