#include "ui/settings/PermissionsTab.h"

#include "platform/AppInfo.h"
#include "system/PermissionCenter.h"
#include "ui/kit/ButtonStyle.h"
#include "ui/kit/TextLabel.h"
#include "ui/settings/FormMetrics.h"
#include "ui/settings/PermissionRow.h"

#include <QHBoxLayout>
#include <QHideEvent>
#include <QPainter>
#include <QShowEvent>
#include <QVBoxLayout>

#include <utility>

using namespace FormMetrics;
using namespace Qt::StringLiterals;

namespace {

/// A link's title stands below the other texts, and its focus ring beyond them.
constexpr int inset = linkButtonStyle.horizontalPadding;

}

PermissionsTab::PermissionsTab(PermissionCenter& permissions, OpenPane openPane, const Colours& colours,
                               QWidget* parent)
    : View{parent}
    , m_permissions{permissions}
    , m_openPane{std::move(openPane)}
    , m_colours{colours}
    , m_list{new QVBoxLayout{this}} {
    const auto introduction = u"Grant only what you need for WARDEN, desk recover, and agent tooling."_s;
    m_list->setContentsMargins(pagePadding - inset, pagePadding, pagePadding - inset, pagePadding);
    m_list->setSpacing(0);
    auto* const top = new QHBoxLayout;
    m_list->addLayout(top);
    m_list->addStretch();
    top->setContentsMargins(inset, 0, inset, introductionSpacing);
    top->addWidget(new TextLabel{caption, m_colours, nullptr, AppInfo::requirement() + introduction});
    observe(m_permissions);
}

void PermissionsTab::render() {
    const auto& items = m_permissions.items.value();
    while (m_rows.size() < items.size()) {
        addRow();
    }
    while (m_rows.size() > items.size()) {
        delete m_rows.takeLast();
    }
    for (qsizetype index = 0; index < items.size(); ++index) {
        m_rows.at(index)->setItem(items.at(index));
    }
}

void PermissionsTab::addRow() {
    auto* const row = new PermissionRow{m_colours, this};
    connect(row, &PermissionRow::paneWanted, this, [this](const QUrl& link) { m_openPane(link); });
    m_list->insertWidget(m_list->count() - 1, row);
    row->show();
    m_rows.append(row);
}

void PermissionsTab::showEvent(QShowEvent* event) {
    View::showEvent(event);
    if (!event->spontaneous()) {
        m_permissions.refresh();
    }
}

void PermissionsTab::hideEvent(QHideEvent* event) {
    View::hideEvent(event);
    if (!event->spontaneous()) {
        m_permissions.cancelRefresh();
    }
}

void PermissionsTab::paintEvent(QPaintEvent*) {
    QPainter painter{this};
    painter.fillRect(rect(), m_colours.of(ColourRole::surface));
    for (const auto* const row : m_rows) {
        painter.fillRect(row->x() + inset, row->y(), row->width() - 2 * inset, 1, m_colours.of(ColourRole::border));
    }
}

#include "moc_PermissionsTab.cpp"
