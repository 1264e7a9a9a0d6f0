#include "ui/settings/FormText.h"

#include "ui/kit/TextFitting.h"
#include "ui/kit/WholeTextTip.h"
#include "ui/settings/FormColours.h"
#include "ui/settings/FormMetrics.h"

#include <QFontDatabase>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

struct Traits final {
    qreal scale;
    QFont::Weight weight;
    bool isMonospaced;
    bool isSecondary;
};

constexpr std::array traitsOfStyles{
    Traits{1, QFont::Normal, false, false},
    Traits{1, QFont::DemiBold, false, false},
    Traits{1, QFont::Normal, true, false},
    Traits{FormMetrics::captionScale, QFont::Normal, false, true},
    Traits{FormMetrics::captionScale, QFont::Normal, true, true},
};

constexpr int leastCharacters = 8;
constexpr int unboundedWidth = 100'000;

const Traits& traitsOf(FormText::Style style) {
    return traitsOfStyles.at(static_cast<std::size_t>(style));
}

void scale(QFont& font, qreal factor) {
    if (font.pixelSize() > 0) {
        font.setPixelSize(std::max(1, qRound(font.pixelSize() * factor)));
    } else {
        font.setPointSizeF(font.pointSizeF() * factor);
    }
}

}

FormText::FormText(const QString& text, Style style, QWidget* parent)
    : QLabel{text, parent}
    , m_style{style} {
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    setWordWrap(true);
}

QFont FormText::fontOf(Style style, QFont body) {
    const auto& traits = traitsOf(style);
    if (traits.isMonospaced) {
        body.setFamilies({QFontDatabase::systemFont(QFontDatabase::FixedFont).family()});
        body.setStyleHint(QFont::Monospace);
    }
    body.setWeight(traits.weight);
    scale(body, traits.scale);
    return body;
}

QColor FormText::shownColour() const {
    return traitsOf(m_style).isSecondary ? FormColours::secondaryText(palette()) : FormColours::text(palette());
}

FormText::Lines FormText::linesFor(int width) const {
    const auto [shown, isCut] = TextFitting::fit(TextFitting::prepared(text()), shownFont(), width, maximumLines);
    return {shown.split(QChar::LineSeparator), isCut};
}

QSize FormText::sizeHint() const {
    const auto lines = linesFor(unboundedWidth).texts;
    const QFontMetricsF metrics{shownFont()};
    qreal widest = 0;
    for (const auto& line : lines) {
        widest = std::max(widest, metrics.horizontalAdvance(line));
    }
    const auto height = std::ceil(metrics.height()) * static_cast<qreal>(std::max<qsizetype>(1, lines.size()));
    return QSizeF{std::ceil(widest) + 1, height}.toSize();
}

QSize FormText::minimumSizeHint() const {
    const QFontMetrics metrics{shownFont()};
    return {std::min(sizeHint().width(), leastCharacters * metrics.averageCharWidth()), metrics.height()};
}

int FormText::heightForWidth(int width) const {
    const auto lines = std::max<qsizetype>(1, linesFor(width).texts.size());
    return static_cast<int>(lines) * static_cast<int>(std::ceil(QFontMetricsF{shownFont()}.height()));
}

bool FormText::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && linesFor(width()).isCut) {
        WholeTextTip::show(*static_cast<QHelpEvent*>(event), text(), *this);
        return true;
    }
    return QLabel::event(event);
}

void FormText::paintEvent(QPaintEvent*) {
    QPainter painter{this};
    painter.setFont(shownFont());
    painter.setPen(shownColour());
    const auto lines = linesFor(width()).texts;
    const auto lineHeight = static_cast<int>(std::ceil(QFontMetricsF{shownFont()}.height()));
    const auto horizontal = QStyle::visualAlignment(layoutDirection(), alignment()) & Qt::AlignHorizontal_Mask;
    QRect line{0, (height() - lineHeight * static_cast<int>(lines.size())) / 2, width(), lineHeight};
    for (const auto& text : lines) {
        painter.drawText(line, static_cast<int>(horizontal | Qt::AlignVCenter), text);
        line.translate(0, lineHeight);
    }
}

#include "moc_FormText.cpp"
