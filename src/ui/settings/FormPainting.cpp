#include "ui/settings/FormPainting.h"

#include "ui/settings/FormColours.h"
#include "ui/settings/FormMetrics.h"

#include <QAbstractButton>
#include <QPainter>

namespace FormPainting {

void paintHighlight(QPainter& painter, const QAbstractButton& button, const QRectF& area) {
    if (!button.isDown() && !button.underMouse()) {
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(button.isDown() ? FormColours::pressed(button.palette()) : FormColours::hover(button.palette()));
    painter.drawRoundedRect(area, FormMetrics::highlightRadius, FormMetrics::highlightRadius);
}

void paintFocusRing(QPainter& painter, const QWidget& widget, const QRectF& area) {
    if (!widget.hasFocus() || !widget.window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
        return;
    }
    constexpr auto inset = FormMetrics::focusRingWidth / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen{FormColours::accent(widget.palette()), FormMetrics::focusRingWidth});
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(area.adjusted(inset, inset, -inset, -inset), FormMetrics::highlightRadius,
                            FormMetrics::highlightRadius);
}

}
