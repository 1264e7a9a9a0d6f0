#include "ui/ClockText.h"

using namespace Qt::StringLiterals;

namespace {

/// Qt knows no name for a part of the day, only for its halves.
constexpr QChar dayPart = u'B';

/// The short form with seconds behind its minutes; empty where hours and minutes are not parted by one mark.
QString shortWithSeconds(QString format) {
    if (format.contains(u's')) {
        return format;
    }
    for (qsizetype minutes = format.indexOf(u'm'); minutes >= 2; minutes = format.indexOf(u'm', minutes + 1)) {
        const QChar mark = format[minutes - 1];
        if (format[minutes - 2].toLower() == u'h' && mark.isPunct()) {
            qsizetype end = minutes;
            while (end < format.size() && format[end] == u'm') {
                ++end;
            }
            return format.insert(end, mark + u"ss"_s);
        }
    }
    return {};
}

/// The long form without its time zone, which is a run of "t" outside quotation marks.
QString longWithoutZone(const QString& format) {
    QString result;
    bool isQuoted = false;
    for (const QChar character : format) {
        isQuoted = isQuoted != (character == u'\'');
        if (isQuoted || character != u't') {
            result += character;
        }
    }
    return result.trimmed();
}

QString mediumFormat(const QLocale& locale) {
    QString format = shortWithSeconds(locale.timeFormat(QLocale::ShortFormat));
    if (format.isEmpty()) {
        format = longWithoutZone(locale.timeFormat(QLocale::LongFormat));
    }
    return format.replace(dayPart, u"AP"_s);
}

}

QString ClockText::withSeconds(const QDateTime& moment, const QLocale& locale) {
    return locale.toString(moment.toLocalTime().time(), mediumFormat(locale));
}
