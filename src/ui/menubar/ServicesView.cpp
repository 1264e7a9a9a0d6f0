#include "ui/menubar/ServicesView.h"

#include "app/StatusModel.h"
#include "ui/kit/SelectableLabel.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/ServiceRowView.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;
namespace Services = PanelMetrics::Services;

ServicesView::ServicesView(StatusModel& status, const DaypartController& daypart, QWidget* parent)
    : PanelSection{daypart, parent, PanelMetrics::sectionMargins, Services::spacing}
    , m_status{status} {
    column().addWidget(new TextLabel{PanelMetrics::headingText, colours(), this, u"SERVICES"_s});
    m_empty = new SelectableLabel{Services::emptyText, colours(), this};
    column().addWidget(m_empty);
    for (int i = 0; i < Services::maxRows; ++i) {
        m_rows += new ServiceRowView{colours(), this};
        column().addWidget(m_rows.back());
    }
    observe(status);
}

void ServicesView::render() {
    const auto& services = m_status.services.value();
    const QString command = u"vorna server start"_s;
    m_empty->display(m_status.bridgeOnline ? u"No probes yet"_s : u"Start bridge: "_s + command, command);
    m_empty->setFocusPolicy(m_status.bridgeOnline ? Qt::NoFocus : Qt::StrongFocus);
    m_empty->setVisible(services.isEmpty());
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        const bool isUsed = i < services.size();
        m_rows.at(i)->display(isUsed ? services.at(i) : StatusModel::ServiceRow{});
        m_rows.at(i)->setVisible(isUsed);
    }
}

#include "moc_ServicesView.cpp"
