#include "ui/kit/TextFitting.h"

#include <QFontMetricsF>
#include <QStringList>
#include <QTextLayout>

using namespace Qt::StringLiterals;

namespace {

// Three lines of the panel in its smallest letters hold some 500.
constexpr qsizetype maxPreparedLength = 2000;
constexpr QChar ellipsis{u'…'};
constexpr QChar separator{u'·'};

/// The lines of the text that are full, up to `count`; what follows them is left in `rest`.
QStringList takeLines(QString& rest, const QFont& font, qreal width, int count) {
    QStringList lines;
    QTextLayout layout{rest, font};
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    qsizetype end = 0;
    while (lines.size() < count) {
        QTextLine line = layout.createLine();
        if (!line.isValid()) {
            break;
        }
        line.setLineWidth(width);
        lines += rest.mid(line.textStart(), line.textLength()).remove(QChar::LineSeparator).trimmed();
        end = line.textStart() + line.textLength();
    }
    layout.endLayout();
    rest.remove(0, end);
    return lines;
}

QString withEllipsis(const QString& text) {
    QString kept = text.trimmed();
    const bool endsWithSeparator = kept.endsWith(separator);
    while (!kept.isEmpty() && (kept.back().isSpace() || kept.back() == separator)) {
        kept.chop(1);
    }
    return (endsWithSeparator ? kept : text) + ellipsis;
}

QString elided(const QString& text, const QFont& font, qreal width) {
    const QString shown = QFontMetricsF{font}.elidedText(text, Qt::ElideRight, width);
    return shown != text && shown.endsWith(ellipsis) ? withEllipsis(shown.chopped(1)) : shown;
}

}

QString TextFitting::truncated(const QString& text, qsizetype maxLength) {
    const bool isInsidePair = 0 < maxLength && maxLength < text.size() && text.at(maxLength).isLowSurrogate();
    return text.left(isInsidePair && text.at(maxLength - 1).isHighSurrogate() ? maxLength - 1 : maxLength);
}

TextFitting::Prepared TextFitting::prepared(const QString& text) {
    Prepared result{truncated(text, maxPreparedLength), text.size() > maxPreparedLength};
    result.text.replace(u"\r\n"_s, u"\n"_s);
    for (QChar& character : result.text) {
        if (character == u'\n' || character == u'\r' || character == QChar::ParagraphSeparator) {
            character = QChar::LineSeparator;
        } else if (character.category() == QChar::Other_Control) {
            character = u' ';
        }
    }
    while (!result.hasMore && !result.text.isEmpty() && result.text.back().isSpace()) {
        result.text.chop(1);
    }
    return result;
}

QString TextFitting::firstLine(const Prepared& prepared) {
    const qsizetype breakAt = prepared.text.indexOf(QChar::LineSeparator);
    const QString line = (breakAt < 0 ? prepared.text : prepared.text.left(breakAt)).trimmed();
    return breakAt >= 0 || prepared.hasMore ? withEllipsis(line) : line;
}

TextFitting::Fitted TextFitting::fit(const Prepared& prepared, const QFont& font, qreal width, int lines) {
    QString rest = prepared.text;
    QStringList taken = takeLines(rest, font, width, lines - 1);
    const bool goesOn = prepared.hasMore || rest.contains(QChar::LineSeparator);
    const QString whole = firstLine({rest, prepared.hasMore});
    const QString last = elided(whole, font, width);
    if (!last.isEmpty() || taken.isEmpty()) {
        taken += last;
    }
    return {taken.join(QChar::LineSeparator), goesOn || last != whole};
}

qsizetype TextFitting::placeInWhole(const QString& whole, const QString& fitted, qsizetype place) {
    qsizetype found = 0;
    for (const QChar character : QStringView{fitted}.left(place)) {
        if (character == QChar::LineSeparator) {
            continue;
        }
        while (found < whole.size() && whole.at(found) != character && whole.at(found).isSpace()) {
            ++found;
        }
        if (found == whole.size() || (character == ellipsis && whole.at(found) != ellipsis)) {
            return whole.size();
        }
        ++found;
    }
    return found;
}
