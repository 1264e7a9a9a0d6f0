#include "ui/menubar/DaypartPickerView.h"

#include "daypart/DaypartController.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/DaypartChip.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/PlainButton.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
namespace Picker = PanelMetrics::Picker;

DaypartPickerView::DaypartPickerView(DaypartController& daypart, QWidget* parent)
    : PanelSection{parent, Picker::margins, Picker::spacing}
    , m_daypart{daypart}
    , m_heading{new TextLabel{PanelMetrics::headingText, this}}
    , m_autoText{new TextLabel{Picker::autoText, this}}
    , m_autoButton{new PlainButton{u"Auto"_s, Picker::autoText, this}} {
    addHeading();
    addChips();
    observe(daypart);
}

void DaypartPickerView::addHeading() {
    m_heading->display(u"DAYPART"_s);
    m_autoText->display(m_autoButton->accessibleName());
    m_autoText->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_autoText->setFixedWidth(m_autoText->naturalWidth() + PanelMetrics::Button::focusRingRoom);
    connect(m_autoButton, &QPushButton::clicked, this, [this] { m_daypart.useAuto(); });
    auto* row = new QHBoxLayout;
    row->setSpacing(0);
    row->addWidget(m_heading, 1, Qt::AlignVCenter);
    row->addWidget(m_autoText, 0, Qt::AlignVCenter);
    row->addWidget(m_autoButton, 0, Qt::AlignVCenter);
    column().addLayout(row);
}

void DaypartPickerView::addChips() {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 0, PanelMetrics::Button::focusRingRoom, 0);
    row->setSpacing(Picker::chipSpacing);
    for (std::size_t i = 0; i < m_chips.size(); ++i) {
        const Daypart daypart = DaypartInfo::allCases[i];
        m_chips[i] = new DaypartChip{daypart, this};
        connect(m_chips[i], &QPushButton::clicked, this, [this, daypart] { m_daypart.set(daypart); });
        row->addWidget(m_chips[i], 1);
    }
    column().addLayout(row);
}

void DaypartPickerView::render() {
    const DaypartPalette& palette = m_daypart.palette;
    const bool isManual = m_daypart.isManual;
    m_heading->setColour(palette.textMuted);
    m_autoText->setColour(palette.accent);
    m_autoText->setVisible(!isManual);
    m_autoButton->setColour(palette.accent);
    m_autoButton->setVisible(isManual);
    for (std::size_t i = 0; i < m_chips.size(); ++i) {
        m_chips[i]->display(DaypartInfo::allCases[i] == m_daypart.daypart, palette);
    }
}

#include "moc_DaypartPickerView.cpp"
