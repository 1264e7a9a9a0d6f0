#include "ui/menubar/HeaderView.h"

#include "app/StatusModel.h"
#include "daypart/DaypartController.h"
#include "ui/VersionLabels.h"
#include "ui/kit/DotLabel.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/PanelMetrics.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <array>

using namespace Qt::StringLiterals;
namespace Header = PanelMetrics::Header;

namespace {

struct BandLook {
    StatusModel::Band band;
    ColourRole role;
    QLatin1StringView state;
};

constexpr std::array looks{
    BandLook{StatusModel::Band::green, ColourRole::success, "ok"_L1},
    BandLook{StatusModel::Band::amber, ColourRole::warning, "degraded"_L1},
    BandLook{StatusModel::Band::red, ColourRole::danger, "down"_L1},
    BandLook{StatusModel::Band::unknown, ColourRole::textMuted, "unknown"_L1},
};

const BandLook& lookOf(StatusModel::Band band) {
    return looks[static_cast<std::size_t>(band)];
}

}

HeaderView::HeaderView(StatusModel& status, DaypartController& daypart, QWidget* parent)
    : PanelSection{daypart, parent, Header::margins, 0, ColourRole::surface}
    , m_status{status}
    , m_daypart{daypart} {
    auto* texts = new QVBoxLayout;
    texts->setSpacing(Header::textSpacing);
    texts->addWidget(new TextLabel{Header::titleText, colours(), this, u"vorna"_s});
    m_subtitle = new TextLabel{Header::subtitleText, colours(), this};
    texts->addWidget(m_subtitle);
    auto* row = new QHBoxLayout;
    row->setSpacing(Header::spacing);
    row->addLayout(texts, 1);
    row->addSpacing(Header::spacing);
    m_dot = new DotLabel{Header::dot, colours(), this, Header::halo};
    row->addWidget(m_dot, 0, Qt::AlignVCenter);
    column().addLayout(row);

    observe(status);
    observe(daypart);
}

void HeaderView::render() {
    const BandLook& look = lookOf(m_status.caddyBand);
    m_subtitle->display(VersionLabels::caption() + u" · " + DaypartInfo::title(m_daypart.daypart));
    m_dot->display(look.role, look.state);
}

#include "moc_HeaderView.cpp"
