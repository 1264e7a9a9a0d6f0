#include "ui/menubar/PanelSection.h"

#include <QPainter>
#include <QVBoxLayout>

PanelSection::PanelSection(QWidget* parent, const QMargins& padding, int spacing)
    : View{parent}
    , m_column{new QVBoxLayout{this}} {
    m_column->setContentsMargins(padding);
    m_column->setSpacing(spacing);
}

void PanelSection::setFill(const QColor& colour) {
    if (colour != m_fill) {
        m_fill = colour;
        update();
    }
}

void PanelSection::paintEvent(QPaintEvent* /*event*/) {
    if (m_fill.isValid()) {
        QPainter{this}.fillRect(rect(), m_fill);
    }
}

#include "moc_PanelSection.cpp"
