#include "ui/settings/SettingsView.h"

#include "system/PermissionCenter.h"
#include "ui/settings/AboutTab.h"
#include "ui/settings/BridgeTab.h"
#include "ui/settings/DaypartTab.h"
#include "ui/settings/FormColours.h"
#include "ui/settings/PermissionsTab.h"
#include "ui/settings/SettingsTabBar.h"

#include <QPainter>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int headPadding = 8;
constexpr int lineHeight = 1;

}

SettingsView::SettingsView(StatusModel& status, DaypartController& daypart,
                           std::unique_ptr<PermissionCenter> permissions, const SettingsLinks& links, QWidget* parent)
    : QWidget{parent}
    , m_permissions{std::move(permissions)}
    , m_tabs{new SettingsTabBar{this}}
    , m_pages{new QStackedWidget{this}} {
    auto* const head = new QHBoxLayout;
    head->setContentsMargins(headPadding, headPadding, headPadding, headPadding);
    head->addStretch();
    head->addWidget(m_tabs);
    head->addStretch();
    auto* const column = new QVBoxLayout{this};
    column->setContentsMargins({});
    column->setSpacing(lineHeight);
    column->addLayout(head);
    column->addWidget(m_pages, 1);

    addTab(u"Bridge"_s, u"network"_s, new BridgeTab{status, daypart});
    addTab(u"Permissions"_s, u"lock.shield"_s, new PermissionsTab{*m_permissions, links.openPane});
    addTab(u"Daypart"_s, u"sun.horizon"_s, new DaypartTab{daypart});
    addTab(u"About"_s, u"info.circle"_s, new AboutTab{links.openPage});
    connect(m_tabs, &SettingsTabBar::currentChanged, this, &SettingsView::showTab);
    showTab(m_tabs->currentIndex());

    connect(new QShortcut{QKeySequence::NextChild, this}, &QShortcut::activated, this, [this] { stepTab(1); });
    connect(new QShortcut{QKeySequence::PreviousChild, this}, &QShortcut::activated, this, [this] { stepTab(-1); });
    m_tabs->setFocus();
}

/// The tabs look at the permission center until they are gone, so they go first.
SettingsView::~SettingsView() {
    delete m_pages;
}

void SettingsView::addTab(const QString& title, const QString& symbolName, View* page) {
    m_pages->addWidget(page);
    m_tabs->addTab(title, symbolName);
}

void SettingsView::showTab(int index) {
    static_cast<View*>(m_pages->widget(index))->renderPending();
    m_pages->setCurrentIndex(index);
}

void SettingsView::stepTab(int by) {
    m_tabs->setCurrentIndex((m_tabs->currentIndex() + by + m_tabs->count()) % m_tabs->count());
}

void SettingsView::paintEvent(QPaintEvent*) {
    QPainter{this}.fillRect(0, m_pages->y() - lineHeight, width(), lineHeight, FormColours::outline(palette()));
}

#include "moc_SettingsView.cpp"
