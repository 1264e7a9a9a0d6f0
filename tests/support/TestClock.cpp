#include "support/Clock.h"
#include "support/Ticker.h"

#include <QTest>
#include <QTimeZone>

#include <memory>

using namespace std::chrono_literals;

/// What the parts take from the system unless a test hands in another.
class TestClock final : public QObject {
    Q_OBJECT

private slots:
    void wallClockShowsTheLocalTimeZone() {
        for (const auto& [zone, offset] : {std::pair{"XXX-11:30", 41'400}, std::pair{"XXX9", -32'400}}) {
            qputenv("TZ", zone);
            tzset();
            QCOMPARE(wallClock().offsetFromUtc(), offset);
            QVERIFY(qAbs(wallClock().secsTo(QDateTime::currentDateTimeUtc())) < 60);
        }
    }

    void ticksOnceAnIntervalAsLongAsTheOwnerLives() {
        auto owner = std::make_unique<QObject>();
        int ticks = 0;
        timerTicker(*owner, 1ms, [&ticks] { ++ticks; });
        QCOMPARE(ticks, 0);
        QTRY_VERIFY(ticks >= 3);
        owner.reset();
        const int before = ticks;
        QTest::qWait(20);
        QCOMPARE(ticks, before);
        QObject patient;
        timerTicker(patient, 1h, [&ticks] { ++ticks; });
        QTest::qWait(20);
        QCOMPARE(ticks, before);
    }
};

QTEST_GUILESS_MAIN(TestClock)
#include "TestClock.moc"
