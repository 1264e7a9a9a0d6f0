#include "ui/menubar/StatTile.h"

#include "ui/kit/Drawing.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/PanelMetrics.h"

#include <QPainter>
#include <QVBoxLayout>

namespace Tile = PanelMetrics::Tile;

StatTile::StatTile(const QString& title, const Colours& colours, QWidget* parent)
    : QWidget{parent}
    , m_colours{colours} {
    auto* column = new QVBoxLayout{this};
    column->setContentsMargins(Tile::padding, Tile::padding, Tile::padding, Tile::padding);
    column->setSpacing(Tile::spacing);
    column->addWidget(new TextLabel{Tile::titleText, colours, this, title.toUpper()});
    m_value = new TextLabel{Tile::valueText, colours, this};
    column->addWidget(m_value);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void StatTile::display(const QString& value) {
    m_value->display(value);
}

void StatTile::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter{this};
    Drawing::fillRounded(painter, rect(), Tile::cornerRadius, m_colours.of(ColourRole::surface));
    Drawing::strokeRounded(painter, rect(), Tile::cornerRadius, m_colours.of(ColourRole::border));
}

#include "moc_StatTile.cpp"
