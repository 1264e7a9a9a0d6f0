#include "ui/settings/LinkButton.h"

#include "ui/settings/FormColours.h"
#include "ui/settings/FormMetrics.h"
#include "ui/settings/FormPainting.h"

#include <QPainter>

using namespace FormMetrics;

LinkButton::LinkButton(const QString& title, QWidget* parent)
    : QPushButton{title, parent} {
    setAttribute(Qt::WA_Hover);
    setAutoDefault(true);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LinkButton::sizeHint() const {
    const auto metrics = fontMetrics();
    return {metrics.horizontalAdvance(text()) + 2 * highlightInset, metrics.height() + highlightInset};
}

void LinkButton::paintEvent(QPaintEvent*) {
    QPainter painter{this};
    FormPainting::paintFocusRing(painter, *this, rect());

    auto shown = font();
    shown.setUnderline(underMouse() || isDown());
    painter.setFont(shown);
    painter.setPen(FormColours::accent(palette()));
    painter.drawText(rect(), Qt::AlignCenter, text());
}

#include "moc_LinkButton.cpp"
