#include "ui/settings/ChoiceButton.h"

#include "platform/Symbol.h"
#include "ui/settings/FormColours.h"
#include "ui/settings/FormMetrics.h"
#include "ui/settings/FormPainting.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

using namespace FormMetrics;

namespace {

constexpr int gap = 10;
constexpr qreal symbolScale = 1.15;

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
    const auto mark = style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, nullptr, this);
    return {2 * rowPadding + mark + gap + symbolSize(metrics) + gap + metrics.horizontalAdvance(text()),
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

    QStyleOptionButton option;
    initStyleOption(&option);
    const QSize mark{style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, &option, this),
                     style()->pixelMetric(QStyle::PM_ExclusiveIndicatorHeight, &option, this)};
    option.rect = QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, mark, take(mark.width()));
    style()->drawPrimitive(QStyle::PE_IndicatorRadioButton, &option, &painter, this);

    const auto side = symbolSize(fontMetrics());
    const auto colour = isChecked() ? FormColours::accent(palette()) : FormColours::secondaryText(palette());
    const auto symbol = QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, QSize{side, side}, take(side));
    painter.drawPixmap(symbol, Symbol::pixmap(m_symbolName, side, colour, devicePixelRatioF()));

    painter.setPen(FormColours::text(palette()));
    painter.drawText(QStyle::visualRect(layoutDirection(), rect(), row),
                     static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) | Qt::AlignVCenter),
                     text());
}

#include "moc_ChoiceButton.cpp"
