#include "ui/menubar/VornaAccentButtonStyle.h"

#include "ui/kit/Drawing.h"
#include "ui/menubar/PanelMetrics.h"

#include <QPainter>

namespace AccentButton = PanelMetrics::AccentButton;
namespace Button = PanelMetrics::Button;

QColor VornaAccentButtonStyle::foreground() const {
    return palette.background;
}

void VornaAccentButtonStyle::drawBackground(QPainter& painter, const QRectF& bounds, bool isPressed) const {
    const QColor accent{palette.accent};
    QColor fill = accent;
    fill.setAlphaF(isPressed ? AccentButton::pressedOpacity : 1.0F);
    Drawing::fillRounded(painter, bounds, AccentButton::cornerRadius, fill);
    Drawing::strokeRounded(painter, bounds, AccentButton::cornerRadius, accent, AccentButton::borderWidth);
}

void VornaAccentButtonStyle::drawFocusRing(QPainter& painter, const QRectF& bounds) const {
    const qreal inset = Button::focusRingInset;
    Drawing::strokeRounded(painter, bounds.adjusted(inset, inset, -inset, -inset), AccentButton::cornerRadius - inset,
                           palette.background, Button::focusRingWidth);
}
