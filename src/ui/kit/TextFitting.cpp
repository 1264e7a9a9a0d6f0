#include "ui/kit/TextFitting.h"

#include <QFontMetricsF>
#include <QStringList>
#include <QTextLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Three lines of the panel in its smallest letters hold some 500.
constexpr qsizetype longestBeginning = 2000;
constexpr QChar ellipsis{u'…'};

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

}

QString TextFitting::start(const QString& text, qsizetype most) {
    const bool isInsidePair = 0 < most && most < text.size() && text.at(most).isLowSurrogate();
    return text.left(isInsidePair && text.at(most - 1).isHighSurrogate() ? most - 1 : most);
}

TextFitting::Beginning TextFitting::beginning(const QString& text) {
    Beginning result{start(text, longestBeginning), text.size() > longestBeginning};
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

QString TextFitting::firstLine(const Beginning& beginning) {
    const qsizetype breakAt = beginning.text.indexOf(QChar::LineSeparator);
    QString line = (breakAt < 0 ? beginning.text : beginning.text.left(breakAt)).trimmed();
    if (breakAt >= 0 || beginning.hasMore) {
        line += ellipsis;
    }
    return line;
}

TextFitting::Fitted TextFitting::fit(const Beginning& beginning, const QFont& font, qreal width, int lines) {
    QString rest = beginning.text;
    QStringList taken = takeLines(rest, font, width, lines - 1);
    const bool goesOn = beginning.hasMore || rest.contains(QChar::LineSeparator);
    const QString whole = firstLine({rest, beginning.hasMore});
    const QString last = QFontMetricsF{font}.elidedText(whole, Qt::ElideRight, width);
    if (!last.isEmpty() || taken.isEmpty()) {
        taken += last;
    }
    return {taken.join(QChar::LineSeparator), goesOn || last != whole};
}
