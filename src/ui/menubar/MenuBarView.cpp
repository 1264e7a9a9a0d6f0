#include "ui/menubar/MenuBarView.h"

#include "app/StatusModel.h"
#include "daypart/DaypartController.h"
#include "ui/kit/Drawing.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/PanelSections.h"

#include <QPainter>
#include <QShowEvent>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// A new layout asks for another one a level higher in the next turn of the event loop: do them all now.
void layOutNow(const QWidget& widget) {
    for (const QObject* child : widget.children()) {
        if (const auto* below = qobject_cast<const QWidget*>(child)) {
            layOutNow(*below);
        }
    }
    if (widget.layout() != nullptr) {
        widget.layout()->activate();
    }
}

}

MenuBarView::MenuBarView(StatusModel& status, DaypartController& daypart, NotificationService& notifications,
                         const PanelActions& actions)
    : PanelSection{daypart, {}, PanelMetrics::rule, ColourRole::background}
    , m_status{status} {
    // All texts run from left to right, whatever the desktop's language does.
    setLayoutDirection(Qt::LeftToRight);
    setFixedWidth(PanelMetrics::width);
    const auto add = [this](PanelSections::Section section) { column().addWidget(section.release()); };
    add(PanelSections::header(status, daypart));
    add(PanelSections::metrics(status, daypart));
    add(PanelSections::services(status, daypart));
    add(PanelSections::actions(status, daypart, actions));
    add(PanelSections::daypartPicker(daypart));
    add(PanelSections::footer(daypart, notifications, actions));
}

void MenuBarView::fitHeight() {
    layOutNow(*this);
    resize(PanelMetrics::width, column().totalHeightForWidth(PanelMetrics::width));
}

void MenuBarView::paintEvent(QPaintEvent* event) {
    PanelSection::paintEvent(event);
    QPainter painter{this};
    // As many whole pixels as a rule surely has: rounded up it would reach into some of the sections.
    const qreal pixels = Drawing::scale(painter);
    const qreal thickness = std::max(1.0, std::floor(PanelMetrics::rule * pixels)) / pixels;
    for (int i = 1; i < column().count(); ++i) {
        const int below = column().itemAt(i)->geometry().top();
        QRectF rule = Drawing::snapped(painter, QRect{0, below - PanelMetrics::rule, width(), PanelMetrics::rule});
        rule.setHeight(thickness);
        painter.fillRect(rule, colours().of(ColourRole::border));
    }
    if (std::exchange(m_appears, false)) {
        // In the next turn, when the frame is on the screen: to launch the tool takes as long as to draw it.
        QMetaObject::invokeMethod(&m_status, &StatusModel::start, Qt::QueuedConnection);
    }
}

void MenuBarView::showEvent(QShowEvent* event) {
    PanelSection::showEvent(event);
    m_appears = m_appears || !event->spontaneous();
}

#include "moc_MenuBarView.cpp"
