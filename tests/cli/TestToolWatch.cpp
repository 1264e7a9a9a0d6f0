#include "cli/VornaCLIRunner.h"

#include "cli/StandInTool.h"
#include "support/OwnProcess.h"

#include <QElapsedTimer>
#include <QSet>
#include <QTest>
#include <QTimer>

#include <cmath>
#include <csignal>
#include <ctime>
#include <limits>

#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using VornaCLIRunner::Result;
using VornaCLIRunner::Surroundings;

namespace {

constexpr double ample = 120;
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr int waitMs = 60'000;
constexpr int tries = 5; // a busy machine makes one late, but hardly all
constexpr qsizetype pipeFull = 64 * 1024;

Result runTool(const QStringList& arguments = {}, double timeout = ample) {
    return QCoro::waitFor(VornaCLIRunner::run(arguments, timeout));
}

QCoro::Task<> runInto(QList<Result>* results, Surroundings surroundings, QStringList arguments, double timeout) {
    auto call = VornaCLIRunner::runIn(surroundings, arguments, timeout);
    results->append(co_await call);
}

/// Time that passes when the test says so.
class HandTime final {
public:
    [[nodiscard]] Surroundings surroundings() {
        return {.which = "/nonexistent",
                .clock = [this] { return ++readings, m_now; },
                .callLater =
                    [this](QObject&, std::chrono::milliseconds delay, const std::function<void()>& callback) {
                        delays += delay.count();
                        m_callback = callback;
                    }};
    }
    void pass(std::chrono::milliseconds time) {
        m_now = m_now.addDuration(time);
        std::exchange(m_callback, [] {})();
    }

    QList<qint64> delays;
    int readings = 0;

private:
    QDateTime m_now{QDate{2026, 1, 15}, QTime{12, 0}};
    std::function<void()> m_callback = [] {};
};

}

