#include "platform/AppInfo.h"
#include "support/DevelopmentDomain.h"
#include "ui/VersionLabels.h"
#include "ui/WebPage.h"
#include "ui/settings/Form.h"
#include "ui/settings/Tabs.h"

#include <QPushButton>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr std::pair<QLatin1StringView, QLatin1StringView> links[]{
    {"Open Console"_L1, "/dashboard"_L1},
    {"Open Agents"_L1, "/dashboard/agents"_L1},
    {"Download page"_L1, "/download"_L1},
};

}

QWidget* Tabs::about(const OpenUrl& openPage, const Colours& colours) {
    auto* const form = new Form{colours};
    form->addSection();
    form->addValue(u"App"_s, AppInfo::name);
    form->addValue(u"Version"_s, [] { return VersionLabels::label(); });
    form->addValue(u"Architecture"_s, AppInfo::architecture);

    form->addSection(u"Role"_s);
    form->addText(u"Native menu bar companion for developer monitoring, notifications, and deep system permissions. "
                  "Orchestration stays in the vorna CLI; agents live in ~/dev/agents."_s);

    form->addSection(u"Links"_s);
    for (const auto& [title, path] : links) {
        QObject::connect(&form->addButton(title), &QPushButton::clicked, form,
                         [openPage, page = path] { WebPage::open(DevelopmentDomain::dashboard() + page, openPage); });
    }
    return form;
}
