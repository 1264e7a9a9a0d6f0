#include "app/StatusModel.h"
#include "daypart/DaypartController.h"
#include "ui/kit/DotLabel.h"
#include "ui/settings/Form.h"
#include "ui/settings/Tabs.h"

#include <QPushButton>

using namespace FormMetrics;
using namespace Qt::StringLiterals;

namespace {

void addBridge(Form& form, StatusModel& status, const Colours& colours) {
    auto* const dot = new DotLabel{dotSize, colours};
    form.whenRendered([dot, &status] {
        dot->display(status.bridgeOnline, ColourRole::danger);
        dot->update();
    });
    form.addSection(u"Local bridge"_s);
    form.addCopyable(u"http://127.0.0.1:43105"_s, u"URL"_s);
    form.addValue(u"Status"_s, [&status] { return status.bridgeOnline ? u"Online"_s : u"Offline"_s; }, body, dot);
    form.addValue(u"Caddy"_s, [&status] { return status.caddyDetail.value(); }, captionMonospaced);
    form.addValue(u"Postgres"_s, [&status] { return status.postgresDetail.value(); }, captionMonospaced);
    QObject::connect(&form.addButton(u"Poll now"_s), &QPushButton::clicked, &status, &StatusModel::poll);
}

void addAccount(Form& form, StatusModel& status) {
    form.addSection(u"Account"_s);
    form.addValue(u"Desktop login"_s, [&status] { return status.accountLine.value(); }, caption);
    QObject::connect(&form.addButton(u"Sign in with Google Workspace"_s), &QPushButton::clicked, &status,
                     &StatusModel::signInFromDesktop);
    form.addText(u"After a successful login the web dashboard hides Download for Mac."_s, caption);
}

void addStart(Form& form) {
    form.addSection(u"Start bridge"_s);
    form.addCopyable(u"vorna server start"_s);
    form.addText(u"or"_s, caption);
    form.addCopyable(u"vorna services start"_s);
    form.addText(u"Bridge is the Python FastAPI process on port 43105 (not the legacy 43003 default)."_s, caption);
}

}

QWidget* Tabs::bridge(StatusModel& status, DaypartController& daypart, const Colours& colours) {
    auto* const form = new Form{colours};
    addBridge(*form, status, colours);
    addAccount(*form, status);
    addStart(*form);
    form->observe(status);
    form->observe(daypart);
    return form;
}
