#include "ui/menubar/ServiceRowView.h"

#include "ui/kit/DotLabel.h"
#include "ui/kit/StateNames.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/PanelMetrics.h"

#include <QStyle>

#include <algorithm>

namespace Services = PanelMetrics::Services;

ServiceRowView::ServiceRowView(QWidget* parent)
    : QWidget{parent}
    , m_dot{new DotLabel{Services::dot, this}}
    , m_name{new TextLabel{Services::nameText, this}}
    , m_detail{new TextLabel{Services::detailText, this}} {
    m_detail->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setFixedHeight(std::max({Services::dot, m_name->lineHeight(), m_detail->lineHeight()}));
}

void ServiceRowView::display(const StatusModel::ServiceRow& service, const DaypartPalette& palette) {
    m_dot->display(service.ok ? palette.success : palette.danger, stateName(service.ok));
    m_name->setColour(palette.text);
    m_detail->setColour(palette.textMuted);
    if (m_name->wholeText() != service.name || m_detail->wholeText() != service.detail) {
        m_name->display(service.name);
        m_detail->display(service.detail);
        arrange();
    }
}

std::pair<int, int> ServiceRowView::share(int room, int first, int second) {
    const int half = room / 2;
    if (first + second <= room) {
        return {first, second};
    }
    if (first <= half) {
        return {first, room - first};
    }
    if (second <= half) {
        return {room - second, second};
    }
    return {half, half};
}

void ServiceRowView::resizeEvent(QResizeEvent* /*event*/) {
    arrange();
}

void ServiceRowView::arrange() {
    const int nameLeft = Services::dot + Services::rowSpacing;
    const int room = std::max(0, width() - nameLeft - 2 * Services::rowSpacing);
    const auto [name, detail] = share(room, m_name->naturalWidth(), m_detail->naturalWidth());
    const auto place = [this](QWidget& widget, int left, int itsWidth, int itsHeight) {
        const QRect leftToRight{left, (height() - itsHeight + 1) / 2, itsWidth, itsHeight};
        widget.setGeometry(QStyle::visualRect(layoutDirection(), rect(), leftToRight));
    };
    place(*m_dot, 0, Services::dot, Services::dot);
    place(*m_name, nameLeft, name, m_name->lineHeight());
    place(*m_detail, width() - detail, detail, m_detail->lineHeight());
}

#include "moc_ServiceRowView.cpp"
