#include "ui/settings/PermissionRow.h"

#include "ui/settings/FormColours.h"
#include "ui/settings/FormMetrics.h"
#include "ui/settings/FormText.h"
#include "ui/settings/LinkButton.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include <array>

using namespace Qt::StringLiterals;
using Style = FormText::Style;

namespace {

constexpr int lineSpacing = 4;
constexpr int verticalPadding = 4;
constexpr int listSpacing = 8;

QString statusText(PermissionCenter::Item::Status status) {
    static constexpr std::array texts{"Granted"_L1, "Denied"_L1, "Not determined"_L1, "Check in System Settings"_L1};
    return texts.at(static_cast<std::size_t>(status));
}

}

PermissionRow::PermissionRow(QWidget* parent)
    : QWidget{parent}
    , m_title{new FormText{{}, Style::headline, this}}
    , m_status{new FormText{{}, Style::caption, this}}
    , m_detail{new FormText{{}, Style::caption, this}}
    , m_open{new LinkButton{u"Open System Settings"_s, this}} {
    m_title->setBuddy(m_status);
    m_status->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    m_open->hide();

    auto* const heading = new QHBoxLayout;
    heading->setSpacing(FormMetrics::rowSpacing);
    heading->addWidget(m_title);
    heading->addStretch();
    heading->addWidget(m_status);

    auto* const texts = new QVBoxLayout;
    texts->setContentsMargins(FormMetrics::highlightInset, 0, FormMetrics::highlightInset, 0);
    texts->setSpacing(lineSpacing);
    texts->addLayout(heading);
    texts->addWidget(m_detail);

    auto* const column = new QVBoxLayout{this};
    column->setContentsMargins(0, listSpacing + verticalPadding, 0, listSpacing + verticalPadding);
    column->setSpacing(lineSpacing - FormMetrics::highlightInset / 2);
    column->addLayout(texts);
    column->addWidget(m_open, 0, Qt::AlignLeading);
    connect(m_open, &QPushButton::clicked, this, [this] { emit paneWanted(m_link); });
}

void PermissionRow::setItem(const PermissionCenter::Item& item) {
    m_link = item.settingsURL.value_or(QUrl{});
    m_title->setText(item.title);
    m_status->setText(statusText(item.status));
    m_detail->setText(item.detail);
    m_open->setVisible(item.settingsURL.has_value());
    m_open->setAccessibleDescription(item.title);
    setAccessibleName(item.title);
}

void PermissionRow::paintEvent(QPaintEvent*) {
    constexpr auto inset = FormMetrics::highlightInset;
    QPainter{this}.fillRect(inset, 0, width() - 2 * inset, 1, FormColours::outline(palette()));
}

#include "moc_PermissionRow.cpp"
