#include "ui/settings/GroupedForm.h"

#include "ui/settings/FormMetrics.h"
#include "ui/settings/FormSection.h"
#include "ui/settings/ScrollPage.h"

#include <QVBoxLayout>

using namespace FormMetrics;

GroupedForm::GroupedForm(const QString& name, QWidget* parent)
    : QWidget{parent}
    , m_page{new ScrollPage{name, this}} {
    auto* const layout = new QVBoxLayout{this};
    layout->setContentsMargins({});
    layout->addWidget(m_page);

    auto& content = m_page->content();
    content.setContentsMargins(pagePadding, pagePadding, pagePadding, pagePadding);
    content.setSpacing(sectionSpacing);
    content.addStretch();
    m_page->widget()->setMaximumWidth(maximumFormWidth);
}

FormSection& GroupedForm::addSection(const QString& heading) {
    auto* const section = new FormSection{heading, m_page->widget()};
    auto& content = m_page->content();
    content.insertWidget(content.count() - 1, section);
    return *section;
}

void GroupedForm::layOutNow() {
    m_page->layOutNow();
}

#include "moc_GroupedForm.cpp"
