#include "daypart/DaypartPalette.h"

#include <QColor>
#include <QTest>
#include <QTimeZone>

using namespace Qt::StringLiterals;

class TestDaypart final : public QObject {
    Q_OBJECT

private slots:
    void hourDecidesTheDaypart_data() {
        QTest::addColumn<int>("hour");
        QTest::addColumn<Daypart>("expected");
        for (int hour = 0; hour < 24; ++hour) {
            const auto expected = hour < 5 || hour > 20 ? Daypart::night
                                  : hour < 10           ? Daypart::dawn
                                  : hour < 17           ? Daypart::day
                                                        : Daypart::dusk;
            QTest::addRow("%02d", hour) << hour << expected;
        }
    }
    void hourDecidesTheDaypart() {
        QFETCH(const int, hour);
        QFETCH(const Daypart, expected);
        QCOMPARE(DaypartInfo::fromClock(QDateTime{QDate{2026, 1, 15}, QTime{hour, 0}}), expected);
    }

    void minutesDoNotCount() {
        QCOMPARE(DaypartInfo::fromClock(QDateTime{QDate{2026, 1, 15}, QTime{9, 59, 59, 999}}), Daypart::dawn);
        QCOMPARE(DaypartInfo::fromClock(QDateTime{QDate{2026, 1, 15}, QTime{10, 0}}), Daypart::day);
    }

    void sameInstantDiffersByTimeZone() {
        const QDateTime noon{QDate{2026, 6, 1}, QTime{12, 0}, QTimeZone{0}};
        QCOMPARE(DaypartInfo::fromClock(noon), Daypart::day);
        QCOMPARE(DaypartInfo::fromClock(noon.toTimeZone(QTimeZone{12 * 3600})), Daypart::night);
    }

    void textsAreFixed_data() {
        QTest::addColumn<Daypart>("daypart");
        QTest::addColumn<QString>("rawValue");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("symbolName");
        QTest::newRow("dawn") << Daypart::dawn << u"dawn"_s << u"Dawn"_s << u"sunrise.fill"_s;
        QTest::newRow("day") << Daypart::day << u"day"_s << u"Day"_s << u"sun.max.fill"_s;
        QTest::newRow("dusk") << Daypart::dusk << u"dusk"_s << u"Dusk"_s << u"sunset.fill"_s;
        QTest::newRow("night") << Daypart::night << u"night"_s << u"Night"_s << u"moon.stars.fill"_s;
    }
    void textsAreFixed() {
        QFETCH(const Daypart, daypart);
        QFETCH(const QString, rawValue);
        QFETCH(const QString, title);
        QFETCH(const QString, symbolName);
        QCOMPARE(DaypartInfo::allCases.at(static_cast<std::size_t>(daypart)), daypart);
        QCOMPARE(DaypartInfo::rawValue(daypart), rawValue);
        QCOMPARE(DaypartInfo::title(daypart), title);
        QCOMPARE(DaypartInfo::symbolName(daypart), symbolName);
        QVERIFY(DaypartInfo::fromRawValue(rawValue) == daypart);
    }

    void onlyTheFourRawValuesConvert_data() {
        QTest::addColumn<QString>("text");
        for (const auto* text : {"Dawn", "", "noon", " dawn", "dawn ", "NIGHT"}) {
            QTest::addRow("'%s'", text) << QString::fromLatin1(text);
        }
    }
    void onlyTheFourRawValuesConvert() {
        QFETCH(const QString, text);
        QVERIFY(!DaypartInfo::fromRawValue(text));
    }

    void paletteHasItsTenColours_data() {
        QTest::addColumn<Daypart>("daypart");
        QTest::addColumn<QStringList>("colours");
        QTest::newRow("dawn")
            << Daypart::dawn
            << u"#faf6f1 #f3ebe3 #ffffff #e0d4c8 #2c241c #5c5248 #c45c3e #3d6b4f #9a6b1f #b53a2a"_s.split(u' ');
        QTest::newRow("day")
            << Daypart::day
            << u"#f5f8fa #e8eef3 #ffffff #d0dbe3 #1a2332 #4a5568 #0d9488 #1e7a4a #a67c00 #c0392b"_s.split(u' ');
        QTest::newRow("dusk")
            << Daypart::dusk
            << u"#1a1612 #221c17 #2a221c #3a3028 #f0e6d8 #a89888 #e8a54b #7fd99a #e8a54b #f07178"_s.split(u' ');
        QTest::newRow("night")
            << Daypart::night
            << u"#0a0a0f #12121a #1a1a24 #2a2a38 #e8e8f0 #8888a0 #00ccaa #50fa7b #f1fa8c #ff5555"_s.split(u' ');
    }
    void paletteHasItsTenColours() {
        QFETCH(const Daypart, daypart);
        QFETCH(const QStringList, colours);
        const auto& palette = DaypartPalette::of(daypart);
        QStringList actual;
        for (const auto colour :
             {palette.background, palette.surface, palette.surfaceElevated, palette.border, palette.text,
              palette.textMuted, palette.accent, palette.success, palette.warning, palette.danger}) {
            QCOMPARE(qAlpha(colour), 255);
            actual.append(QColor{colour}.name());
        }
        QCOMPARE(actual, colours);
    }

    void duskWarnsInItsAccent() {
        QCOMPARE(DaypartPalette::of(Daypart::dusk).warning, DaypartPalette::of(Daypart::dusk).accent);
    }
};

QTEST_GUILESS_MAIN(TestDaypart)
#include "TestDaypart.moc"
