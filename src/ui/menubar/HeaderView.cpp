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
    QRgb DaypartPalette::* colour;
    QLatin1StringView state;
};

constexpr std::array looks{
    BandLook{StatusModel::Band::green, &DaypartPalette::success, "ok"_L1},
    BandLook{StatusModel::Band::amber, &DaypartPalette::warning, "degraded"_L1},
    BandLook{StatusModel::Band::red, &DaypartPalette::danger, "down"_L1},
    BandLook{StatusModel::Band::unknown, &DaypartPalette::textMuted, "unknown"_L1},
};

const BandLook& lookOf(StatusModel::Band band) {
    return looks[static_cast<std::size_t>(band)];
}

}

HeaderView::HeaderView(StatusModel& status, DaypartController& daypart, QWidget* parent)
    : PanelSection{parent, Header::margins, 0}
    , m_status{status}
    , m_daypart{daypart}
    , m_title{new TextLabel{Header::titleText, this}}
    , m_subtitle{new TextLabel{Header::subtitleText, this}}
    , m_dot{new DotLabel{Header::dot, this, Header::halo, Header::haloOpacity}} {
    auto* texts = new QVBoxLayout;
    texts->setSpacing(Header::textSpacing);
    texts->addWidget(m_title);
    texts->addWidget(m_subtitle);
    auto* row = new QHBoxLayout;
    row->setSpacing(Header::spacing);
    row->addLayout(texts, 1);
    row->addSpacing(Header::spacing);
    row->addWidget(m_dot, 0, Qt::AlignVCenter);
    column().addLayout(row);

    m_title->display(u"vorna"_s);
    observe(status);
    observe(daypart);
}

void HeaderView::render() {
    const DaypartPalette& palette = m_daypart.palette;
    const BandLook& look = lookOf(m_status.caddyBand);
    setFill(palette.surface);
    m_title->setColour(palette.text);
    m_subtitle->display(VersionLabels::caption() + u" · " + DaypartInfo::title(m_daypart.daypart));
    m_subtitle->setColour(palette.textMuted);
    m_dot->display(palette.*look.colour, look.state);
}

#include "moc_HeaderView.cpp"
