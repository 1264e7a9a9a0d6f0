#include "ui/kit/Button.h"

#include "platform/Symbol.h"
#include "ui/kit/Drawing.h"

#include <QFontMetricsF>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;
using Arrangement = ButtonStyle::Arrangement;

namespace {

bool isByKeyboard(Qt::FocusReason reason) {
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
}

/// The key's event, with Space in place of Return and Enter: to the toolkit these are no keys that press a button.
QKeyEvent asSpace(const QKeyEvent& event) {
    const bool isReturn = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    return {event.type(), isReturn ? Qt::Key_Space : event.key(), event.modifiers(), event.text(),
            event.isAutoRepeat()};
}

}

Button::Button(const QString& title, const QString& symbolName, const ButtonStyle& style, const Colours& colours,
               QWidget* parent)
    : QPushButton{parent}
    , m_style{style}
    , m_colours{colours}
    , m_symbolName{symbolName} {
    // An ampersand in a button's text would make the next letter its shortcut.
    setText(QString{title}.replace(u"&"_s, u"&&"_s));
    setAccessibleName(title);
    setFocusPolicy(Qt::StrongFocus);
    setAutoDefault(false);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_Hover, style.underlinesWhenHovered);
    setSizePolicy(style.fill ? QSizePolicy::Ignored : QSizePolicy::Fixed, QSizePolicy::Fixed);
    useFont();
}

void Button::useFont() {
    m_font = m_style.text.font(font());
    const QFontMetricsF metrics{m_font};
    m_titleSize = {static_cast<int>(std::ceil(metrics.horizontalAdvance(accessibleName()))),
                   static_cast<int>(std::ceil(metrics.ascent() + metrics.descent()))};
}

void Button::setAvailable(bool isAvailable) {
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

QSize Button::labelSize() const {
    if (m_symbolName.isEmpty()) {
        return m_titleSize;
    }
    return m_style.arrangement == Arrangement::stacked
               ? QSize{std::max(symbolSize, m_titleSize.width()),
                       symbolSize + m_style.symbolSpacing + m_titleSize.height()}
               : QSize{symbolSize + m_style.symbolSpacing + m_titleSize.width(),
                       std::max(symbolSize, m_titleSize.height())};
}

QSize Button::sizeHint() const {
    return labelSize() + 2 * QSize{m_style.horizontalPadding, m_style.verticalPadding};
}

QSize Button::minimumSizeHint() const {
    const QSize hint = sizeHint();
    return {look().fill ? 0 : hint.width(), hint.height()};
}

void Button::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter{this};
    const ButtonStyle& style = look();
    painter.setOpacity((isEnabled() ? 1 : disabledOpacity) * (isDown() ? style.pressedOpacity : 1));
    if (const auto& fill = isDown() && style.pressedFill ? style.pressedFill : style.fill) {
        Drawing::fillRounded(painter, rect(), style.cornerRadius, m_colours.of(*fill));
    }
    if (style.outline) {
        Drawing::strokeRounded(painter, rect(), style.cornerRadius, m_colours.of(*style.outline));
    }
    drawLabel(painter);
    drawFocusRing(painter);
}

void Button::drawLabel(QPainter& painter) {
    const ButtonStyle& style = look();
    const QColor colour = m_colours.of(style.text.colour);
    const QRectF room = QRectF{rect()}.adjusted(style.horizontalPadding, 0, -style.horizontalPadding, 0);
    const qreal spare = std::max(0.0, room.width() - labelSize().width());
    const qreal left = room.left() + (style.arrangement == Arrangement::centred ? std::floor(spare / 2) : 0);
    QRectF title{left, room.top(), room.right() - left, room.height()};
    int alignment = Qt::AlignLeft | Qt::AlignVCenter;
    if (style.arrangement == Arrangement::stacked) {
        const QPointF symbol{std::floor((room.width() - symbolSize) / 2), qreal(style.verticalPadding)};
        drawSymbol(painter, symbol, colour);
        title = {room.left(), symbol.y() + symbolSize + style.symbolSpacing, room.width(), qreal(m_titleSize.height())};
        alignment = Qt::AlignCenter;
    } else if (!m_symbolName.isEmpty()) {
        drawSymbol(painter, {left, std::floor((room.height() - symbolSize) / 2)}, colour);
        title.setLeft(left + symbolSize + style.symbolSpacing);
    } else if (style.arrangement == Arrangement::centred) {
        title = room;
        alignment = Qt::AlignCenter;
    }
    QFont font = m_font;
    font.setUnderline(style.underlinesWhenHovered && (underMouse() || isDown()));
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(title, alignment | Qt::TextSingleLine, accessibleName());
}

void Button::drawSymbol(QPainter& painter, QPointF place, const QColor& colour) {
    const QRectF square = Drawing::snapped(painter, {place, QSizeF{symbolSize, symbolSize}});
    if (const auto wanted = std::tuple{square.width(), Drawing::scale(painter), colour.rgb()}; wanted != m_symbolLook) {
        const bool isBold = m_style.text.weight >= QFont::DemiBold;
        m_symbol = Symbol::pixmap(m_symbolName, square.width(), colour, Drawing::scale(painter),
                                  isBold ? Symbol::Weight::semibold : Symbol::Weight::regular, Symbol::Fit::height);
        m_symbolLook = wanted;
    }
    const qreal overhang = (m_symbol.deviceIndependentSize().width() - square.width()) / 2;
    painter.drawPixmap(square.topLeft() - QPointF{overhang, 0}, m_symbol);
}

void Button::drawFocusRing(QPainter& painter) const {
    if (!m_hasKeyboardFocus || !hasFocus()) {
        return;
    }
    const ButtonStyle& style = look();
    const int inset = style.focusRingInset;
    Drawing::strokeRounded(painter, rect().adjusted(inset, inset, -inset, -inset), style.cornerRadius - inset,
                           m_colours.of(style.focusRing), focusRingWidth);
}

void Button::changeEvent(QEvent* event) {
    QPushButton::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        useFont();
        updateGeometry();
    }
}

void Button::keyPressEvent(QKeyEvent* event) {
    m_hasKeyboardFocus = true;
    update();
    QKeyEvent pressed = asSpace(*event);
    QPushButton::keyPressEvent(&pressed);
    event->setAccepted(pressed.isAccepted());
}

void Button::keyReleaseEvent(QKeyEvent* event) {
    QKeyEvent released = asSpace(*event);
    QPushButton::keyReleaseEvent(&released);
    event->setAccepted(released.isAccepted());
}

void Button::focusInEvent(QFocusEvent* event) {
    m_hasKeyboardFocus =
        isByKeyboard(event->reason()) || (m_hasKeyboardFocus && event->reason() != Qt::MouseFocusReason);
    QPushButton::focusInEvent(event);
}

#include "moc_Button.cpp"
