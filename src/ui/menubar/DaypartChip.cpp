#include "ui/menubar/DaypartChip.h"

#include "ui/menubar/PanelMetrics.h"

namespace Picker = PanelMetrics::Picker;

DaypartChip::DaypartChip(Daypart daypart, const Colours& colours, QWidget* parent)
    : Button{DaypartInfo::title(daypart), DaypartInfo::symbolName(daypart), Picker::chip, colours, parent} {
    setCheckable(true);
}

const ButtonStyle& DaypartChip::look() const {
    return isChecked() ? Picker::selectedChip : Picker::chip;
}

void DaypartChip::nextCheckState() {}

#include "moc_DaypartChip.cpp"
