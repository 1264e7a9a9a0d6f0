#include "ui/menubar/MetricsView.h"

#include "app/StatusModel.h"
#include "ui/ClockText.h"
#include "ui/kit/DotLabel.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/StatTile.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
namespace Metrics = PanelMetrics::Metrics;

MetricsView::MetricsView(StatusModel& status, const DaypartController& daypart, QWidget* parent)
    : PanelSection{daypart, parent, PanelMetrics::sectionMargins, Metrics::spacing}
    , m_status{status}
    , m_bridge{addCheck(u"Bridge"_s)}
    , m_caddy{addCheck(u"Caddy"_s)}
    , m_postgres{addCheck(u"Postgres"_s)}
    , m_load{new StatTile{u"Load"_s, colours(), this}}
    , m_memory{new StatTile{u"Memory"_s, colours(), this}}
    , m_disk{new StatTile{u"Disk"_s, colours(), this}}
    , m_error{new TextLabel{Metrics::errorText, colours(), this}}
    , m_updated{new TextLabel{Metrics::updatedText, colours(), this}} {
    addTiles();
    column().addWidget(m_error);
    column().addWidget(m_updated);
    observe(status);
}

MetricsView::Check MetricsView::addCheck(const QString& label) {
    auto* title = new TextLabel{Metrics::labelText, colours(), this, label};
    title->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    title->setFixedWidth(Metrics::labelWidth);
    const Check check{new TextLabel{Metrics::valueText, colours(), this}, new DotLabel{Metrics::dot, colours(), this}};
    auto* dot = new QVBoxLayout;
    dot->setContentsMargins(0, Metrics::dotTopPadding, 0, 0);
    dot->addWidget(check.dot);
    auto* row = new QHBoxLayout;
    row->setSpacing(Metrics::rowSpacing);
    row->addWidget(title, 0, Qt::AlignTop);
    row->addWidget(check.value, 1, Qt::AlignTop);
    row->addSpacing(Metrics::rowSpacing);
    row->addLayout(dot);
    row->setAlignment(dot, Qt::AlignTop);
    column().addLayout(row);
    return check;
}

void MetricsView::Check::display(const QString& text, bool ok) const {
    value->display(text);
    value->setRole(ok ? ColourRole::text : ColourRole::warning);
    dot->display(ok, ColourRole::warning);
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
    m_bridge.display(isOnline ? u"online · :43105"_s : u"offline"_s, isOnline);
    m_caddy.display(m_status.caddyDetail, m_status.caddyBand == StatusModel::Band::green);
    m_postgres.display(m_status.postgresDetail, m_status.postgresOk.value() == true);
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
