#include "ui/menubar/DaypartChip.h"

#include "ui/kit/Drawing.h"
#include "ui/menubar/PanelMetrics.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

using namespace Qt::StringLiterals;
namespace Button = PanelMetrics::Button;
namespace Picker = PanelMetrics::Picker;

DaypartChip::DaypartChip(Daypart daypart, QWidget* parent)
    : PanelButton{DaypartInfo::title(daypart), parent}
    , m_symbol{DaypartInfo::symbolName(daypart)}
    , m_font{Picker::chipText.font()} {
    const QFontMetricsF metrics{m_font};
    m_titleHeight = static_cast<int>(std::ceil(metrics.ascent() + metrics.descent()));
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void DaypartChip::display(bool isSelected, const DaypartPalette& palette) {
    if (m_isSelected == isSelected && m_palette == palette) {
        return;
    }
    m_isSelected = isSelected;
    m_palette = palette;
    setAccessibleDescription(isSelected ? u"selected"_s : QString{});
    update();
}

QSize DaypartChip::sizeHint() const {
    const int height = Picker::chipSymbol + Picker::chipLabelSpacing + m_titleHeight + 2 * Picker::chipVerticalPadding;
    return {Picker::chipSymbol, height};
}

void DaypartChip::draw(QPainter& painter) {
    if (!m_palette) {
        return;
    }
    const DaypartPalette& palette = *m_palette;
    const QRectF bounds{rect()};
    if (isDown()) {
        painter.setOpacity(painter.opacity() * Button::plainPressedOpacity);
    }
    Drawing::fillRounded(painter, bounds, Picker::chipCornerRadius, m_isSelected ? palette.accent : palette.surface);
    Drawing::strokeRounded(painter, bounds, Picker::chipCornerRadius, m_isSelected ? palette.accent : palette.border);

    const QColor foreground{m_isSelected ? palette.background : palette.textMuted};
    const QRectF symbol{std::floor((bounds.width() - Picker::chipSymbol) / 2), Picker::chipVerticalPadding,
                        Picker::chipSymbol, Picker::chipSymbol};
    m_symbol.draw(painter, symbol, foreground);
    painter.setFont(m_font);
    painter.setPen(foreground);
    const QRectF text{0, symbol.bottom() + Picker::chipLabelSpacing, bounds.width(), qreal(m_titleHeight)};
    painter.drawText(text, Qt::AlignCenter | Qt::TextSingleLine, title());

    if (showsFocusRing()) {
        const qreal inset = m_isSelected ? Button::focusRingInset : 0;
        Drawing::strokeRounded(painter, bounds.adjusted(inset, inset, -inset, -inset), Picker::chipCornerRadius - inset,
                               m_isSelected ? palette.background : palette.accent, Button::focusRingWidth);
    }
}

#include "moc_DaypartChip.cpp"
