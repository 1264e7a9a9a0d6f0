#pragma once

#include <QDateTime>
#include <QLocale>

/// Times of day as a locale writes them.
namespace ClockText {

/// Hours, minutes and seconds in the local time zone, without its name: "14:03:07", "2:03:07 PM".
[[nodiscard]] QString withSeconds(const QDateTime& moment, const QLocale& locale = QLocale::system());

}
