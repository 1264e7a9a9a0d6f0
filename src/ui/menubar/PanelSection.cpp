#include "ui/menubar/PanelSection.h"

#include <QPainter>
#include <QVBoxLayout>

PanelSection::PanelSection(const DaypartController& daypart, QWidget* parent, const QMargins& padding, int spacing,
                           std::optional<ColourRole> fill)
    : View{parent}
    , m_colours{daypart}
    , m_fill{fill}
    , m_column{new QVBoxLayout{this}} {
    m_column->setContentsMargins(padding);
    m_column->setSpacing(spacing);
}

void PanelSection::paintEvent(QPaintEvent* /*event*/) {
    if (m_fill) {
        QPainter{this}.fillRect(rect(), m_colours.of(*m_fill));
    }
}

#include "moc_PanelSection.cpp"
