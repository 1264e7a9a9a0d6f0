#include "ui/kit/DotLabel.h"

#include "ui/kit/Drawing.h"

#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

DotLabel::DotLabel(int diameter, const Colours& colours, QWidget* parent, Halo halo)
    : QLabel{parent}
    , m_diameter{diameter}
    , m_colours{colours}
    , m_halo{halo} {
    const int side = std::max(diameter, halo.diameter);
    setFixedSize(side, side);
}

void DotLabel::display(ColourRole role, const QString& state) {
    if (state != accessibleName()) {
        setAccessibleName(state);
    }
    if (role != m_role) {
        m_role = role;
        update();
    }
}

void DotLabel::display(bool ok, ColourRole failed) {
    display(ok ? ColourRole::success : failed, ok ? u"ok"_s : u"not ok"_s);
}

void DotLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter{this};
    if (m_halo.diameter > 0) {
        Drawing::fillCircle(painter, rect(), m_halo.diameter, m_colours.of({m_role, m_halo.opacity}));
    }
    Drawing::fillCircle(painter, rect(), m_diameter, m_colours.of(m_role));
}

#include "moc_DotLabel.cpp"
