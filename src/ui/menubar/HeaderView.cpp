#include "app/StatusModel.h"
#include "daypart/DaypartController.h"
#include "ui/VersionLabels.h"
#include "ui/kit/DotLabel.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/PanelSection.h"
#include "ui/menubar/PanelSections.h"

#include <QHBoxLayout>

#include <array>

using namespace Qt::StringLiterals;
namespace Header = PanelMetrics::Header;

namespace {

struct BandLook {
    StatusModel::Band band;
    ColourRole role;
    QLatin1StringView state;
};

/// In the order of the bands.
constexpr std::array looks{
    BandLook{StatusModel::Band::green, ColourRole::success, "ok"_L1},
    BandLook{StatusModel::Band::amber, ColourRole::warning, "degraded"_L1},
    BandLook{StatusModel::Band::red, ColourRole::danger, "down"_L1},
    BandLook{StatusModel::Band::unknown, ColourRole::textMuted, "unknown"_L1},
};

}

PanelSections::Section PanelSections::header(StatusModel& status, DaypartController& daypart) {
    auto section = std::make_unique<PanelSection>(daypart, Header::margins, 0, ColourRole::surface);
    auto& row = section->addRow(Header::spacing);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(Header::textSpacing);
    row.addLayout(texts, 1);
    row.addSpacing(Header::spacing);
    texts->addWidget(new TextLabel{Header::titleText, section->colours(), section.get(), u"vorna"_s});
    auto* subtitle = new TextLabel{Header::subtitleText, section->colours(), section.get()};
    texts->addWidget(subtitle);
    auto* dot = new DotLabel{Header::dot, section->colours(), section.get(), Header::halo};
    row.addWidget(dot, 0, Qt::AlignVCenter);
    section->follow({&status, &daypart}, [&status, &daypart, subtitle, dot] {
        const BandLook& look = looks[static_cast<std::size_t>(status.caddyBand.value())];
        subtitle->display(VersionLabels::caption() + u" · " + DaypartInfo::title(daypart.daypart));
        dot->display(look.role, look.state);
    });
    return section;
}
