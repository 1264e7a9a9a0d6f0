#include "ui/menubar/StatTile.h"

#include "ui/kit/Drawing.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/PanelMetrics.h"

#include <QPainter>
#include <QVBoxLayout>

namespace Tile = PanelMetrics::Tile;

StatTile::StatTile(const QString& title, QWidget* parent)
    : QWidget{parent}
    , m_title{new TextLabel{Tile::titleText, this}}
    , m_value{new TextLabel{Tile::valueText, this}} {
    auto* column = new QVBoxLayout{this};
    column->setContentsMargins(Tile::padding, Tile::padding, Tile::padding, Tile::padding);
    column->setSpacing(Tile::spacing);
    column->addWidget(m_title);
    column->addWidget(m_value);
    m_title->display(title.toUpper());
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void StatTile::display(const QString& value, const DaypartPalette& palette) {
    m_title->setColour(palette.textMuted);
    m_value->display(value);
    m_value->setColour(palette.text);
    const QColor fill{palette.surface};
    const QColor border{palette.border};
    if (fill != m_fill || border != m_border) {
        m_fill = fill;
        m_border = border;
        update();
    }
}

void StatTile::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter{this};
    Drawing::fillRounded(painter, rect(), Tile::cornerRadius, m_fill);
    Drawing::strokeRounded(painter, rect(), Tile::cornerRadius, m_border);
}

#include "moc_StatTile.cpp"
