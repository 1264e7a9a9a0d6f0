#include "ui/settings/FormButton.h"

#include "ui/settings/FormColours.h"
#include "ui/settings/FormMetrics.h"
#include "ui/settings/FormPainting.h"

#include <QPainter>
#include <QStyle>

using namespace FormMetrics;

FormButton::FormButton(const QString& title, QWidget* parent)
    : QPushButton{title, parent} {
    setAttribute(Qt::WA_Hover);
    setAutoDefault(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize FormButton::sizeHint() const {
    const auto metrics = fontMetrics();
    return {metrics.horizontalAdvance(text()) + 2 * rowPadding, metrics.height() + 2 * rowPaddingVertical};
}

QSize FormButton::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

void FormButton::paintEvent(QPaintEvent*) {
    QPainter painter{this};
    const auto area = rect().adjusted(highlightInset, highlightInset, -highlightInset, -highlightInset);
    FormPainting::paintHighlight(painter, *this, area);
    FormPainting::paintFocusRing(painter, *this, area);

    const auto title = rect().adjusted(rowPadding, 0, -rowPadding, 0);
    painter.setPen(FormColours::accent(palette()));
    painter.drawText(title,
                     static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) | Qt::AlignVCenter),
                     fontMetrics().elidedText(text(), Qt::ElideRight, title.width()));
}

#include "moc_FormButton.cpp"
