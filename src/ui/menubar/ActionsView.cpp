#include "ui/menubar/ActionsView.h"

#include "app/StatusModel.h"
#include "daypart/DaypartController.h"
#include "support/DevelopmentDomain.h"
#include "ui/WebPage.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/VornaAccentButton.h"
#include "ui/menubar/VornaMenuButton.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;
namespace Actions = PanelMetrics::Actions;

ActionsView::ActionsView(StatusModel& status, DaypartController& daypart, const PanelActions& actions, QWidget* parent)
    : PanelSection{parent, PanelMetrics::sectionMargins, Actions::spacing}
    , m_status{status}
    , m_daypart{daypart}
    , m_actions{actions} {
    addQuickActions();
    addToolActions();
    observe(status);
    observe(daypart);
}

void ActionsView::addQuickActions() {
    const auto opens = [this](const QString& address) {
        return [this, address] { WebPage::open(address, m_actions.openUrl); };
    };
    const auto addRow = [this](VornaAccentButton* first, VornaAccentButton* second) {
        auto* row = new QHBoxLayout;
        row->setSpacing(Actions::buttonSpacing);
        row->addWidget(first, 1);
        row->addWidget(second, 1);
        column().addLayout(row);
    };
    auto* refresh = actionButton(u"Refresh"_s, u"arrow.clockwise"_s, [this] { m_status.poll(); });
    auto* console = actionButton(u"Console"_s, u"rectangle.connected.to.line.below"_s,
                                 opens(DevelopmentDomain::dashboard() + u"/dashboard"));
    addRow(refresh, console);
    auto* agents = actionButton(u"Agents"_s, u"bubble.left.and.bubble.right"_s,
                                opens(DevelopmentDomain::dashboard() + u"/dashboard/agents"));
    auto* facet = actionButton(u"Facet"_s, u"cpu"_s, opens(DevelopmentDomain::facet()));
    addRow(agents, facet);
}

void ActionsView::addToolActions() {
    m_heading = new TextLabel{PanelMetrics::headingText, this};
    m_heading->display(u"MAC → MAC"_s);
    column().addSpacing(Actions::headingTopPadding);
    column().addWidget(m_heading);
    column().addWidget(
        toolButton(u"Desk backup now"_s, u"externaldrive.badge.timemachine"_s, [this] { m_status.runDeskBackup(); }));
    column().addWidget(
        toolButton(u"Sync via iCloud"_s, u"icloud.and.arrow.up"_s, [this] { m_status.runMacSyncICloud(); }));
    m_busy = new TextLabel{Actions::busyText, this};
    m_message = new TextLabel{Actions::messageText, this};
    column().addWidget(m_busy);
    column().addWidget(m_message);
}

VornaAccentButton* ActionsView::actionButton(const QString& title, const QString& symbolName,
                                             std::function<void()> action) {
    auto* button = new VornaAccentButton{title, symbolName, this};
    connect(button, &QPushButton::clicked, this, std::move(action));
    m_quickButtons += button;
    return button;
}

VornaMenuButton* ActionsView::toolButton(const QString& title, const QString& symbolName,
                                         std::function<void()> action) {
    auto* button = new VornaMenuButton{title, symbolName, this};
    connect(button, &QPushButton::clicked, this, std::move(action));
    m_toolButtons += button;
    return button;
}

void ActionsView::render() {
    const DaypartPalette& palette = m_daypart.palette;
    for (auto* button : std::as_const(m_quickButtons)) {
        button->setButtonStyle({palette});
    }
    for (auto* button : std::as_const(m_toolButtons)) {
        button->setButtonStyle({palette});
        button->setAvailable(!m_status.cliBusy);
    }
    m_heading->setColour(palette.textMuted);
    m_busy->setColour(palette.textMuted);
    m_message->setColour(palette.textMuted);
    renderToolLine();
}

void ActionsView::renderToolLine() {
    const bool isBusy = m_status.cliBusy;
    const auto& message = m_status.cliMessage.value();
    m_busy->display(isBusy ? u"Running vorna…"_s : QString{});
    m_message->display(isBusy ? QString{} : message.value_or(QString{}));
    m_busy->setVisible(isBusy);
    m_message->setVisible(!isBusy && message.has_value());
}

#include "moc_ActionsView.cpp"
