#include "app/StatusModel.h"
#include "support/DevelopmentDomain.h"
#include "ui/WebPage.h"
#include "ui/kit/Button.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/ButtonStyles.h"
#include "ui/menubar/MenuBarView.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/PanelSections.h"

#include <QHBoxLayout>

using namespace Qt::StringLiterals;
namespace Actions = PanelMetrics::Actions;

PanelSections::Section PanelSections::actions(StatusModel& status, const DaypartController& daypart,
                                              const PanelActions& actions) {
    auto section = std::make_unique<PanelSection>(daypart, PanelMetrics::sectionMargins, Actions::spacing);
    const auto opens = [open = actions.openUrl](const QString& address) {
        return [open, address] { WebPage::open(address, open); };
    };
    const auto addQuick = [&section](QHBoxLayout& row, const QString& title, const QString& symbolName,
                                     const std::function<void()>& action) {
        row.addWidget(&section->addButton(title, symbolName, VornaAccentButtonStyle{}, action), 1);
    };
    auto& first = section->addRow(Actions::buttonSpacing);
    addQuick(first, u"Refresh"_s, u"arrow.clockwise"_s, [&status] { status.poll(); });
    addQuick(first, u"Console"_s, u"rectangle.connected.to.line.below"_s,
             opens(DevelopmentDomain::dashboard() + u"/dashboard"));
    auto& second = section->addRow(Actions::buttonSpacing);
    addQuick(second, u"Agents"_s, u"bubble.left.and.bubble.right"_s,
             opens(DevelopmentDomain::dashboard() + u"/dashboard/agents"));
    addQuick(second, u"Facet"_s, u"cpu"_s, opens(DevelopmentDomain::facet()));

    section->column().addSpacing(Actions::headingTopPadding);
    section->addText(PanelMetrics::headingText, u"MAC → MAC"_s);
    auto& backup = section->addButton(u"Desk backup now"_s, u"externaldrive.badge.timemachine"_s,
                                      VornaMenuButtonStyle{}, [&status] { status.runDeskBackup(); });
    auto& sync = section->addButton(u"Sync via iCloud"_s, u"icloud.and.arrow.up"_s, VornaMenuButtonStyle{},
                                    [&status] { status.runMacSyncICloud(); });
    auto& busy = section->addText(Actions::busyText, u"Running vorna…"_s);
    auto& outcome = section->addText(Actions::messageText);
    section->follow({&status}, [&status, &backup, &sync, &busy, &outcome] {
        const bool isBusy = status.cliBusy;
        const auto& message = status.cliMessage.value();
        backup.setAvailable(!isBusy);
        sync.setAvailable(!isBusy);
        outcome.display(isBusy ? QString{} : message.value_or(QString{}));
        busy.setVisible(isBusy);
        outcome.setVisible(!isBusy && message.has_value());
    });
    return section;
}
