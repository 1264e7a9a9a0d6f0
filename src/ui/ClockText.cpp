#include "ui/ClockText.h"

using namespace Qt::StringLiterals;

namespace {

/// The format without its time zone, which is a run of "t" outside quotation marks.
QString withoutZone(const QString& format) {
    QString result;
    bool isQuoted = false;
    for (const QChar character : format) {
        isQuoted = isQuoted != (character == u'\'');
        if (isQuoted || character != u't') {
            result += character;
        }
    }
    return result.remove(u"()"_s).remove(u"[]"_s).trimmed();
}

}

QString ClockText::withSeconds(const QDateTime& moment, const QLocale& locale) {
    return locale.toString(moment.toLocalTime().time(), withoutZone(locale.timeFormat(QLocale::LongFormat)));
}
