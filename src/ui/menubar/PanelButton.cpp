#include "ui/menubar/PanelButton.h"

#include "ui/menubar/PanelMetrics.h"

#include <QKeyEvent>
#include <QPainter>

#include <utility>

using namespace Qt::StringLiterals;

PanelButton::PanelButton(const QString& title, QWidget* parent)
    : QPushButton{parent} {
    // An ampersand in a button's text would make the next letter its shortcut.
    setText(QString{title}.replace(u"&"_s, u"&&"_s));
    setAccessibleName(title);
    setFocusPolicy(Qt::StrongFocus);
    setAutoDefault(false);
    setAttribute(Qt::WA_NoSystemBackground);
}

void PanelButton::setAvailable(bool isAvailable) {
    if (isAvailable == isEnabled()) {
        return;
    }
    if (!isAvailable && hasFocus()) {
        m_lostFocusWithUse = m_hasKeyboardFocus;
        clearFocus();
    }
    setEnabled(isAvailable);
    if (isAvailable && std::exchange(m_lostFocusWithUse, false) && isActiveWindow() &&
        window()->focusWidget() == nullptr) {
        setFocus(Qt::TabFocusReason);
    }
}

QSize PanelButton::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

bool PanelButton::showsFocusRing() const {
    return m_hasKeyboardFocus && hasFocus();
}

void PanelButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter{this};
    if (!isEnabled()) {
        painter.setOpacity(PanelMetrics::Button::disabledOpacity);
    }
    draw(painter);
}

void PanelButton::keyPressEvent(QKeyEvent* event) {
    m_hasKeyboardFocus = true;
    update();
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QPushButton::keyPressEvent(event);
    } else if (!event->isAutoRepeat()) {
        click();
    }
}

void PanelButton::focusInEvent(QFocusEvent* event) {
    const bool isByKeyboard = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ||
                              event->reason() == Qt::ShortcutFocusReason;
    const bool isByMouse = event->reason() == Qt::MouseFocusReason;
    m_hasKeyboardFocus = isByKeyboard || (m_hasKeyboardFocus && !isByMouse);
    QPushButton::focusInEvent(event);
}

void PanelButton::focusOutEvent(QFocusEvent* event) {
    QPushButton::focusOutEvent(event);
    update();
}

#include "moc_PanelButton.cpp"
