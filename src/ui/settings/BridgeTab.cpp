#include "ui/settings/BridgeTab.h"

#include "app/StatusModel.h"
#include "daypart/DaypartController.h"
#include "ui/kit/DotLabel.h"
#include "ui/settings/FormButton.h"
#include "ui/settings/FormSection.h"
#include "ui/settings/GroupedForm.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using Style = FormText::Style;

namespace {

constexpr auto dotSize = 8;

}

BridgeTab::BridgeTab(StatusModel& status, DaypartController& daypart, QWidget* parent)
    : View{parent}
    , m_status{status}
    , m_colours{daypart} {
    m_form = new GroupedForm{u"Bridge"_s, this};
    addBridgeSection(*m_form);
    addAccountSection(*m_form);
    addStartSection(*m_form);
    auto* const layout = new QVBoxLayout{this};
    layout->setContentsMargins({});
    layout->addWidget(m_form);
    observe(m_status);
    observe(daypart);
}

void BridgeTab::addBridgeSection(GroupedForm& form) {
    auto& section = form.addSection(u"Local bridge"_s);
    section.addValue(u"URL"_s, u"http://127.0.0.1:43105"_s, Style::monospaced);
    m_dot = new DotLabel{dotSize, m_colours};
    m_online = new FormText{{}, Style::body};
    section.addValue(u"Status"_s, *m_online, m_dot);
    m_caddy = &section.addValue(u"Caddy"_s, {}, Style::captionMonospaced);
    m_postgres = &section.addValue(u"Postgres"_s, {}, Style::captionMonospaced);
    connect(&section.addButton(u"Poll now"_s), &QPushButton::clicked, &m_status, &StatusModel::poll);
}

void BridgeTab::addAccountSection(GroupedForm& form) {
    auto& section = form.addSection(u"Account"_s);
    m_account = &section.addValue(u"Desktop login"_s, {}, Style::caption);
    connect(&section.addButton(u"Sign in with Google Workspace"_s), &QPushButton::clicked, &m_status,
            &StatusModel::signInFromDesktop);
    section.addText(u"After a successful login the web dashboard hides Download for Mac."_s, Style::caption);
}

void BridgeTab::addStartSection(GroupedForm& form) {
    auto& section = form.addSection(u"Start bridge"_s);
    section.addText(u"vorna server start"_s, Style::monospaced);
    section.addText(u"or"_s, Style::caption);
    section.addText(u"vorna services start"_s, Style::monospaced);
    section.addText(u"Bridge is the Python FastAPI process on port 43105 (not the legacy 43003 default)."_s,
                    Style::caption);
}

void BridgeTab::render() {
    m_dot->display(m_status.bridgeOnline, ColourRole::danger);
    m_dot->update();
    m_online->setText(m_status.bridgeOnline ? u"Online"_s : u"Offline"_s);
    m_caddy->setText(m_status.caddyDetail);
    m_postgres->setText(m_status.postgresDetail);
    m_account->setText(m_status.accountLine);
    m_form->layOutNow();
}

#include "moc_BridgeTab.cpp"