/// When a tool is looked at, ended and read.
class TestToolWatch final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_tool.emplace();
        m_results.clear();
        m_clock.start();
    }
    void cleanup() {
        QVERIFY(!OwnProcess::hasChild());
        m_tool.reset();
    }

    void outputOfAPipeFullComesAtOnce() {
        writeText(pipeFull);
        m_tool->write("cat $1; exec cat $1 >&2");
        const Result result = runTool({m_tool->file(u"text"_s)});
        QVERIFY(elapsed() < 30s);
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.stdOut.size(), pipeFull);
        QCOMPARE(result.stdErr.size(), pipeFull);
    }

    void floodWaitsForTheDeadline() {
        for (const qsizetype bytes : {pipeFull + 1, qsizetype{10 * 1024 * 1024}}) {
            writeText(bytes);
            for (const QByteArray redirection : {"", " >&2"}) {
                m_clock.start();
                m_tool->write("exec sed '' $1" + redirection); // some cats make the pipe larger
                const Result result = runTool({m_tool->file(u"text"_s)}, 0.7);
                QVERIFY(elapsed() >= 699ms); // each of the clocks tells whole milliseconds
                QCOMPARE(result.exitCode, SIGTERM);
                const qsizetype arrived = result.stdOut.size() + result.stdErr.size();
                QVERIFY2(arrived >= pipeFull && arrived <= 1024 * 1024, qPrintable(QString::number(arrived)));
            }
        }
    }

    void endlessFloodIsCutAndLeavesTheMainThreadFree() {
        constexpr auto frame = CLOCKS_PER_SEC / 60;
        constexpr qsizetype whole = 16 * 1024 * 1024 / 3; // each takes three bytes
        m_tool->write("trap '' TERM; yes € | tr -d '\\n'; yes € | tr -d '\\n' >&2; exit 5");
        auto shortest = std::numeric_limits<std::clock_t>::max();
        for (int turn = 0; turn < tries && shortest > frame; ++turn) {
            std::clock_t longest = 0;
            QTimer timer;
            connect(&timer, &QTimer::timeout, this, [&longest, before = std::clock()]() mutable {
                longest = std::max(longest, std::clock() - std::exchange(before, std::clock()));
            });
            timer.start(0);
            const Result result = runTool({}, 0.3);
            shortest = std::min(shortest, longest);
            QCOMPARE(result.exitCode, 5);
            for (const QString* stream : {&result.stdOut, &result.stdErr}) {
                QCOMPARE(stream->size(), whole);
                QCOMPARE(stream->count(u"€"_s), whole);
            }
        }
        QVERIFY2(shortest <= frame, qPrintable(QString::number(shortest)));
    }

    void readsBothStreamsSideBySide() {
        writeText(300'000);
        m_tool->write("trap '' TERM; cat $1 >&2; echo done; cat $1 >&2; exit 5");
        const Result result = runTool({m_tool->file(u"text"_s)}, 0.3);
        QCOMPARE(result.exitCode, 5);
        QCOMPARE(result.stdOut, u"done\n"_s);
        QCOMPARE(result.stdErr.size(), 600'000);
    }

    void doesNotWaitForAGrandchildWithStreamsOfItsOwn() {
        m_tool->write("sleep 100 >/dev/null 2>&1 & echo $!");
        const Result result = runTool();
        const auto grandchild = static_cast<pid_t>(result.stdOut.trimmed().toLongLong());
        QVERIFY(grandchild > 0 && OwnProcess::isAlive(grandchild));
        kill(grandchild, SIGKILL);
        QVERIFY(elapsed() < 30s);
        QCOMPARE(result.exitCode, 0);
    }

    void earlyEndDoesNotWaitForTheDeadline() {
        m_tool->write("sleep 0.3; echo done");
        for (const double timeout : {ample, infinity, 1e300}) {
            QCOMPARE(runTool({}, timeout), (Result{.exitCode = 0, .stdOut = u"done\n"_s, .stdErr = {}}));
        }
        QVERIFY(elapsed() < 30s);
    }

    void isEndedSoonAfterTheDeadline() {
        m_tool->write("exec sleep 100");
        auto soonest = 30s + 0ms;
        for (int turn = 0; turn < tries && soonest > 1300ms; ++turn) {
            m_clock.start();
            QCOMPARE(runTool({}, 0.3), (Result{.exitCode = SIGTERM, .stdOut = {}, .stdErr = {}}));
            QVERIFY(elapsed() >= 300ms);
            soonest = std::min(soonest, elapsed());
        }
        QVERIFY2(soonest <= 1300ms, qPrintable(u"%1 ms"_s.arg(soonest.count())));
    }

    void looksAtOnceAndThenEveryTenthOfASecond() {
        HandTime time;
        startSleeper(time, 0.35);
        for (const auto& looks : {QList<qint64>{100}, {100, 100}, {100, 100, 100}, {100, 100, 100, 100}}) {
            QCOMPARE(time.delays, looks);
            QVERIFY(!isSleeperEnded());
            time.pass(100ms);
        }
        QVERIFY(endsInTime(time));
    }

    void looksAtTheToolBeforeTheClock() {
        HandTime time;
        m_tool->write("exec sleep 0.2", m_tool->inCheckout());
        runInto(&m_results, time.surroundings(), {}, ample);
        QVERIFY(QTest::qWaitFor([] { return OwnProcess::hasChildThat(WEXITED); }, waitMs));
        const int before = time.readings;
        time.pass(100ms);
        QTRY_VERIFY(!m_results.isEmpty());
        QCOMPARE(time.readings, before);
    }

    void limitOfNothingIsOverAtTheFirstLook() {
        for (const double timeout : {0.0, -1.0, -infinity, std::numeric_limits<double>::quiet_NaN()}) {
            HandTime time;
            startSleeper(time, timeout);
            QVERIFY(endsInTime(time));
        }
    }

    void deadlineIsAMomentOfTheWallClock() {
        HandTime time;
        startSleeper(time, ample);
        QVERIFY(!isSleeperEnded());
        time.pass(121s); // as when the clock is set
        QVERIFY(endsInTime(time));

        const Surroundings usual;
        QVERIFY(std::abs(usual.clock().secsTo(QDateTime::currentDateTime())) < 60);
        bool called = false;
        m_clock.start();
        usual.callLater(*this, 100ms, [&called] { called = true; });
        QVERIFY(!called);
        QTRY_VERIFY(called);
        QVERIFY(elapsed() >= 95ms);
    }

    void manyCallsRunAtTheSameTime() {
        constexpr int calls = 50;
        const QByteArray gate = QFile::encodeName(m_tool->file(u"gate"_s));
        QVERIFY(mkfifo(gate.constData(), S_IRUSR | S_IWUSR) == 0);
        QVERIFY(QDir{}.mkpath(m_tool->file(u"arrived"_s)));
        m_tool->write("cd ${0%/*}/..; : > arrived/$1; : < gate; exit $1");
        const auto threads = OwnProcess::threads();
        const auto descriptors = OwnProcess::openDescriptors();
        for (int call = 0; call < calls; ++call) {
            runInto(&m_results, {}, {QString::number(call)}, 600);
        }
        QTRY_COMPARE_WITH_TIMEOUT(OwnProcess::entries(m_tool->file(u"arrived"_s)), calls, waitMs);
        QVERIFY(m_results.isEmpty());
        QCOMPARE(OwnProcess::threads(), threads);
        const int opened = open(gate.constData(), O_RDWR | O_CLOEXEC);
        QTRY_COMPARE_WITH_TIMEOUT(m_results.size(), calls, waitMs);
        close(opened);
        QSet<int> answers;
        for (const Result& result : m_results) {
            answers.insert(result.exitCode);
        }
        QCOMPARE(answers.size(), calls);
        QTRY_COMPARE(OwnProcess::openDescriptors(), descriptors);
    }

private:
    void writeText(qsizetype bytes) { StandInTool::writeFile(QByteArray{bytes, 'x'}, m_tool->file(u"text"_s)); }
    [[nodiscard]] std::chrono::milliseconds elapsed() const { return std::chrono::milliseconds{m_clock.elapsed()}; }

    void startSleeper(HandTime& time, double timeout) {
        m_results.clear();
        m_tool->write("exec sleep 100", m_tool->inCheckout());
        runInto(&m_results, time.surroundings(), {}, timeout);
    }
    [[nodiscard]] static bool isSleeperEnded() { return OwnProcess::hasChildThat(WEXITED) || !OwnProcess::hasChild(); }
    [[nodiscard]] bool endsInTime(HandTime& time) {
        return QTest::qWaitFor([] { return isSleeperEnded(); }, waitMs) &&
               QTest::qWaitFor([&] { return time.pass(100ms), !m_results.isEmpty(); }, waitMs) &&
               m_results.first() == Result{.exitCode = SIGTERM, .stdOut = {}, .stdErr = {}};
    }

    std::optional<StandInTool> m_tool;
    QList<Result> m_results;
    QElapsedTimer m_clock;
};

QTEST_GUILESS_MAIN(TestToolWatch)
#include "TestToolWatch.moc"
