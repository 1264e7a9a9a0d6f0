#include "daypart/DaypartPalette.h"

#include <QColor>
#include <QTest>
#include <QTimeZone>

using namespace Qt::StringLiterals;

class TestDaypart final : public QObject {
    Q_OBJECT

private slots:
    void hourDecidesTheDaypart() {
        for (int hour = 0; hour < 24; ++hour) {
            const auto expected = hour < 5 || hour > 20 ? Daypart::night
                                  : hour < 10           ? Daypart::dawn
                                  : hour < 17           ? Daypart::day
                                                        : Daypart::dusk;
            QCOMPARE(DaypartInfo::fromClock(QDateTime{QDate{2026, 1, 15}, QTime{hour, 0}}), expected);
        }
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

    void textsAreFixed() {
        const QList<QStringList> texts{{u"dawn"_s, u"Dawn"_s, u"sunrise.fill"_s},
                                       {u"day"_s, u"Day"_s, u"sun.max.fill"_s},
                                       {u"dusk"_s, u"Dusk"_s, u"sunset.fill"_s},
                                       {u"night"_s, u"Night"_s, u"moon.stars.fill"_s}};
        QList<QStringList> told;
        for (const auto daypart : {Daypart::dawn, Daypart::day, Daypart::dusk, Daypart::night}) {
            QCOMPARE(DaypartInfo::allCases.at(static_cast<std::size_t>(daypart)), daypart);
            told.append(
                {DaypartInfo::rawValue(daypart), DaypartInfo::title(daypart), DaypartInfo::symbolName(daypart)});
            QVERIFY(DaypartInfo::fromRawValue(told.last().first()) == daypart);
        }
        QCOMPARE(told, texts);
        for (const char16_t* other : {u"Dawn", u"", u"noon", u" dawn", u"dawn ", u"NIGHT"}) {
            QVERIFY(!DaypartInfo::fromRawValue(QStringView{other}));
        }
    }

    void palettesHaveTheirTenColours() {
        const std::array palettes{
            u"#faf6f1 #f3ebe3 #ffffff #e0d4c8 #2c241c #5c5248 #c45c3e #3d6b4f #9a6b1f #b53a2a"_s,
            u"#f5f8fa #e8eef3 #ffffff #d0dbe3 #1a2332 #4a5568 #0d9488 #1e7a4a #a67c00 #c0392b"_s,
            u"#1a1612 #221c17 #2a221c #3a3028 #f0e6d8 #a89888 #e8a54b #7fd99a #e8a54b #f07178"_s,
            u"#0a0a0f #12121a #1a1a24 #2a2a38 #e8e8f0 #8888a0 #00ccaa #50fa7b #f1fa8c #ff5555"_s,
        };
        for (const auto daypart : DaypartInfo::allCases) {
            const auto& palette = DaypartPalette::of(daypart);
            QStringList colours;
            for (const auto colour :
                 {palette.background, palette.surface, palette.surfaceElevated, palette.border, palette.text,
                  palette.textMuted, palette.accent, palette.success, palette.warning, palette.danger}) {
                QCOMPARE(qAlpha(colour), 255);
                colours.append(QColor{colour}.name());
            }
            QCOMPARE(colours.join(u' '), palettes.at(static_cast<std::size_t>(daypart)));
        }
    }
};

QTEST_GUILESS_MAIN(TestDaypart)
#include "TestDaypart.moc"
