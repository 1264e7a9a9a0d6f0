#include "ui/menubar/MetricRow.h"

#include "ui/kit/DotLabel.h"
#include "ui/kit/StateNames.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/PanelMetrics.h"

#include <QHBoxLayout>

namespace Metrics = PanelMetrics::Metrics;

MetricRow::MetricRow(const QString& label, QWidget* parent)
    : QWidget{parent}
    , m_label{new TextLabel{Metrics::labelText, this}}
    , m_value{new TextLabel{Metrics::valueText, this}}
    , m_dot{new DotLabel{Metrics::dot, this}} {
    auto* dot = new QVBoxLayout;
    dot->setContentsMargins(0, Metrics::dotTopPadding, 0, 0);
    dot->addWidget(m_dot);
    auto* row = new QHBoxLayout{this};
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Metrics::rowSpacing);
    row->addWidget(m_label, 0, Qt::AlignTop);
    row->addWidget(m_value, 1, Qt::AlignTop);
    row->addSpacing(Metrics::rowSpacing);
    row->addLayout(dot);
    row->setAlignment(dot, Qt::AlignTop);
    m_label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_label->setFixedWidth(Metrics::labelWidth);
    m_label->display(label);
}

void MetricRow::display(const QString& value, bool ok, const DaypartPalette& palette) {
    m_label->setColour(palette.textMuted);
    m_value->display(value);
    m_value->setColour(ok ? palette.text : palette.warning);
    m_dot->display(ok ? palette.success : palette.warning, stateName(ok));
}

#include "moc_MetricRow.cpp"
