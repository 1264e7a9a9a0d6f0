#include "ui/menubar/MetricsView.h"

#include "app/StatusModel.h"
#include "daypart/DaypartController.h"
#include "ui/ClockText.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/MetricRow.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/StatTile.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
namespace Metrics = PanelMetrics::Metrics;

MetricsView::MetricsView(StatusModel& status, DaypartController& daypart, QWidget* parent)
    : PanelSection{parent, PanelMetrics::sectionMargins, Metrics::spacing}
    , m_status{status}
    , m_daypart{daypart}
    , m_bridge{new MetricRow{u"Bridge"_s, this}}
    , m_caddy{new MetricRow{u"Caddy"_s, this}}
    , m_postgres{new MetricRow{u"Postgres"_s, this}}
    , m_load{new StatTile{u"Load"_s, this}}
    , m_memory{new StatTile{u"Memory"_s, this}}
    , m_disk{new StatTile{u"Disk"_s, this}}
    , m_error{new TextLabel{Metrics::errorText, this}}
    , m_updated{new TextLabel{Metrics::updatedText, this}} {
    column().addWidget(m_bridge);
    column().addWidget(m_caddy);
    column().addWidget(m_postgres);
    addTiles();
    column().addWidget(m_error);
    column().addWidget(m_updated);
    observe(status);
    observe(daypart);
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
    const DaypartPalette& palette = m_daypart.palette;
    const bool isOnline = m_status.bridgeOnline;
    m_bridge->display(isOnline ? u"online · :43105"_s : u"offline"_s, isOnline, palette);
    m_caddy->display(m_status.caddyDetail, m_status.caddyBand == StatusModel::Band::green, palette);
    m_postgres->display(m_status.postgresDetail, m_status.postgresOk.value() == true, palette);
    m_load->display(m_status.hostLoad, palette);
    m_memory->display(m_status.hostMemory, palette);
    m_disk->display(m_status.hostDisk, palette);

    const auto& error = m_status.lastError.value();
    m_error->setColour(palette.danger);
    m_error->display(error.value_or(QString{}));
    m_error->setVisible(error.has_value());

    const auto& updated = m_status.lastPoll.value();
    QColor faint{palette.textMuted};
    faint.setAlphaF(Metrics::updatedOpacity);
    m_updated->setColour(faint);
    m_updated->display(updated ? QString{u"Updated " + ClockText::withSeconds(*updated)} : QString{});
    m_updated->setVisible(updated.has_value());
}

#include "moc_MetricsView.cpp"
