#include "ui/menubar/ActionsView.h"

#include "app/StatusModel.h"
#include "support/DevelopmentDomain.h"
#include "ui/WebPage.h"
#include "ui/kit/Button.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/VornaAccentButtonStyle.h"
#include "ui/menubar/VornaMenuButtonStyle.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;
namespace Actions = PanelMetrics::Actions;

ActionsView::ActionsView(StatusModel& status, const DaypartController& daypart, const PanelActions& actions,
                         QWidget* parent)
    : PanelSection{daypart, parent, PanelMetrics::sectionMargins, Actions::spacing}
    , m_status{status}
    , m_actions{actions} {
    addQuickActions();
    addToolActions();
    observe(status);
}

void ActionsView::addQuickActions() {
    const auto opens = [this](const QString& address) {
        return [this, address] { WebPage::open(address, m_actions.openUrl); };
    };
    const auto addRow = [this](const QList<Button*>& buttons) {
        auto* row = new QHBoxLayout;
        row->setSpacing(Actions::buttonSpacing);
        for (auto* button : buttons) {
            row->addWidget(button, 1);
        }
        column().addLayout(row);
    };
    const auto quick = [this](const QString& title, const QString& symbolName, std::function<void()> action) {
        return newButton(title, symbolName, VornaAccentButtonStyle{}, std::move(action));
    };
    addRow({quick(u"Refresh"_s, u"arrow.clockwise"_s, [this] { m_status.poll(); }),
            quick(u"Console"_s, u"rectangle.connected.to.line.below"_s,
                  opens(DevelopmentDomain::dashboard() + u"/dashboard"))});
    addRow({quick(u"Agents"_s, u"bubble.left.and.bubble.right"_s,
                  opens(DevelopmentDomain::dashboard() + u"/dashboard/agents")),
            quick(u"Facet"_s, u"cpu"_s, opens(DevelopmentDomain::facet()))});
}

void ActionsView::addToolActions() {
    column().addSpacing(Actions::headingTopPadding);
    column().addWidget(new TextLabel{PanelMetrics::headingText, colours(), this, u"MAC → MAC"_s});
    m_toolButtons = {newButton(u"Desk backup now"_s, u"externaldrive.badge.timemachine"_s, VornaMenuButtonStyle{},
                               [this] { m_status.runDeskBackup(); }),
                     newButton(u"Sync via iCloud"_s, u"icloud.and.arrow.up"_s, VornaMenuButtonStyle{},
                               [this] { m_status.runMacSyncICloud(); })};
    for (auto* button : std::as_const(m_toolButtons)) {
        column().addWidget(button);
    }
    m_busy = new TextLabel{Actions::busyText, colours(), this, u"Running vorna…"_s};
    m_message = new TextLabel{Actions::messageText, colours(), this};
    column().addWidget(m_busy);
    column().addWidget(m_message);
}

Button* ActionsView::newButton(const QString& title, const QString& symbolName, const ButtonStyle& style,
                               std::function<void()> action) {
    auto* button = new Button{title, symbolName, style, colours(), this};
    connect(button, &QPushButton::clicked, this, std::move(action));
    return button;
}

void ActionsView::render() {
    const bool isBusy = m_status.cliBusy;
    const auto& message = m_status.cliMessage.value();
    for (auto* button : std::as_const(m_toolButtons)) {
        button->setAvailable(!isBusy);
    }
    m_message->display(isBusy ? QString{} : message.value_or(QString{}));
    m_busy->setVisible(isBusy);
    m_message->setVisible(!isBusy && message.has_value());
}

#include "moc_ActionsView.cpp"
