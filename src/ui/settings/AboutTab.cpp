#include "ui/settings/AboutTab.h"

#include "platform/AppInfo.h"
#include "support/DevelopmentDomain.h"
#include "ui/VersionLabels.h"
#include "ui/WebPage.h"
#include "ui/kit/TextLabel.h"

#include <QPushButton>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

struct Link final {
    QLatin1StringView title;
    QLatin1StringView path;
};

constexpr Link links[]{
    {"Open Console"_L1, "/dashboard"_L1},
    {"Open Agents"_L1, "/dashboard/agents"_L1},
    {"Download page"_L1, "/download"_L1},
};

}

AboutTab::AboutTab(OpenPage openPage, const Colours& colours, QWidget* parent)
    : Form{colours, parent}
    , m_openPage{std::move(openPage)} {
    addSection();
    addValue(u"App"_s).display(AppInfo::name());
    m_version = &addValue(u"Version"_s);
    addValue(u"Architecture"_s).display(AppInfo::architecture());

    addSection(u"Role"_s);
    addText(u"Native menu bar companion for developer monitoring, notifications, and deep system permissions. "
            "Orchestration stays in the vorna CLI; agents live in ~/dev/agents."_s);

    addSection(u"Links"_s);
    for (const auto& link : links) {
        connect(&addButton(link.title), &QPushButton::clicked, this,
                [this, path = link.path] { WebPage::open(DevelopmentDomain::dashboard() + path, m_openPage); });
    }
}

void AboutTab::render() {
    m_version->display(VersionLabels::label());
}

#include "moc_AboutTab.cpp"
