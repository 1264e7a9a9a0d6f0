#include "ui/menubar/PanelSection.h"

#include "support/ObservableObject.h"
#include "ui/kit/Button.h"
#include "ui/kit/TextLabel.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include <utility>

PanelSection::PanelSection(const DaypartController& daypart, const QMargins& padding, int spacing,
                           std::optional<ColourRole> fill)
    : m_colours{daypart}
    , m_fill{fill}
    , m_column{new QVBoxLayout{this}} {
    m_column->setContentsMargins(padding);
    m_column->setSpacing(spacing);
}

QHBoxLayout& PanelSection::addRow(int spacing) {
    auto* row = new QHBoxLayout;
    row->setSpacing(spacing);
    m_column->addLayout(row);
    return *row;
}

TextLabel& PanelSection::addText(const TextStyle& style, const QString& text) {
    auto* label = new TextLabel{style, m_colours, this, text};
    m_column->addWidget(label);
    return *label;
}

Button& PanelSection::addButton(const QString& title, const QString& symbolName, const ButtonStyle& style,
                                std::function<void()> action) {
    auto* button = new Button{title, symbolName, style, m_colours, this};
    connect(button, &QPushButton::clicked, this, std::move(action));
    m_column->addWidget(button);
    return *button;
}

void PanelSection::follow(std::initializer_list<ObservableObject*> models, std::function<void()> show) {
    m_show = std::move(show);
    for (auto* model : models) {
        observe(*model);
    }
}

void PanelSection::render() {
    m_show();
}

void PanelSection::paintEvent(QPaintEvent* /*event*/) {
    if (m_fill) {
        QPainter{this}.fillRect(rect(), m_colours.of(*m_fill));
    }
}

#include "moc_PanelSection.cpp"
