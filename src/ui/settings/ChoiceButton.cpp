#include "ui/settings/ChoiceButton.h"

#include "platform/Symbol.h"
#include "ui/settings/FormColours.h"
#include "ui/settings/FormMetrics.h"
#include "ui/settings/FormPainting.h"

#include <QPainter>
#include <QStyle>

using namespace FormMetrics;

namespace {

constexpr int gap = 10;
constexpr qreal symbolScale = 1.15;
constexpr qreal markScale = 0.95;
constexpr qreal markRim = 1.5;
constexpr qreal markDotScale = 0.38;

int markSize(const QFontMetrics& metrics) {
    return qRound(metrics.height() * markScale);
}

int symbolSize(const QFontMetrics& metrics) {
    return qRound(metrics.height() * symbolScale);
}

}

ChoiceButton::ChoiceButton(const QString& title, const QString& symbolName, QWidget* parent)
    : QRadioButton{title, parent}
    , m_symbolName{symbolName} {
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize ChoiceButton::sizeHint() const {
    const auto metrics = fontMetrics();
    return {2 * rowPadding + markSize(metrics) + gap + symbolSize(metrics) + gap + metrics.horizontalAdvance(text()),
            symbolSize(metrics) + 2 * rowPaddingVertical};
}

bool ChoiceButton::hitButton(const QPoint& position) const {
    return rect().contains(position);
}

void ChoiceButton::paintEvent(QPaintEvent*) {
    QPainter painter{this};
    const auto area = rect().adjusted(highlightInset, highlightInset, -highlightInset, -highlightInset);
    FormPainting::paintHighlight(painter, *this, area);
    FormPainting::paintFocusRing(painter, *this, area);

    auto row = rect().adjusted(rowPadding, 0, -rowPadding, 0);
    const auto take = [&](int width) {
        const QRect taken{row.left(), row.top(), width, row.height()};
        row.setLeft(row.left() + width + gap);
        return QStyle::visualRect(layoutDirection(), rect(), taken);
    };

    const auto markSide = markSize(fontMetrics());
    paintMark(painter,
              QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, QSize{markSide, markSide}, take(markSide)));

    const auto side = symbolSize(fontMetrics());
    const auto colour = isChecked() ? FormColours::accent(palette()) : FormColours::secondaryText(palette());
    const auto symbol = QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, QSize{side, side}, take(side));
    painter.drawPixmap(symbol, Symbol::pixmap(m_symbolName, side, colour, devicePixelRatioF()));

    painter.setPen(FormColours::text(palette()));
    painter.drawText(QStyle::visualRect(layoutDirection(), rect(), row),
                     static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) | Qt::AlignVCenter),
                     text());
}

void ChoiceButton::paintMark(QPainter& painter, const QRectF& area) const {
    constexpr auto inset = markRim / 2;
    const auto accent = FormColours::accent(palette());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen{isChecked() ? accent : FormColours::secondaryText(palette()), markRim});
    painter.setBrush(isChecked() ? QBrush{accent} : QBrush{Qt::NoBrush});
    painter.drawEllipse(area.adjusted(inset, inset, -inset, -inset));
    if (isChecked()) {
        const auto radius = area.width() * markDotScale / 2;
        painter.setPen(Qt::NoPen);
        painter.setBrush(FormColours::group(palette()));
        painter.drawEllipse(area.center(), radius, radius);
    }
}

#include "moc_ChoiceButton.cpp"
