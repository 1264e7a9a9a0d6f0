#include "ui/settings/BridgeTab.h"

#include "app/StatusModel.h"
#include "daypart/DaypartController.h"
#include "ui/kit/DotLabel.h"
#include "ui/kit/TextLabel.h"

#include <QPushButton>

using namespace FormMetrics;
using namespace Qt::StringLiterals;

BridgeTab::BridgeTab(StatusModel& status, DaypartController& daypart, const Colours& colours, QWidget* parent)
    : Form{colours, parent}
    , m_status{status} {
    addBridge(colours);
    addAccount();
    addStart();
    observe(m_status);
    observe(daypart);
}

void BridgeTab::addBridge(const Colours& colours) {
    addSection(u"Local bridge"_s);
    addCopyableValue(u"URL"_s, u"http://127.0.0.1:43105"_s);
    m_dot = new DotLabel{dotSize, colours};
    m_online = &addValue(u"Status"_s, body, m_dot);
    m_caddy = &addValue(u"Caddy"_s, captionMonospaced);
    m_postgres = &addValue(u"Postgres"_s, captionMonospaced);
    connect(&addButton(u"Poll now"_s), &QPushButton::clicked, &m_status, &StatusModel::poll);
}

void BridgeTab::addAccount() {
    addSection(u"Account"_s);
    m_account = &addValue(u"Desktop login"_s, caption);
    connect(&addButton(u"Sign in with Google Workspace"_s), &QPushButton::clicked, &m_status,
            &StatusModel::signInFromDesktop);
    addText(u"After a successful login the web dashboard hides Download for Mac."_s, caption);
}

void BridgeTab::addStart() {
    addSection(u"Start bridge"_s);
    addCopyableText(u"vorna server start"_s);
    addText(u"or"_s, caption);
    addCopyableText(u"vorna services start"_s);
    addText(u"Bridge is the Python FastAPI process on port 43105 (not the legacy 43003 default)."_s, caption);
}

void BridgeTab::render() {
    m_dot->display(m_status.bridgeOnline, ColourRole::danger);
    m_dot->update();
    m_online->display(m_status.bridgeOnline ? u"Online"_s : u"Offline"_s);
    m_caddy->display(m_status.caddyDetail);
    m_postgres->display(m_status.postgresDetail);
    m_account->display(m_status.accountLine);
}

#include "moc_BridgeTab.cpp"
