#include "ui/menubar/ServiceRowView.h"

#include "ui/kit/DotLabel.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/PanelMetrics.h"

#include <algorithm>

namespace Services = PanelMetrics::Services;

ServiceRowView::ServiceRowView(const Colours& colours, QWidget* parent)
    : QWidget{parent}
    , m_dot{new DotLabel{Services::dot, colours, this}}
    , m_name{new TextLabel{Services::nameText, colours, this}}
    , m_detail{new TextLabel{Services::detailText, colours, this}} {
    m_detail->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setFixedHeight(std::max({Services::dot, m_name->lineHeight(), m_detail->lineHeight()}));
}

void ServiceRowView::display(const StatusModel::ServiceRow& service) {
    m_dot->display(service.ok, ColourRole::danger);
    if (m_name->wholeText() != service.name || m_detail->wholeText() != service.detail) {
        m_name->display(service.name);
        m_detail->display(service.detail);
        arrange();
    }
}

std::pair<int, int> ServiceRowView::splitWidth(int room, int first, int second) {
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
    const auto [name, detail] = splitWidth(room, m_name->naturalWidth(), m_detail->naturalWidth());
    const auto place = [this](QWidget& widget, int left, int itsWidth, int itsHeight) {
        widget.setGeometry(left, (height() - itsHeight + 1) / 2, itsWidth, itsHeight);
    };
    place(*m_dot, 0, Services::dot, Services::dot);
    place(*m_name, nameLeft, name, m_name->lineHeight());
    place(*m_detail, width() - detail, detail, m_detail->lineHeight());
}

#include "moc_ServiceRowView.cpp"
