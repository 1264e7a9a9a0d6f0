#include "ui/kit/WholeTextTip.h"

#include "ui/kit/TextFitting.h"

#include <QHelpEvent>
#include <QRegularExpression>
#include <QTextDocument>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype maxLength = 2000;

/// The text with places to break a line inside words that are too long for one.
QString breakable(QString text) {
    static const QRegularExpression longWord{uR"((\S{40})(?=[^\s\p{M}]))"_s};
    return text.replace(longWord, u"\\1\u200B"_s);
}

}

void WholeTextTip::show(const QHelpEvent& event, const QString& text, QWidget& widget) {
    QString shown = breakable(TextFitting::truncated(text, maxLength));
    if (text.size() > maxLength) {
        shown += u'…';
    }
    QToolTip::showText(event.globalPos(), Qt::convertFromPlainText(shown, Qt::WhiteSpaceNormal), &widget);
}
