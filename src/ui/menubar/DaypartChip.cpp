#include "ui/menubar/DaypartChip.h"

#include "ui/kit/Drawing.h"
#include "ui/menubar/PanelMetrics.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace Button = PanelMetrics::Button;
namespace Picker = PanelMetrics::Picker;

DaypartChip::DaypartChip(Daypart daypart, QWidget* parent)
    : PanelButton{DaypartInfo::title(daypart), parent}
    , m_symbol{DaypartInfo::symbolName(daypart)}
    , m_font{Picker::chipText.font()} {
    const QFontMetricsF metrics{m_font};
    m_titleHeight = static_cast<int>(std::ceil(metrics.ascent() + metrics.descent()));
    setCheckable(true);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void DaypartChip::display(bool isSelected, const DaypartPalette& palette) {
    setChecked(isSelected);
    if (m_palette != palette) {
        m_palette = palette;
        update();
    }
}

void DaypartChip::nextCheckState() {}

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
    Drawing::fillRounded(painter, bounds, Picker::chipCornerRadius, isChecked() ? palette.accent : palette.surface);
    Drawing::strokeRounded(painter, bounds, Picker::chipCornerRadius, isChecked() ? palette.accent : palette.border);

    const QColor foreground{isChecked() ? palette.background : palette.textMuted};
    const QRectF symbol{std::floor((bounds.width() - Picker::chipSymbol) / 2), Picker::chipVerticalPadding,
                        Picker::chipSymbol, Picker::chipSymbol};
    m_symbol.draw(painter, symbol, foreground);
    painter.setFont(m_font);
    painter.setPen(foreground);
    const QRectF text{0, symbol.bottom() + Picker::chipLabelSpacing, bounds.width(), qreal(m_titleHeight)};
    painter.drawText(text, Qt::AlignCenter | Qt::TextSingleLine, title());

    if (showsFocusRing()) {
        const qreal inset = isChecked() ? Button::focusRingInset : 0;
        Drawing::strokeRounded(painter, bounds.adjusted(inset, inset, -inset, -inset), Picker::chipCornerRadius - inset,
                               isChecked() ? palette.background : palette.accent, Button::focusRingWidth);
    }
}

#include "moc_DaypartChip.cpp"
