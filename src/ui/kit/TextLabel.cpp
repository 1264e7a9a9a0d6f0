#include "ui/kit/TextLabel.h"

#include <QFontMetricsF>
#include <QHelpEvent>
#include <QPainter>
#include <QRegularExpression>
#include <QStyle>
#include <QTextDocument>
#include <QToolTip>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int maxHint = 10'000; // points
constexpr int maxWordHint = 20; // average characters
constexpr qsizetype maxTipLength = 2000;
constexpr int slack = 1; // points: a line is broken for want of a fraction that its advance does not count

int roundedUp(qreal length) {
    return static_cast<int>(std::ceil(std::min<qreal>(length, maxHint)));
}

qreal widest(const QStringList& texts, const QFont& font) {
    const QFontMetricsF metrics{font};
    qreal width = 0;
    for (const QString& text : texts) {
        width = std::max(width, metrics.horizontalAdvance(text));
    }
    return width;
}

/// The text as a tool tip: plain, in lines that fit on a screen, with places to break a line inside words that are too
/// long for one; of a very long text only its start.
QString tipOf(const QString& text) {
    static const QRegularExpression longWord{uR"((\S{40})(?=[^\s\p{M}]))"_s};
    const QString tip = TextFitting::truncated(text, maxTipLength).replace(longWord, u"\\1\u200B"_s);
    return Qt::convertFromPlainText(text.size() > maxTipLength ? tip + u'…' : tip, Qt::WhiteSpaceNormal);
}

}

TextLabel::TextLabel(const TextStyle& style, const Colours& colours, QWidget* parent, const QString& text)
    : QLabel{parent}
    , m_style{style}
    , m_colours{colours}
    , m_tint{style.colour} {
    setTextFormat(Qt::PlainText);
    QSizePolicy policy{style.size > 0 ? QSizePolicy::Ignored : QSizePolicy::Preferred,
                       style.lines > 1 ? QSizePolicy::Preferred : QSizePolicy::Fixed};
    policy.setHeightForWidth(style.lines > 1);
    setSizePolicy(policy);
    m_layout.setCacheEnabled(true);
    useFont();
    display(text);
}

void TextLabel::useFont() {
    m_font = m_style.font(font());
    const QFontMetricsF metrics{m_font};
    m_lineHeight = static_cast<int>(std::ceil(metrics.ascent() + metrics.descent()));
    m_layout.setFont(m_font);
    m_naturalWidth = -1;
    m_shown = {};
}

void TextLabel::display(const QString& text) {
    if (text == wholeText()) {
        return;
    }
    const int before = m_shown.width >= 0 ? heightForWidth(width()) : -1;
    m_prepared = TextFitting::prepared(text);
    m_naturalWidth = -1;
    m_shown = {};
    setAccessibleName(text);
    const bool asksForWidth = sizePolicy().horizontalPolicy() != QSizePolicy::Ignored;
    if (asksForWidth || (m_style.lines > 1 && heightForWidth(width()) != before)) {
        updateGeometry();
    }
    update();
}

void TextLabel::setRole(ColourRole role) {
    if (role != m_tint.role) {
        m_tint.role = role;
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
        const QStringList lines = m_style.lines > 1 ? m_prepared.text.split(QChar::LineSeparator)
                                                    : QStringList{TextFitting::firstLine(m_prepared)};
        m_naturalWidth = roundedUp(widest(lines, m_font)) + (m_style.lines > 1 ? slack : 0);
    }
    return m_naturalWidth;
}

QSize TextLabel::sizeHint() const {
    return {naturalWidth(), m_lineHeight};
}

QSize TextLabel::minimumSizeHint() const {
    if (sizePolicy().horizontalPolicy() == QSizePolicy::Ignored) {
        return {0, m_lineHeight};
    }
    const qreal limit = maxWordHint * QFontMetricsF{m_font}.averageCharWidth();
    const qreal word = widest(m_prepared.text.simplified().split(u' '), m_font);
    return {roundedUp(std::min(word, limit)) + slack, m_lineHeight};
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
        // Not by the property of that name, which would be read out beside the text itself.
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tipOf(wholeText()), this);
    } else {
        event->ignore();
    }
    return true;
}

void TextLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        useFont();
        updateGeometry();
        update();
    }
}

void TextLabel::prepare(int width) const {
    if (m_shown.width == width) {
        return;
    }
    const qreal natural = std::max(1, naturalWidth());
    const qreal scale = std::clamp(width / natural, m_style.minimumScale, 1.0);
    // Not divided where the text decides: the quotient may be a hair too small for it.
    const qreal room = scale > m_style.minimumScale ? std::max<qreal>(width, natural) : width / scale;
    const bool isOneLine = !m_prepared.hasMore && !m_prepared.text.contains(QChar::LineSeparator);
    const auto [text, isCut] = isOneLine && natural <= room ? TextFitting::Fitted{m_prepared.text.trimmed()}
                                                            : TextFitting::fit(m_prepared, m_font, room, m_style.lines);
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

int TextLabel::top() const {
    return (height() - heightForWidth(width())) / 2;
}

int TextLabel::placeAt(QPointF point) const {
    prepare(width());
    const int last = std::max(0, m_layout.lineCount() - 1);
    const int index = std::clamp(static_cast<int>(std::floor((point.y() - top()) / m_lineHeight)), 0, last);
    const QTextLine line = m_layout.lineAt(index);
    return line.isValid() ? line.xToCursor(point.x() / m_shown.scale) : 0;
}

void TextLabel::paintEvent(QPaintEvent* /*event*/) {
    prepare(width());
    QPainter painter{this};
    painter.setPen(m_colours.of(m_tint));
    const qreal baseline = QFontMetricsF{m_font}.ascent();
    painter.translate(0, top() + baseline);
    painter.scale(m_shown.scale, m_shown.scale);
    m_layout.draw(&painter, {0, -baseline}, highlights());
}

#include "moc_TextLabel.cpp"
