#include "ui/menubar/ServicesView.h"

#include "app/StatusModel.h"
#include "daypart/DaypartController.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/ServiceRowView.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;
namespace Services = PanelMetrics::Services;

ServicesView::ServicesView(StatusModel& status, DaypartController& daypart, QWidget* parent)
    : PanelSection{parent, PanelMetrics::sectionMargins, Services::spacing}
    , m_status{status}
    , m_daypart{daypart}
    , m_heading{new TextLabel{PanelMetrics::headingText, this}}
    , m_empty{new TextLabel{Services::emptyText, this}} {
    column().addWidget(m_heading);
    column().addWidget(m_empty);
    for (int i = 0; i < Services::mostRows; ++i) {
        m_rows += new ServiceRowView{this};
        column().addWidget(m_rows.back());
    }
    m_heading->display(u"SERVICES"_s);
    observe(status);
    observe(daypart);
}

void ServicesView::render() {
    const DaypartPalette& palette = m_daypart.palette;
    const auto& services = m_status.services.value();
    m_heading->setColour(palette.textMuted);
    m_empty->setColour(palette.textMuted);
    m_empty->display(m_status.bridgeOnline ? u"No probes yet"_s : u"Start bridge: vorna server start"_s);
    m_empty->setVisible(services.isEmpty());
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        const bool isUsed = i < services.size();
        m_rows.at(i)->display(isUsed ? services.at(i) : StatusModel::ServiceRow{}, palette);
        m_rows.at(i)->setVisible(isUsed);
    }
}

#include "moc_ServicesView.cpp"
