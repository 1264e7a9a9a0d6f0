#include "app/VornaApp.h"

#include "daypart/DaypartController.h"
#include "platform/Launch.h"
#include "platform/StatusItem.h"
#include "system/NotificationService.h"
#include "system/PermissionCenter.h"
#include "ui/menubar/MenuBarView.h"
#include "ui/menubar/PanelWindow.h"
#include "ui/settings/SettingsWindow.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

VornaApp::VornaApp(QObject* parent)
    : QObject{parent}
    , m_daypart{DaypartController::shared()}
    , m_delegate{NotificationService::shared()}
    , m_status{NotificationService::shared()}
    , m_item{StatusItem::create(u"vorna"_s)} {
    QMetaObject::invokeMethod(&m_delegate, &AppDelegate::applicationDidFinishLaunching, Qt::QueuedConnection);
    connect(&m_status, &StatusModel::objectWillChange, this, &VornaApp::scheduleSymbol);
    connectItem();
    showSymbol();
}

VornaApp::~VornaApp() = default;

void VornaApp::show(CommandLine::Request request) {
    if (request == CommandLine::Request::showSettings) {
        settings().open();
    } else {
        panel().showAt(m_item->anchor());
    }
}

void VornaApp::connectItem() {
    connect(m_item.get(), &StatusItem::clicked, this, [this] { panel().toggle(m_item->anchor()); });
    connect(m_item.get(), &StatusItem::clickedElsewhere, this, [this] { panel().dismiss(); });
    connect(m_item.get(), &StatusItem::showPanelChosen, this, [this] { show(CommandLine::Request::showPanel); });
    connect(m_item.get(), &StatusItem::settingsChosen, this, [this] { show(CommandLine::Request::showSettings); });
    connect(m_item.get(), &StatusItem::quitChosen, qApp, &QCoreApplication::quit);
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
