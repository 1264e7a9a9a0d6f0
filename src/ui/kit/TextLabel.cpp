#include "ui/kit/TextLabel.h"

#include "ui/kit/WholeTextTip.h"

#include <QFontMetricsF>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int widestHint = 10'000; // points

}

TextLabel::TextLabel(const TextStyle& style, QWidget* parent)
    : QLabel{parent}
    , m_style{style}
    , m_font{style.font()} {
    const QFontMetricsF metrics{m_font};
    m_lineHeight = static_cast<int>(std::ceil(metrics.ascent() + metrics.descent()));
    setTextFormat(Qt::PlainText);
    QSizePolicy policy{QSizePolicy::Ignored, style.lines > 1 ? QSizePolicy::Preferred : QSizePolicy::Fixed};
    policy.setHeightForWidth(style.lines > 1);
    setSizePolicy(policy);
    m_layout.setCacheEnabled(true);
    m_layout.setFont(m_font);
}

void TextLabel::display(const QString& text) {
    if (text == m_text) {
        return;
    }
    const int before = m_shown.width >= 0 ? heightForWidth(width()) : -1;
    m_text = text;
    m_beginning = TextFitting::beginning(text);
    m_naturalWidth = -1;
    m_shown = {};
    setAccessibleName(text);
    if (m_style.lines > 1 && heightForWidth(width()) != before) {
        updateGeometry();
    }
    update();
}

void TextLabel::setColour(const QColor& colour) {
    if (colour != m_colour) {
        m_colour = colour;
        update();
    }
}

QString TextLabel::shownText() const {
    prepare(width());
    return m_shown.text;
}

bool TextLabel::isCut() const {
    prepare(width());
    return m_shown.isCut;
}

qreal TextLabel::shownScale() const {
    prepare(width());
    return m_shown.scale;
}

int TextLabel::naturalWidth() const {
    if (m_naturalWidth < 0) {
        const qreal width = std::ceil(QFontMetricsF{m_font}.horizontalAdvance(TextFitting::firstLine(m_beginning)));
        m_naturalWidth = static_cast<int>(std::min<qreal>(width, widestHint));
    }
    return m_naturalWidth;
}

QSize TextLabel::sizeHint() const {
    return {naturalWidth(), m_lineHeight};
}

QSize TextLabel::minimumSizeHint() const {
    return {0, m_lineHeight};
}

int TextLabel::heightForWidth(int width) const {
    prepare(width);
    return m_lineHeight * static_cast<int>(1 + m_shown.text.count(QChar::LineSeparator));
}

bool TextLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QLabel::event(event);
    }
    if (isCut()) {
        WholeTextTip::show(*static_cast<QHelpEvent*>(event), m_text, *this);
    } else {
        event->ignore();
    }
    return true;
}

void TextLabel::prepare(int width) const {
    if (m_shown.width == width) {
        return;
    }
    const qreal natural = std::max(1, naturalWidth());
    const qreal scale = std::clamp(width / natural, m_style.minimumScale, 1.0);
    // Not divided where the text decides: the quotient may be a hair too small for it.
    const qreal room = scale > m_style.minimumScale ? std::max<qreal>(width, natural) : width / scale;
    const auto [text, isCut] = TextFitting::fit(m_beginning, m_font, room, m_style.lines);
    m_shown = {width, text, isCut, scale};
    layOut();
}

void TextLabel::layOut() const {
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setAlignment(QStyle::visualAlignment(layoutDirection(), alignment() & Qt::AlignHorizontal_Mask) |
                        Qt::AlignAbsolute);
    m_layout.setTextOption(option);
    m_layout.setText(m_shown.text);
    const qreal ascent = QFontMetricsF{m_font}.ascent();
    m_layout.beginLayout();
    for (int i = 0;; ++i) {
        QTextLine line = m_layout.createLine();
        if (!line.isValid()) {
            break;
        }
        line.setLineWidth(m_shown.width / m_shown.scale);
        line.setPosition({0, i * m_lineHeight + ascent - line.ascent()});
    }
    m_layout.endLayout();
}

void TextLabel::paintEvent(QPaintEvent* /*event*/) {
    prepare(width());
    QPainter painter{this};
    painter.setPen(m_colour);
    const qreal baseline = QFontMetricsF{m_font}.ascent();
    const int top = (height() - heightForWidth(width())) / 2;
    painter.translate(0, top + baseline);
    painter.scale(m_shown.scale, m_shown.scale);
    m_layout.draw(&painter, {0, -baseline});
}

#include "moc_TextLabel.cpp"
