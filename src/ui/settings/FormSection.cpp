#include "ui/settings/FormSection.h"

#include "ui/settings/FormButton.h"
#include "ui/settings/FormGroup.h"
#include "ui/settings/FormMetrics.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace FormMetrics;

namespace {

constexpr int markSpacing = 7;

QHBoxLayout& newRowLayout(QWidget& row) {
    auto* const layout = new QHBoxLayout{&row};
    layout->setContentsMargins(rowPadding, rowPaddingVertical, rowPadding, rowPaddingVertical);
    layout->setSpacing(rowSpacing);
    return *layout;
}

}

FormSection::FormSection(const QString& heading, QWidget* parent)
    : QWidget{parent} {
    auto* const layout = new QVBoxLayout{this};
    layout->setContentsMargins({});
    layout->setSpacing(headingSpacing);
    if (!heading.isEmpty()) {
        auto* const text = new FormText{heading, FormText::Style::headline, this};
        text->setContentsMargins({});
        layout->addWidget(text);
    }
    m_group = new FormGroup{this};
    layout->addWidget(m_group);
    setAccessibleName(heading);
}

void FormSection::addRow(QWidget& row) {
    m_group->addRow(row);
}

FormText& FormSection::addValue(const QString& label, FormText& value, QWidget* mark) {
    auto* const row = new QWidget{m_group};
    auto& layout = newRowLayout(*row);
    auto* const title = new FormText{label, FormText::Style::body, row};
    title->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    title->setBuddy(&value);
    layout.addWidget(title);

    value.setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    if (mark != nullptr) {
        auto* const pair = new QHBoxLayout;
        pair->setSpacing(markSpacing);
        pair->addStretch();
        pair->addWidget(mark, 0, Qt::AlignVCenter);
        pair->addWidget(&value);
        layout.addLayout(pair, 1);
    } else {
        layout.addWidget(&value, 1);
    }
    addRow(*row);
    return value;
}

FormText& FormSection::addValue(const QString& label, const QString& value, FormText::Style style) {
    return addValue(label, *new FormText{value, style, this});
}

FormText& FormSection::addText(const QString& text, FormText::Style style) {
    auto* const row = new QWidget{m_group};
    auto* const shown = new FormText{text, style, row};
    newRowLayout(*row).addWidget(shown);
    addRow(*row);
    return *shown;
}

FormButton& FormSection::addButton(const QString& title) {
    auto* const button = new FormButton{title, m_group};
    addRow(*button);
    return *button;
}

#include "moc_FormSection.cpp"
