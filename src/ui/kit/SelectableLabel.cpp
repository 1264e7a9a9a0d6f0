#include "ui/kit/SelectableLabel.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QTextCharFormat>

#include <algorithm>

SelectableLabel::SelectableLabel(const TextStyle& style, const Colours& colours, QWidget* parent)
    : TextLabel{style, colours, parent} {
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::IBeamCursor);
}

void SelectableLabel::display(const QString& text, const QString& command) {
    m_command = command.isEmpty() ? text : command;
    if (text != wholeText()) {
        select(0, 0);
        TextLabel::display(text);
    }
}

QString SelectableLabel::selectedText() const {
    const QString shown = shownText();
    const auto [first, last] = std::minmax(m_from, m_to);
    const auto start = TextFitting::placeInWhole(wholeText(), shown, first);
    return wholeText().mid(start, TextFitting::placeInWhole(wholeText(), shown, last) - start).trimmed();
}

QList<QTextLayout::FormatRange> SelectableLabel::highlights() const {
    const auto [first, last] = std::minmax(m_from, m_to);
    if (first == last) {
        return {};
    }
    QTextCharFormat format;
    format.setBackground(colours().of(ColourRole::accent));
    format.setForeground(colours().of(ColourRole::background));
    return {{first, last - first, format}};
}

void SelectableLabel::select(int from, int to) {
    m_from = from;
    m_to = to;
    update();
}

void SelectableLabel::selectCommand() {
    // Where it is broken into lines it is not found: then all of the text is the next best.
    const QString shown = shownText();
    const auto start = static_cast<int>(shown.indexOf(m_command));
    select(std::max(0, start), start < 0 ? static_cast<int>(shown.size()) : start + static_cast<int>(m_command.size()));
}

void SelectableLabel::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        const int place = placeAt(event->position());
        select(event->modifiers().testFlag(Qt::ShiftModifier) ? m_from : place, place);
    }
}

void SelectableLabel::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons().testFlag(Qt::LeftButton)) {
        select(m_from, placeAt(event->position()));
    }
}

void SelectableLabel::mouseReleaseEvent(QMouseEvent* /*event*/) {
    auto* clipboard = QGuiApplication::clipboard();
    if (clipboard->supportsSelection() && m_from != m_to) {
        clipboard->setText(selectedText(), QClipboard::Selection);
    }
}

void SelectableLabel::mouseDoubleClickEvent(QMouseEvent* /*event*/) {
    selectCommand();
}

void SelectableLabel::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::SelectAll)) {
        select(0, static_cast<int>(shownText().size()));
    } else if (event->matches(QKeySequence::Copy) && m_from != m_to) {
        QGuiApplication::clipboard()->setText(selectedText());
    } else {
        TextLabel::keyPressEvent(event);
    }
}

void SelectableLabel::focusInEvent(QFocusEvent* event) {
    if (event->reason() != Qt::MouseFocusReason && event->reason() != Qt::ActiveWindowFocusReason) {
        selectCommand();
    }
}

void SelectableLabel::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::ActiveWindowFocusReason) {
        select(0, 0);
    }
}

void SelectableLabel::resizeEvent(QResizeEvent* event) {
    TextLabel::resizeEvent(event);
    select(0, 0);
}

#include "moc_SelectableLabel.cpp"
