#include "ui/ClockText.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QDateTime moment{QDate{2026, 7, 28}, QTime{14, 3, 7}};

}

class TestClockText final : public QObject {
    Q_OBJECT

private slots:
    void writesTheTimeAsTheLocaleDoesWithoutTheZone_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("C") << u"14:03:07"_s;
        QTest::newRow("de_DE") << u"14:03:07"_s;
        QTest::newRow("en_GB") << u"14:03:07"_s;
        QTest::newRow("en_US") << u"2:03:07 PM"_s;
        QTest::newRow("da_DK") << u"14.03.07"_s;
        QTest::newRow("zh_CN") << u"14:03:07"_s;         // the zone comes first
        QTest::newRow("be_BY") << u"14:03:07"_s;         // a comma before the zone
        QTest::newRow("ja_JP") << u"14:03:07"_s;         // words in the long form
        QTest::newRow("fr_CA") << u"14 h 03 min 07 s"_s; // words in the short form
        const bool hasLetters = QLocale{u"bg_BG"_s}.timeFormat(QLocale::ShortFormat).contains(u'ч');
        QTest::newRow("bg_BG") << (hasLetters ? u"14:03:07 ч."_s : u"14:03:07"_s); // quoted behind, until Qt 6.7
        QTest::newRow("ko_KR") << u"오후 2:03:07"_s;                               // half of the day first
        QTest::newRow("zh_TW") << u"下午2:03:07"_s;                                // part of the day
    }
    void writesTheTimeAsTheLocaleDoesWithoutTheZone() {
        const QLocale locale{QString::fromLatin1(QTest::currentDataTag())};
        // Locale data uses several kinds of blanks, and other ones in each release.
        QTEST(ClockText::withSeconds(moment, locale).simplified(), "text");
    }

    void showsTheLocalTimeOfAMomentInAnotherZone() {
        QCOMPARE(ClockText::withSeconds(moment.toOffsetFromUtc(5 * 3600), QLocale::c()), u"14:03:07"_s);
    }
};

QTEST_MAIN(TestClockText)
#include "TestClockText.moc"
