#include "ui/settings/FormButton.h"

#include "ui/kit/WholeTextTip.h"
#include "ui/settings/FormColours.h"
#include "ui/settings/FormMetrics.h"
#include "ui/settings/FormPainting.h"

#include <QHelpEvent>
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

QRect FormButton::titlePlace() const {
    return rect().adjusted(rowPadding, 0, -rowPadding, 0);
}

QString FormButton::shownTitle() const {
    return fontMetrics().elidedText(text(), Qt::ElideRight, titlePlace().width());
}

bool FormButton::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && shownTitle() != text()) {
        WholeTextTip::show(*static_cast<QHelpEvent*>(event), text(), *this);
        return true;
    }
    return QPushButton::event(event);
}

void FormButton::paintEvent(QPaintEvent*) {
    QPainter painter{this};
    const auto area = rect().adjusted(highlightInset, highlightInset, -highlightInset, -highlightInset);
    FormPainting::paintHighlight(painter, *this, area);
    FormPainting::paintFocusRing(painter, *this, area);

    painter.setPen(FormColours::accent(palette()));
    painter.drawText(titlePlace(),
                     static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) | Qt::AlignVCenter),
                     shownTitle());
}

#include "moc_FormButton.cpp"
