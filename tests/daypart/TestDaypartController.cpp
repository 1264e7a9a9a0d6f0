#include "daypart/DaypartController.h"

#include "support/MemoryDefaults.h"
#include "support/Rows.h"

#include <QTest>
#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace {

const QString storageKey = u"vorna.macos.daypart"_s;
const QString manualKey = u"vorna.macos.daypart.manual"_s;

/// What the controller published before each change, one line a change.
class Record final : public QObject {
public:
    Record(DaypartController& controller, const MemoryDefaults& defaults) {
        connect(&controller, &DaypartController::objectWillChange, this, [this, &controller, &defaults] {
            writes.append(defaults.writes.size());
            lines.append(u"%1 %2 %3"_s.arg(DaypartInfo::title(controller.daypart),
                                           DaypartInfo::title(paletteOf(controller)),
                                           controller.isManual ? u"manual"_s : u"clock"_s));
        });
    }

    QStringList lines;
    QList<qsizetype> writes; ///< of defaults, so far

private:
    static Daypart paletteOf(const DaypartController& controller) {
        for (const auto daypart : DaypartInfo::allCases) {
            if (controller.palette.value() == DaypartPalette::of(daypart)) {
                return daypart;
            }
        }
        qFatal("A palette of no daypart.");
    }
};

}

