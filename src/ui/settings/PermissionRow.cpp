#include "ui/settings/PermissionRow.h"

#include "ui/kit/Button.h"
#include "ui/kit/TextLabel.h"
#include "ui/settings/FormMetrics.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <array>

using namespace FormMetrics;
using namespace Qt::StringLiterals;

namespace {

constexpr std::array statusTexts{"Granted"_L1, "Denied"_L1, "Not determined"_L1, "Check in System Settings"_L1};

}

PermissionRow::PermissionRow(const Colours& colours, QWidget* parent)
    : QWidget{parent}
    , m_title{new TextLabel{headline, colours, this}}
    , m_status{new TextLabel{caption, colours, this}}
    , m_detail{new TextLabel{caption, colours, this}}
    , m_open{new Button{u"Open System Settings"_s, {}, linkButtonStyle, colours, this}} {
    m_title->setBuddy(m_status);
    m_status->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    m_open->hide();

    auto* const heading = new QHBoxLayout;
    heading->setSpacing(rowSpacing);
    heading->addWidget(m_title, 1);
    heading->addWidget(m_status);
    auto* const texts = new QVBoxLayout;
    texts->setContentsMargins(linkButtonStyle.horizontalPadding, 0, linkButtonStyle.horizontalPadding, 0);
    texts->setSpacing(permissionSpacing);
    texts->addLayout(heading);
    texts->addWidget(m_detail);
    auto* const column = new QVBoxLayout{this};
    column->setContentsMargins(0, permissionGap + permissionPadding, 0, permissionGap + permissionPadding);
    column->setSpacing(permissionSpacing - linkButtonStyle.verticalPadding);
    column->addLayout(texts);
    column->addWidget(m_open, 0, Qt::AlignLeading);
    connect(m_open, &QPushButton::clicked, this, [this] { emit paneWanted(m_link); });
}

void PermissionRow::setItem(const PermissionCenter::Item& item) {
    m_link = item.settingsURL.value_or(QUrl{});
    m_title->display(item.title);
    m_status->display(statusTexts.at(static_cast<std::size_t>(item.status)));
    m_detail->display(item.detail);
    m_open->setVisible(item.settingsURL.has_value());
    m_open->setAccessibleDescription(item.title);
    setAccessibleName(item.title);
    layout()->activate();
}

#include "moc_PermissionRow.cpp"
