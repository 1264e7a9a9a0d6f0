#include "app/VornaApp.h"

#include "daypart/DaypartController.h"
#include "platform/Desktop.h"
#include "platform/StatusItem.h"
#include "system/NotificationService.h"
#include "system/PermissionCenter.h"
#include "ui/kit/ApplicationAccessible.h"
#include "ui/menubar/MenuBarView.h"
#include "ui/menubar/PanelWindow.h"
#include "ui/settings/SettingsWindow.h"

#include <QCoreApplication>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// How long a closed window's memory is kept for the case that it is opened again at once.
constexpr auto giveBackDelay = 2s;

}

VornaApp::VornaApp(std::chrono::milliseconds pollInterval, QObject* parent)
    : QObject{parent}
    , m_daypart{DaypartController::shared()}
    , m_delegate{NotificationService::shared()}
    , m_status{NotificationService::shared(), VornaCLIRunner::run, StatusModel::defaultBridge(), wallClock,
               pollInterval}
    , m_item{StatusItem::create(u"vorna"_s)} {
    ApplicationAccessible::install();
    QMetaObject::invokeMethod(&m_delegate, &AppDelegate::applicationDidFinishLaunching, Qt::QueuedConnection);
    connect(&m_status, &StatusModel::objectWillChange, this, &VornaApp::scheduleSymbol);
    connect(m_item.get(), &StatusItem::clicked, this, [this] {
        panel().toggle(m_item->anchor());
        m_item->setPanelOpen(m_panel->isVisible());
    });
    connect(m_item.get(), &StatusItem::clickedElsewhere, this, &VornaApp::dismissPanel);
    connect(m_item.get(), &StatusItem::showPanelChosen, this, &VornaApp::showPanel);
    connect(m_item.get(), &StatusItem::settingsChosen, this, &VornaApp::showSettings);
    connect(m_item.get(), &StatusItem::quitChosen, this, &QCoreApplication::quit);
    m_giveBackTimer.setSingleShot(true);
    m_giveBackTimer.setInterval(giveBackDelay);
    connect(&m_giveBackTimer, &QTimer::timeout, this, &VornaApp::giveBack);
    showSymbol();
}

VornaApp::~VornaApp() = default;

void VornaApp::showPanel() {
    panel().showAt(m_item->anchor());
    m_item->setPanelOpen(true);
}

void VornaApp::showSettings() {
    settings().open();
}

void VornaApp::dismissPanel() {
    if (m_panel) {
        m_panel->hide();
    }
}

void VornaApp::scheduleSymbol() {
    if (!std::exchange(m_symbolScheduled, true)) {
        QMetaObject::invokeMethod(this, &VornaApp::showSymbol, Qt::QueuedConnection);
    }
}

void VornaApp::showSymbol() {
    m_symbolScheduled = false;
    m_item->setSymbol(m_status.menuBarSymbol(), m_status.menuBarMeaning());
}

PanelWindow& VornaApp::panel() {
    if (!m_panel) {
        const PanelActions actions{
            .openSettings = [this] { showSettings(); },
            .openUrl = Desktop::openUrl,
            .quit = &QCoreApplication::quit,
        };
        auto content = std::make_unique<MenuBarView>(m_status, m_daypart, NotificationService::shared(), actions);
        const auto placedBy = Desktop::placesPanel() ? PanelWindow::PlacedBy::desktop : PanelWindow::PlacedBy::us;
        m_panel = std::make_unique<PanelWindow>(std::move(content), m_daypart, Desktop::panelFlags(), placedBy,
                                                Desktop::blendsWindows);
        connect(m_panel.get(), &PanelWindow::closed, &m_giveBackTimer, qOverload<>(&QTimer::start));
        connect(m_panel.get(), &PanelWindow::closed, m_item.get(), [this] { m_item->setPanelOpen(false); });
        connect(m_panel.get(), &PanelWindow::dismissedByUser, this, Desktop::activatePreviousProgram);
    }
    return *m_panel;
}

SettingsWindow& VornaApp::settings() {
    if (!m_settings) {
        m_settings = std::make_unique<SettingsWindow>(
            m_status, m_daypart, [] { return std::make_unique<PermissionCenter>(NotificationService::shared()); });
        connect(m_settings.get(), &SettingsWindow::closed, &m_giveBackTimer, qOverload<>(&QTimer::start));
        connect(m_settings.get(), &SettingsWindow::closed, this, Desktop::activatePreviousProgram);
    }
    return *m_settings;
}

void VornaApp::giveBack() {
    if (m_panel && !m_panel->isVisible()) {
        m_panel.reset();
    }
    Desktop::releaseUnusedMemory();
}

#include "moc_VornaApp.cpp"
