#include "ui/menubar/VornaAccentButton.h"

#include "ui/menubar/PanelMetrics.h"

namespace AccentButton = PanelMetrics::AccentButton;

VornaAccentButton::VornaAccentButton(const QString& title, const QString& symbolName, QWidget* parent)
    : PanelButton{title, parent}
    , m_label{title, symbolName, AccentButton::text} {
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void VornaAccentButton::setButtonStyle(const VornaAccentButtonStyle& style) {
    if (m_style != style) {
        m_style = style;
        update();
    }
}

QSize VornaAccentButton::sizeHint() const {
    return m_label.size() + QSize{0, 2 * AccentButton::verticalPadding};
}

void VornaAccentButton::draw(QPainter& painter) {
    if (!m_style) {
        return;
    }
    m_style->drawBackground(painter, rect(), isDown());
    m_label.draw(painter, rect(), ButtonLabel::Placement::centred, m_style->foreground());
    if (showsFocusRing()) {
        m_style->drawFocusRing(painter, rect());
    }
}

#include "moc_VornaAccentButton.cpp"
