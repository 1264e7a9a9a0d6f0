#include "ui/menubar/VornaMenuButton.h"

#include "ui/menubar/PanelMetrics.h"

namespace MenuButton = PanelMetrics::MenuButton;

VornaMenuButton::VornaMenuButton(const QString& title, const QString& symbolName, QWidget* parent)
    : PanelButton{title, parent}
    , m_label{title, symbolName, MenuButton::text} {
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void VornaMenuButton::setButtonStyle(const VornaMenuButtonStyle& style) {
    if (m_style != style) {
        m_style = style;
        update();
    }
}

QSize VornaMenuButton::sizeHint() const {
    return m_label.size() + QSize{2 * MenuButton::horizontalPadding, 2 * MenuButton::verticalPadding};
}

void VornaMenuButton::draw(QPainter& painter) {
    if (!m_style) {
        return;
    }
    const QRectF bounds{rect()};
    m_style->drawBackground(painter, bounds, isDown());
    m_label.draw(painter, bounds.adjusted(MenuButton::horizontalPadding, 0, -MenuButton::horizontalPadding, 0),
                 ButtonLabel::Placement::leading, m_style->foreground());
    if (showsFocusRing()) {
        m_style->drawFocusRing(painter, bounds);
    }
}

#include "moc_VornaMenuButton.cpp"