class TestDaypartController final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_defaults.values.clear();
        m_defaults.writes.clear();
        m_intervals.clear();
        setHour(12);
    }

    void firstStartFollowsTheClockAndWritesNothing() {
        const DaypartController controller{m_defaults, clock(), ticker()};
        QVERIFY(!controller.isManual);
        QCOMPARE(controller.daypart.value(), Daypart::day);
        QVERIFY(controller.palette.value() == DaypartPalette::of(Daypart::day));
        QVERIFY(m_defaults.writes.isEmpty());
    }

    void choiceIsPinnedAndOutlivesTheProcess() {
        {
            DaypartController controller{m_defaults, clock(), ticker()};
            const Record record{controller, m_defaults};
            controller.set(Daypart::night);
            QCOMPARE(record.writes, (QList<qsizetype>{0, 0, 0}));
            QCOMPARE(record.lines, (QStringList{u"Day Day clock"_s, u"Night Day clock"_s, u"Night Night clock"_s}));
            QVERIFY(controller.isManual);
            QCOMPARE(m_defaults.writes, (QStringList{manualKey + u" = true"_s, storageKey + u" = night"_s}));
        }
        const DaypartController restarted{m_defaults, clock(), ticker()};
        QVERIFY(restarted.isManual);
        QCOMPARE(restarted.daypart.value(), Daypart::night);
        QVERIFY(restarted.palette.value() == DaypartPalette::of(Daypart::night));
    }

    void choosingAgainAnnouncesAgain() {
        DaypartController controller{m_defaults, clock(), ticker()};
        controller.set(Daypart::day);
        const Record record{controller, m_defaults};
        controller.set(Daypart::day);
        QCOMPARE(record.lines.size(), 3);
    }

    void pinnedDaypartIgnoresTicks() {
        DaypartController controller{m_defaults, clock(), ticker()};
        controller.set(Daypart::night);
        const Record record{controller, m_defaults};
        for (int hour = 0; hour < 24; ++hour) {
            setHour(hour);
            m_tick();
        }
        QCOMPARE(record.lines, QStringList{});
        QCOMPARE(controller.daypart.value(), Daypart::night);
    }

    void autoReturnsToTheClockAtOnce() {
        DaypartController controller{m_defaults, clock(), ticker()};
        controller.set(Daypart::night);
        const Record record{controller, m_defaults};
        controller.useAuto();
        QCOMPARE(record.writes, (QList<qsizetype>{2, 4, 4}));
        QCOMPARE(record.lines, (QStringList{u"Night Night manual"_s, u"Night Night clock"_s, u"Day Night clock"_s}));
        QVERIFY(controller.palette.value() == DaypartPalette::of(Daypart::day));
        QCOMPARE(m_defaults.writes.mid(2), (QStringList{manualKey + u" = false"_s, storageKey + u" removed"_s}));
        QCOMPARE(m_defaults.values, (QVariantMap{{manualKey, false}}));
    }

    void manualFlagWithoutAValidDaypartStaysManual_data() {
        const Rows<QVariant> row{"stored"};
        row("unknown", QVariant{u"noon"_s});
        row("capitalised", QVariant{u"Night"_s});
        row("missing", QVariant{});
    }
    void manualFlagWithoutAValidDaypartStaysManual() {
        QFETCH(const QVariant, stored);
        m_defaults.values = {{manualKey, true}};
        if (stored.isValid()) {
            m_defaults.values.insert(storageKey, stored);
        }
        const DaypartController controller{m_defaults, clock(), ticker()};
        QVERIFY(controller.isManual);
        QCOMPARE(controller.daypart.value(), Daypart::day);
        setHour(23);
        m_tick();
        QCOMPARE(controller.daypart.value(), Daypart::day);
        QVERIFY(m_defaults.writes.isEmpty());
    }

    void storedDaypartWithoutTheFlagIsIgnored() {
        m_defaults.values = {{storageKey, u"night"_s}};
        const DaypartController controller{m_defaults, clock(), ticker()};
        QVERIFY(!controller.isManual);
        QCOMPARE(controller.daypart.value(), Daypart::day);
    }

    void clockIsFollowedAtTheNextTick() {
        setHour(9, 59);
        DaypartController controller{m_defaults, clock(), ticker()};
        const Record record{controller, m_defaults};
        m_tick();
        QCOMPARE(record.lines, QStringList{});
        setHour(10);
        QCOMPARE(controller.daypart.value(), Daypart::dawn);
        m_tick();
        QCOMPARE(record.lines, (QStringList{u"Dawn Dawn clock"_s, u"Day Dawn clock"_s}));
        QCOMPARE(controller.daypart.value(), Daypart::day);
    }

    void nextTickFollowsAClockThatWasSet_data() {
        const QTimeZone berlin{"Europe/Berlin"};
        const QDateTime evening{QDate{2026, 1, 15}, QTime{16, 30}, berlin};
        const QDateTime beforeSummer{QDate{2026, 3, 29}, QTime{1, 59}, berlin};
        const QDateTime beforeWinter{QDate{2026, 10, 25}, QTime{1, 59}, berlin};
        const Rows<QDateTime, QDateTime, Daypart> row{"before", "after", "expected"};
        row("forward", evening, evening.addSecs(6 * 3600), Daypart::night);
        row("backward", evening, evening.addSecs(-8 * 3600), Daypart::dawn);
        row("another zone", evening, evening.toTimeZone(QTimeZone{"Asia/Tokyo"}), Daypart::night);
        row("summer time begins", beforeSummer, beforeSummer.addSecs(2 * 3600 + 1800), Daypart::dawn);
        row("summer time ends", beforeWinter, beforeWinter.addSecs(3 * 3600 + 1800), Daypart::night);
    }
    void nextTickFollowsAClockThatWasSet() {
        QFETCH(const QDateTime, before);
        QFETCH(const QDateTime, after);
        QVERIFY(before.isValid() && after.isValid());
        m_now = before;
        DaypartController controller{m_defaults, clock(), ticker()};
        const Record record{controller, m_defaults};
        const auto first = controller.daypart.value();
        m_now = after;
        m_tick();
        QTEST(controller.daypart.value(), "expected");
        QVERIFY(controller.palette.value() == DaypartPalette::of(controller.daypart));
        QCOMPARE(record.lines.size(), controller.daypart == first ? 0 : 2);
    }

    void clockTicksOnceAMinuteWhateverIsPinned() {
        int looks = 0;
        DaypartController controller{m_defaults, [&] { return ++looks, m_now; }, ticker()};
        QCOMPARE(looks, 1);
        controller.set(Daypart::night);
        controller.useAuto();
        controller.set(Daypart::dawn);
        QCOMPARE(m_intervals, QList<qint64>{60'000});
    }

private:
    [[nodiscard]] Clock clock() {
        return [this] { return m_now; };
    }
    void setHour(int hour, int minute = 0) { m_now = QDateTime{QDate{2026, 1, 15}, QTime{hour, minute}}; }
    [[nodiscard]] Ticker ticker() {
        return [this](QObject&, std::chrono::milliseconds interval, const std::function<void()>& tick) {
            m_intervals.append(interval.count());
            m_tick = tick;
        };
    }

    MemoryDefaults m_defaults;
    QDateTime m_now;
    QList<qint64> m_intervals;
    std::function<void()> m_tick;
};

QTEST_GUILESS_MAIN(TestDaypartController)
#include "TestDaypartController.moc"
