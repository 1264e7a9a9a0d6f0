#include "ui/settings/FormGroup.h"

#include "ui/settings/FormColours.h"
#include "ui/settings/FormMetrics.h"

#include <QPainter>
#include <QVBoxLayout>

using namespace FormMetrics;

FormGroup::FormGroup(QWidget* parent)
    : QWidget{parent}
    , m_rows{new QVBoxLayout{this}} {
    m_rows->setContentsMargins({});
    m_rows->setSpacing(0);
}

void FormGroup::addRow(QWidget& row) {
    m_rows->addWidget(&row);
}

void FormGroup::paintEvent(QPaintEvent*) {
    constexpr qreal halfLine = 0.5;
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(FormColours::outline(palette()));
    painter.setBrush(FormColours::group(palette()));
    painter.drawRoundedRect(QRectF{rect()}.adjusted(halfLine, halfLine, -halfLine, -halfLine), groupRadius,
                            groupRadius);

    bool isFirst = true;
    for (int index = 0; index < m_rows->count(); ++index) {
        const auto* const row = m_rows->itemAt(index)->widget();
        if (row->isHidden()) {
            continue;
        }
        if (!isFirst) {
            painter.fillRect(QRect{rowPadding, row->y(), width() - 2 * rowPadding, 1}, FormColours::outline(palette()));
        }
        isFirst = false;
    }
}

#include "moc_FormGroup.cpp"
