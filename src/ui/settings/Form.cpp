#include "ui/settings/Form.h"

#include "ui/kit/Drawing.h"
#include "ui/kit/SelectableLabel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

using namespace FormMetrics;

Form::Form(const Colours& colours)
    : m_colours{colours}
    , m_sections{new QVBoxLayout{this}} {
    fitWidth();
    m_sections->setContentsMargins(pagePadding, pagePadding, pagePadding, pagePadding);
    m_sections->setSpacing(sectionSpacing);
    m_sections->addStretch();
}

void Form::addSection(const QString& heading) {
    auto* const section = new QVBoxLayout;
    m_sections->insertLayout(m_sections->count() - 1, section);
    section->setSpacing(headingSpacing);
    if (!heading.isEmpty()) {
        section->addWidget(new TextLabel{headline, m_colours, nullptr, heading});
    }
    auto* const card = new QVBoxLayout;
    section->addLayout(card);
    card->setContentsMargins(rowPadding, rowPaddingVertical, rowPadding, rowPaddingVertical);
    card->setSpacing(2 * rowPaddingVertical);
    m_cards.append(card);
}

void Form::addPair(const QString& label, TextLabel& value, QWidget* mark) {
    auto* const row = new QHBoxLayout;
    m_cards.constLast()->addLayout(row);
    row->setSpacing(mark == nullptr ? rowSpacing : dotSpacing);
    auto* const title = new TextLabel{body, m_colours, nullptr, label};
    title->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    title->setBuddy(&value);
    row->addWidget(title);
    if (mark != nullptr) {
        row->addStretch(1);
        row->addWidget(mark);
    }
    value.setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    row->addWidget(&value, mark == nullptr ? 1 : 0);
}

void Form::addValue(const QString& label, const Text& value, const TextStyle& style, QWidget* mark) {
    auto* const shown = new TextLabel{style, m_colours};
    addPair(label, *shown, mark);
    whenRendered([shown, value] { shown->display(value()); });
}

TextLabel& Form::addText(const QString& text, const TextStyle& style) {
    auto* const shown = new TextLabel{style, m_colours, nullptr, text};
    m_cards.constLast()->addWidget(shown);
    return *shown;
}

void Form::addCopyable(const QString& text, const QString& label) {
    auto* const shown = new SelectableLabel{monospaced, m_colours};
    shown->display(text);
    label.isEmpty() ? m_cards.constLast()->addWidget(shown) : addPair(label, *shown);
}

QPushButton& Form::addButton(const QString& title) {
    auto* const button = new QPushButton{title};
    button->setAutoDefault(true);
    addControl(*button);
    return *button;
}

void Form::addControl(QWidget& control) {
    m_cards.constLast()->addWidget(&control, 0, Qt::AlignLeading);
}

void Form::render() {
    for (const auto& show : m_renderings) {
        show();
    }
}

void Form::fitWidth() {
    setMaximumWidth(maximumFormWidth * fontMetrics().height());
}

void Form::changeEvent(QEvent* event) {
    View::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        fitWidth();
    }
}

void Form::paintEvent(QPaintEvent*) {
    QPainter painter{this};
    const auto outline = m_colours.of(ColourRole::border);
    for (const auto* const card : m_cards) {
        Drawing::fillRounded(painter, card->geometry(), cardRadius, m_colours.of(ColourRole::surface));
        Drawing::strokeRounded(painter, card->geometry(), cardRadius, outline);
        const auto rows = card->contentsRect();
        for (int index = 1; index < card->count(); ++index) {
            const auto* const row = card->itemAt(index);
            if (!row->isEmpty()) {
                painter.fillRect(rows.left(), row->geometry().top() - rowPaddingVertical, rows.width(), 1, outline);
            }
        }
    }
}
