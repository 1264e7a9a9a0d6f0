#include "app/StatusModel.h"
#include "ui/ClockText.h"
#include "ui/kit/DotLabel.h"
#include "ui/kit/Drawing.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/PanelSection.h"
#include "ui/menubar/PanelSections.h"

#include <QHBoxLayout>
#include <QPaintEvent>
#include <QPainter>

using namespace Qt::StringLiterals;
namespace Metrics = PanelMetrics::Metrics;
namespace Tile = PanelMetrics::Tile;

namespace {

/// What a check says, and its dot. One that is not ok stands in the warning colour.
struct Check final {
    TextLabel* value;
    DotLabel* dot;

    void display(const QString& text, bool ok) const {
        value->display(text);
        value->setRole(ok ? ColourRole::text : ColourRole::warning);
        dot->display(ok, ColourRole::warning);
    }
};

Check addCheck(PanelSection& section, const QString& label) {
    auto* title = new TextLabel{Metrics::labelText, section.colours(), &section, label};
    title->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    title->setFixedWidth(Metrics::labelWidth);
    const Check check{new TextLabel{Metrics::valueText, section.colours(), &section},
                      new DotLabel{Metrics::dot, section.colours(), &section}};
    auto* dot = new QVBoxLayout;
    dot->setContentsMargins(0, Metrics::dotTopPadding, 0, 0);
    dot->addWidget(check.dot);
    auto& row = section.addRow(Metrics::rowSpacing);
    row.addWidget(title, 0, Qt::AlignTop);
    row.addWidget(check.value, 1, Qt::AlignTop);
    row.addSpacing(Metrics::rowSpacing);
    row.addLayout(dot);
    row.setAlignment(dot, Qt::AlignTop);
    return check;
}

/// One figure with its title above it, in a bordered tile. Its size does not depend on the figure.
class StatTile final : public QWidget {
public:
    StatTile(const QString& title, PanelSection& section)
        : QWidget{&section}
        , m_colours{section.colours()} {
        auto* column = new QVBoxLayout{this};
        column->setContentsMargins(Tile::padding, Tile::padding, Tile::padding, Tile::padding);
        column->setSpacing(Tile::spacing);
        column->addWidget(new TextLabel{Tile::titleText, m_colours, this, title.toUpper()});
        column->addWidget(m_value);
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    }
    void display(const QString& value) { m_value->display(value); }

protected:
    void paintEvent(QPaintEvent* event) override {
        QPainter painter{this};
        if (Drawing::isInside(event->rect(), rect(), Tile::cornerRadius)) {
            painter.fillRect(rect(), m_colours.of(ColourRole::surface));
            return;
        }
        Drawing::fillRounded(painter, rect(), Tile::cornerRadius, m_colours.of(ColourRole::surface));
        Drawing::strokeRounded(painter, rect(), Tile::cornerRadius, m_colours.of(ColourRole::border));
    }

private:
    const Colours& m_colours;
    TextLabel* m_value = new TextLabel{Tile::valueText, m_colours};
};

}

PanelSections::Section PanelSections::metrics(StatusModel& status, const DaypartController& daypart) {
    auto section = std::make_unique<PanelSection>(daypart, PanelMetrics::sectionMargins, Metrics::spacing);
    const auto bridge = addCheck(*section, u"Bridge"_s);
    const auto caddy = addCheck(*section, u"Caddy"_s);
    const auto postgres = addCheck(*section, u"Postgres"_s);
    auto& tiles = section->addRow(Metrics::tileSpacing);
    tiles.setContentsMargins(0, Metrics::tilesTopPadding, 0, 0);
    auto* load = new StatTile{u"Load"_s, *section};
    auto* memory = new StatTile{u"Memory"_s, *section};
    auto* disk = new StatTile{u"Disk"_s, *section};
    for (auto* tile : {load, memory, disk}) {
        tiles.addWidget(tile, 1);
    }
    auto& error = section->addText(Metrics::errorText);
    auto& updated = section->addText(Metrics::updatedText);
    section->follow({&status}, [&status, bridge, caddy, postgres, load, memory, disk, &error, &updated] {
        bridge.display(status.bridgeOnline ? u"online · :43105"_s : u"offline"_s, status.bridgeOnline);
        caddy.display(status.caddyDetail, status.caddyBand == StatusModel::Band::green);
        postgres.display(status.postgresDetail, status.postgresOk.value() == true);
        load->display(status.hostLoad);
        memory->display(status.hostMemory);
        disk->display(status.hostDisk);
        error.display(status.lastError.value().value_or(QString{}));
        error.setVisible(status.lastError.value().has_value());
        const auto& polled = status.lastPoll.value();
        updated.display(polled ? QString{u"Updated " + ClockText::withSeconds(*polled)} : QString{});
        updated.setVisible(polled.has_value());
    });
    return section;
}
