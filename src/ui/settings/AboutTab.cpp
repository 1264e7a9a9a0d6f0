#include "ui/settings/AboutTab.h"

#include "support/DevelopmentDomain.h"
#include "ui/VersionLabels.h"
#include "ui/WebPage.h"
#include "ui/settings/FormButton.h"
#include "ui/settings/FormSection.h"
#include "ui/settings/GroupedForm.h"

#include <QVBoxLayout>

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

AboutTab::AboutTab(OpenPage openPage, QWidget* parent)
    : View{parent}
    , m_openPage{std::move(openPage)} {
    auto* const form = new GroupedForm{u"About"_s, this};
    auto& program = form->addSection();
    program.addValue(u"App"_s, u"vorna for Mac"_s);
    m_version = &program.addValue(u"Version"_s, QString{});
    program.addValue(u"Architecture"_s, u"arm64 · Apple Silicon"_s);

    form->addSection(u"Role"_s).addText(
        u"Native menu bar companion for developer monitoring, notifications, and deep system permissions. "
        "Orchestration stays in the vorna CLI; agents live in ~/dev/agents."_s);
    addLinks(*form);

    auto* const layout = new QVBoxLayout{this};
    layout->setContentsMargins({});
    layout->addWidget(form);
}

void AboutTab::addLinks(GroupedForm& form) {
    auto& section = form.addSection(u"Links"_s);
    for (const auto& link : links) {
        connect(&section.addButton(link.title), &QPushButton::clicked, this,
                [this, path = link.path] { WebPage::open(DevelopmentDomain::dashboard() + path, m_openPage); });
    }
}

void AboutTab::render() {
    m_version->setText(VersionLabels::label());
}

#include "moc_AboutTab.cpp"
