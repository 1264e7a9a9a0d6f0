#include "ui/settings/SettingsView.h"

#include "system/PermissionCenter.h"
#include "ui/settings/AboutTab.h"
#include "ui/settings/BridgeTab.h"
#include "ui/settings/DaypartTab.h"
#include "ui/settings/PermissionsTab.h"
#include "ui/settings/ScrollPage.h"
#include "ui/settings/SymbolIcon.h"
#include "ui/settings/TabListAccessible.h"

#include <QEvent>
#include <QRadioButton>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int smallestSymbol = 16;

}

SettingsView::SettingsView(StatusModel& status, DaypartController& daypart,
                           std::unique_ptr<PermissionCenter> permissions, const SettingsLinks& links, QWidget* parent)
    : QWidget{parent}
    , m_colours{daypart}
    , m_permissions{std::move(permissions)}
    , m_tabs{new QTabWidget{this}} {
    TabListAccessible::install();
    auto* const layout = new QVBoxLayout{this};
    layout->setContentsMargins({});
    layout->addWidget(m_tabs);
    m_tabs->setDocumentMode(true);
    m_tabs->setUsesScrollButtons(false);
    m_tabs->tabBar()->setFocusPolicy(Qt::StrongFocus);
    m_tabs->tabBar()->lower(); // assistive programs read children from the lowest on

    addTab(u"Bridge"_s, u"network"_s, *new BridgeTab{status, daypart, m_colours});
    addTab(u"Permissions"_s, u"lock.shield"_s, *new PermissionsTab{*m_permissions, links.openPane, m_colours});
    addTab(u"Daypart"_s, u"sun.horizon"_s, *new DaypartTab{daypart, m_colours});
    addTab(u"About"_s, u"info.circle"_s, *new AboutTab{links.openPage, m_colours});
    // Else the keyboard would go from a control of the old page to the new page itself, which has no name.
    connect(m_tabs, &QTabWidget::currentChanged, this, [this] { m_tabs->tabBar()->setFocus(); });
    connect(new QShortcut{QKeySequence::NextChild, this}, &QShortcut::activated, this, [this] { stepTab(1); });
    connect(new QShortcut{QKeySequence::PreviousChild, this}, &QShortcut::activated, this, [this] { stepTab(-1); });
    m_tabs->tabBar()->setFocus();
    fitSymbols();
}

/// The tabs look at the permission center and the colours until they are gone, so they go first.
SettingsView::~SettingsView() {
    delete m_tabs;
}

void SettingsView::addTab(const QString& title, const QString& symbolName, QWidget& page) {
    m_tabs->addTab(new ScrollPage{title, page}, symbolIcon(symbolName), title);
}

void SettingsView::fitSymbols() {
    const int side = std::max(smallestSymbol, fontMetrics().height());
    m_tabs->setIconSize({side, side});
    for (auto* choice : findChildren<QRadioButton*>()) {
        choice->setIconSize({side, side});
    }
}

void SettingsView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        fitSymbols();
    }
}

void SettingsView::stepTab(int by) {
    m_tabs->setCurrentIndex((m_tabs->currentIndex() + by + m_tabs->count()) % m_tabs->count());
}

#include "moc_SettingsView.cpp"
