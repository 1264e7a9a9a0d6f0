#include "app/VornaApp.h"

#include "system/PermissionCenter.h"
#include "ui/kit/ApplicationAccessible.h"
#include "ui/menubar/MenuBarView.h"
#include "ui/menubar/PanelWindow.h"
#include "ui/settings/SettingsWindow.h"

#include <QFontMetrics>
#include <QGuiApplication>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// How long a closed window's memory is kept for the case that it is opened again at once.
static constexpr auto releaseDelay = 2s;

/// When a start is surely over, and the item in the tray.
static constexpr auto readyDelay = 500ms;

VornaApp::VornaApp(const VornaParts& parts, QObject* parent)
    : QObject{parent}
    , m_notifications{parts.notifications}
    , m_activatePreviousProgram{parts.activatePreviousProgram}
    , m_delay{parts.delay}
    , m_daypart{parts.daypart()}
    , m_delegate{parts.notifications, parts.becomeAccessory, parts.daypart}
    , m_status{parts.notifications, parts.runTool, parts.bridge, wallClock, parts.ticker} {
    QGuiApplication::setQuitOnLastWindowClosed(false);
    ApplicationAccessible::install();
    m_delegate.applicationDidFinishLaunching();
    m_item = parts.makeItem(u"vorna"_s);
    connect(&m_status, &StatusModel::changed, this, &VornaApp::showSymbol);
    connect(m_item.get(), &StatusItem::clicked, this, [this] {
        panel().toggle(m_item->anchor());
        m_item->setPanelOpen(m_panel->isVisible());
    });
    connect(m_item.get(), &StatusItem::clickedElsewhere, this, &VornaApp::dismissPanel);
    connect(m_item.get(), &StatusItem::showPanelChosen, this, &VornaApp::showPanel);
    connect(m_item.get(), &StatusItem::settingsChosen, this, &VornaApp::showSettings);
    connect(m_item.get(), &StatusItem::quitChosen, this, &QCoreApplication::quit);
    m_releaseTimer.setSingleShot(true);
    m_releaseTimer.setInterval(releaseDelay);
    connect(&m_releaseTimer, &QTimer::timeout, this, &VornaApp::releaseMemory);
    showSymbol();
    m_delay(*this, readyDelay, [this] { makeReady(); });
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

void VornaApp::showSymbol() {
    m_item->setSymbol(m_status.menuBarSymbol(), m_status.menuBarMeaning());
}

PanelWindow& VornaApp::panel() {
    if (!m_panel) {
        const PanelActions actions{
            .openSettings = [this] { showSettings(); },
            .openUrl = Desktop::openUrl,
            .quit = &QCoreApplication::quit,
        };
        auto content = std::make_unique<MenuBarView>(m_status, m_daypart, m_notifications, actions);
        const auto placedBy = Desktop::placesPanel() ? PanelWindow::PlacedBy::desktop : PanelWindow::PlacedBy::us;
        m_panel = std::make_unique<PanelWindow>(std::move(content), m_daypart, Desktop::panelFlags(), placedBy,
                                                Desktop::blendsWindows);
        connect(m_panel.get(), &PanelWindow::closed, &m_releaseTimer, qOverload<>(&QTimer::start));
        connect(m_panel.get(), &PanelWindow::closed, m_item.get(), [this] { m_item->setPanelOpen(false); });
        connect(m_panel.get(), &PanelWindow::dismissedByUser, this, m_activatePreviousProgram);
    }
    return *m_panel;
}

// Fonts are read and glyphs drawn once in a process. One piece a turn, so that a click between them hardly waits; what
// was open in the meantime needs none, and is given back in its own time.
void VornaApp::makeReady() {
    (void)QFontMetrics{QGuiApplication::font()}.ascent();
    m_delay(*this, 0ms, [this] {
        panel();
        m_delay(*this, 0ms, [this] {
            if (m_panel && !m_panel->isVisible() && !m_releaseTimer.isActive()) {
                m_panel->drawUnseen();
                releaseMemory();
            }
        });
    });
}

SettingsWindow& VornaApp::settings() {
    if (!m_settings) {
        m_settings = std::make_unique<SettingsWindow>(
            m_status, m_daypart, [this] { return std::make_unique<PermissionCenter>(m_notifications); });
        connect(m_settings.get(), &SettingsWindow::closed, &m_releaseTimer, qOverload<>(&QTimer::start));
        connect(m_settings.get(), &SettingsWindow::closed, this, m_activatePreviousProgram);
    }
    return *m_settings;
}

void VornaApp::releaseMemory() {
    if (m_panel && !m_panel->isVisible()) {
        m_panel.reset();
    }
    Desktop::releaseUnusedMemory();
}

#include "moc_VornaApp.cpp"
