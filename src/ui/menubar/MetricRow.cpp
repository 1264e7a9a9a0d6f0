#include "ui/menubar/MetricRow.h"

#include "ui/kit/DotLabel.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/PanelMetrics.h"

#include <QHBoxLayout>

namespace Metrics = PanelMetrics::Metrics;

MetricRow::MetricRow(const QString& label, const Colours& colours, QWidget* parent)
    : QWidget{parent} {
    auto* title = new TextLabel{Metrics::labelText, colours, this, label};
    title->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    title->setFixedWidth(Metrics::labelWidth);
    m_value = new TextLabel{Metrics::valueText, colours, this};
    m_dot = new DotLabel{Metrics::dot, colours, this};
    auto* dot = new QVBoxLayout;
    dot->setContentsMargins(0, Metrics::dotTopPadding, 0, 0);
    dot->addWidget(m_dot);
    auto* row = new QHBoxLayout{this};
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Metrics::rowSpacing);
    row->addWidget(title, 0, Qt::AlignTop);
    row->addWidget(m_value, 1, Qt::AlignTop);
    row->addSpacing(Metrics::rowSpacing);
    row->addLayout(dot);
    row->setAlignment(dot, Qt::AlignTop);
}

void MetricRow::display(const QString& value, bool ok) {
    m_value->display(value);
    m_value->setRole(ok ? ColourRole::text : ColourRole::warning);
    m_dot->display(ok, ColourRole::warning);
}

#include "moc_MetricRow.cpp"
