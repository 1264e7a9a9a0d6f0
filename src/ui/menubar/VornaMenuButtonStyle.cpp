#include "ui/menubar/VornaMenuButtonStyle.h"

#include "ui/kit/Drawing.h"
#include "ui/menubar/PanelMetrics.h"

#include <QPainter>

namespace MenuButton = PanelMetrics::MenuButton;
namespace Button = PanelMetrics::Button;

QColor VornaMenuButtonStyle::foreground() const {
    return palette.text;
}

void VornaMenuButtonStyle::drawBackground(QPainter& painter, const QRectF& bounds, bool isPressed) const {
    QColor fill{isPressed ? palette.accent : palette.surfaceElevated};
    fill.setAlphaF(isPressed ? MenuButton::pressedOpacity : MenuButton::restOpacity);
    Drawing::fillRounded(painter, bounds, MenuButton::cornerRadius, fill);
}

void VornaMenuButtonStyle::drawFocusRing(QPainter& painter, const QRectF& bounds) const {
    Drawing::strokeRounded(painter, bounds, MenuButton::cornerRadius, palette.accent, Button::focusRingWidth);
}
