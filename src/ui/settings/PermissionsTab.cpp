#include "ui/settings/PermissionsTab.h"

#include "system/PermissionCenter.h"
#include "ui/settings/FormColours.h"
#include "ui/settings/FormMetrics.h"
#include "ui/settings/FormText.h"
#include "ui/settings/PermissionRow.h"
#include "ui/settings/ScrollPage.h"

#include <QHideEvent>
#include <QPainter>
#include <QShowEvent>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int listPadding = 20;
constexpr int introductionSpacing = 14;

}

PermissionsTab::PermissionsTab(PermissionCenter& permissions, OpenPane openPane, QWidget* parent)
    : View{parent}
    , m_permissions{permissions}
    , m_openPane{std::move(openPane)}
    , m_page{new ScrollPage{u"Permissions"_s, this}} {
    auto* const layout = new QVBoxLayout{this};
    layout->setContentsMargins({});
    layout->addWidget(m_page);

    auto& content = m_page->content();
    constexpr auto inset = FormMetrics::highlightInset;
    content.setContentsMargins(listPadding - inset, listPadding, listPadding - inset, listPadding);
    content.setSpacing(0);
    auto* const introduction = new QHBoxLayout;
    introduction->setContentsMargins(inset, 0, inset, introductionSpacing);
    introduction->addWidget(
        new FormText{u"Apple Silicon only. Grant only what you need for WARDEN, desk recover, and agent tooling."_s,
                     FormText::Style::caption});
    content.addLayout(introduction);
    content.addStretch();
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
    m_page->layOutNow();
}

void PermissionsTab::addRow() {
    auto* const row = new PermissionRow{m_page->widget()};
    connect(row, &PermissionRow::paneWanted, this, [this](const QUrl& link) { m_openPane(link); });
    auto& content = m_page->content();
    content.insertWidget(content.count() - 1, row);
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
    QPainter{this}.fillRect(rect(), FormColours::group(palette()));
}

#include "moc_PermissionsTab.cpp"
