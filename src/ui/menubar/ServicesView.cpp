#include "app/StatusModel.h"
#include "ui/kit/DotLabel.h"
#include "ui/kit/SelectableLabel.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/PanelSection.h"
#include "ui/menubar/PanelSections.h"

#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
namespace Services = PanelMetrics::Services;

namespace {

/// The widths of two texts that want `first` and `second` and share `room`: where they do not both fit, each keeps at
/// least half of it.
std::pair<int, int> splitWidth(int room, int first, int second) {
    const int half = room / 2;
    if (first + second <= room) {
        return {first, second};
    }
    if (first <= half) {
        return {first, room - first};
    }
    return second <= half ? std::pair{room - second, second} : std::pair{half, half};
}

/// One probed service in one line.
class ServiceRowView final : public QWidget {
public:
    explicit ServiceRowView(PanelSection& section)
        : QWidget{&section}
        , m_dot{Services::dot, section.colours(), this}
        , m_name{Services::nameText, section.colours(), this}
        , m_detail{Services::detailText, section.colours(), this} {
        m_detail.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        setFixedHeight(std::max({Services::dot, m_name.lineHeight(), m_detail.lineHeight()}));
    }

    void display(const StatusModel::ServiceRow& service) {
        m_dot.display(service.ok, ColourRole::danger);
        m_name.display(service.name);
        m_detail.display(service.detail);
        arrange();
    }

protected:
    void resizeEvent(QResizeEvent* /*event*/) override { arrange(); }

private:
    void arrange() {
        const int left = Services::dot + Services::rowSpacing;
        const int room = std::max(0, width() - left - 2 * Services::rowSpacing);
        const auto [name, detail] = splitWidth(room, m_name.naturalWidth(), m_detail.naturalWidth());
        const auto place = [this](QWidget& widget, int x, int itsWidth, int itsHeight) {
            widget.setGeometry(x, (height() - itsHeight + 1) / 2, itsWidth, itsHeight);
        };
        place(m_dot, 0, Services::dot, Services::dot);
        place(m_name, left, name, m_name.lineHeight());
        place(m_detail, width() - detail, detail, m_detail.lineHeight());
    }

    DotLabel m_dot;
    TextLabel m_name;
    TextLabel m_detail;
};

}

PanelSections::Section PanelSections::services(StatusModel& status, const DaypartController& daypart) {
    auto section = std::make_unique<PanelSection>(daypart, PanelMetrics::sectionMargins, Services::spacing);
    section->addText(PanelMetrics::headingText, u"SERVICES"_s);
    auto* empty = new SelectableLabel{Services::emptyText, section->colours(), section.get()};
    section->column().addWidget(empty);
    QList<ServiceRowView*> rows;
    for (int i = 0; i < Services::maxRows; ++i) {
        rows += new ServiceRowView{*section};
        section->column().addWidget(rows.back());
    }
    section->follow({&status}, [&status, empty, rows] {
        const auto& services = status.services.value();
        const QString command = u"vorna server start"_s;
        empty->display(status.bridgeOnline ? u"No probes yet"_s : u"Start bridge: "_s + command, command);
        empty->setFocusPolicy(status.bridgeOnline ? Qt::NoFocus : Qt::StrongFocus);
        empty->setVisible(services.isEmpty());
        for (qsizetype i = 0; i < rows.size(); ++i) {
            rows.at(i)->display(services.value(i));
            rows.at(i)->setVisible(i < services.size());
        }
    });
    return section;
}
