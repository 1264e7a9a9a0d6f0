#include "ui/ClockText.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestClockText final : public QObject {
    Q_OBJECT

private slots:
    void writesTheTimeAsTheLocaleDoesWithoutTheZone_data() {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("text");
        QTest::newRow("C") << u"C"_s << u"14:03:07"_s;
        QTest::newRow("German") << u"de_DE"_s << u"14:03:07"_s;
        QTest::newRow("British") << u"en_GB"_s << u"14:03:07"_s;
        QTest::newRow("Danish") << u"da_DK"_s << u"14.03.07"_s;
        QTest::newRow("zone first") << u"zh_CN"_s << u"14:03:07"_s;
        QTest::newRow("a comma before the zone") << u"be_BY"_s << u"14:03:07"_s;
        QTest::newRow("words in the long form") << u"ja_JP"_s << u"14:03:07"_s;
        QTest::newRow("words in the short form") << u"fr_CA"_s << u"14 h 03 min 07 s"_s;
        QTest::newRow("quoted letters behind") << u"bg_BG"_s << u"14:03:07 ч."_s;
        QTest::newRow("half of the day first") << u"ko_KR"_s << u"오후 2:03:07"_s;
        QTest::newRow("part of the day") << u"zh_TW"_s << u"下午2:03:07"_s;
    }
    void writesTheTimeAsTheLocaleDoesWithoutTheZone() {
        QFETCH(QString, locale);
        const QDateTime moment{QDate{2026, 7, 28}, QTime{14, 3, 7}};
        // Locale data uses several kinds of blanks.
        QString text = ClockText::withSeconds(moment, QLocale{locale});
        text.replace(QChar{0x00a0}, u' ').replace(QChar{0x202f}, u' ');
        QTEST(text, "text");
    }

    void keepsTheHalfOfTheDay() {
        const QDateTime moment{QDate{2026, 7, 28}, QTime{14, 3, 7}};
        const QString text = ClockText::withSeconds(moment, QLocale{u"en_US"_s});
        QVERIFY2(text.startsWith(u"2:03:07"_s) && text.endsWith(u"PM"_s), qPrintable(text));
    }

    void showsTheLocalTimeOfAMomentInAnotherZone() {
        const QDateTime local{QDate{2026, 7, 28}, QTime{14, 3, 7}};
        QCOMPARE(ClockText::withSeconds(local.toOffsetFromUtc(5 * 3600), QLocale::c()), u"14:03:07"_s);
    }
};

QTEST_MAIN(TestClockText)
#include "TestClockText.moc"
