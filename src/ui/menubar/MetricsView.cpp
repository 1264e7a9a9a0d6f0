#include "ui/menubar/MetricsView.h"

#include "app/StatusModel.h"
#include "ui/ClockText.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/MetricRow.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/StatTile.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
namespace Metrics = PanelMetrics::Metrics;

MetricsView::MetricsView(StatusModel& status, const DaypartController& daypart, QWidget* parent)
    : PanelSection{daypart, parent, PanelMetrics::sectionMargins, Metrics::spacing}
    , m_status{status}
    , m_bridge{new MetricRow{u"Bridge"_s, colours(), this}}
    , m_caddy{new MetricRow{u"Caddy"_s, colours(), this}}
    , m_postgres{new MetricRow{u"Postgres"_s, colours(), this}}
    , m_load{new StatTile{u"Load"_s, colours(), this}}
    , m_memory{new StatTile{u"Memory"_s, colours(), this}}
    , m_disk{new StatTile{u"Disk"_s, colours(), this}}
    , m_error{new TextLabel{Metrics::errorText, colours(), this}}
    , m_updated{new TextLabel{Metrics::updatedText, colours(), this}} {
    column().addWidget(m_bridge);
    column().addWidget(m_caddy);
    column().addWidget(m_postgres);
    addTiles();
    column().addWidget(m_error);
    column().addWidget(m_updated);
    observe(status);
}

void MetricsView::addTiles() {
    auto* tiles = new QHBoxLayout;
    tiles->setContentsMargins(0, Metrics::tilesTopPadding, 0, 0);
    tiles->setSpacing(Metrics::tileSpacing);
    tiles->addWidget(m_load, 1);
    tiles->addWidget(m_memory, 1);
    tiles->addWidget(m_disk, 1);
    column().addLayout(tiles);
}

void MetricsView::render() {
    const bool isOnline = m_status.bridgeOnline;
    m_bridge->display(isOnline ? u"online · :43105"_s : u"offline"_s, isOnline);
    m_caddy->display(m_status.caddyDetail, m_status.caddyBand == StatusModel::Band::green);
    m_postgres->display(m_status.postgresDetail, m_status.postgresOk.value() == true);
    m_load->display(m_status.hostLoad);
    m_memory->display(m_status.hostMemory);
    m_disk->display(m_status.hostDisk);

    const auto& error = m_status.lastError.value();
    m_error->display(error.value_or(QString{}));
    m_error->setVisible(error.has_value());

    const auto& updated = m_status.lastPoll.value();
    m_updated->display(updated ? QString{u"Updated " + ClockText::withSeconds(*updated)} : QString{});
    m_updated->setVisible(updated.has_value());
}

#include "moc_MetricsView.cpp"
