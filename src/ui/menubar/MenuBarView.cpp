#include "ui/menubar/MenuBarView.h"

#include "app/StatusModel.h"
#include "ui/kit/Divider.h"
#include "ui/menubar/ActionsView.h"
#include "ui/menubar/DaypartPickerView.h"
#include "ui/menubar/FooterView.h"
#include "ui/menubar/HeaderView.h"
#include "ui/menubar/MetricsView.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/ServicesView.h"

#include <QShowEvent>
#include <QVBoxLayout>

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
                         const PanelActions& actions, QWidget* parent)
    : PanelSection{daypart, parent, {}, 0, ColourRole::background}
    , m_status{status} {
    // All texts run from left to right, whatever the desktop's language does.
    setLayoutDirection(Qt::LeftToRight);
    setFixedWidth(PanelMetrics::width);
    const auto add = [this](QWidget* section) {
        if (column().count() > 0) {
            column().addWidget(new Divider{colours(), this});
        }
        section->setParent(this);
        column().addWidget(section);
    };
    add(new HeaderView{status, daypart});
    add(new MetricsView{status, daypart});
    add(new ServicesView{status, daypart});
    add(new ActionsView{status, daypart, actions});
    add(new DaypartPickerView{daypart});
    add(new FooterView{daypart, notifications, actions});
}

void MenuBarView::fitHeight() {
    layOutNow(*this);
    resize(PanelMetrics::width, column().totalHeightForWidth(PanelMetrics::width));
}

void MenuBarView::showEvent(QShowEvent* event) {
    PanelSection::showEvent(event);
    if (!event->spontaneous()) {
        m_status.start();
    }
}

#include "moc_MenuBarView.cpp"
