#include "cli/VornaCLIRunner.h"

#include "cli/StandInTool.h"
#include "support/OwnProcess.h"

#include <QCoro/QCoroTask>

#include <QElapsedTimer>
#include <QProcess>
#include <QSet>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <limits>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ; // NOLINT(readability-redundant-declaration): glibc declares it too, the Mac does not.

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using OwnProcess::entries;
using OwnProcess::hasChild;
using OwnProcess::openDescriptors;
using OwnProcess::threads;
using VornaCLIRunner::Result;

namespace {

constexpr double ample = 120;
constexpr int patienceMs = 60'000;
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

Result runTool(const QStringList& arguments = {}, double timeout = ample) {
    return QCoro::waitFor(VornaCLIRunner::run(arguments, timeout));
}

QCoro::Task<> runInto(std::vector<Result>* results, QStringList arguments, double timeout) {
    auto call = VornaCLIRunner::run(arguments, timeout);
    results->push_back(co_await call);
}

QCoro::Task<> noteThread(std::vector<Result>* results, QThread** thread) {
    auto call = VornaCLIRunner::run(QStringList{}, ample);
    results->push_back(co_await call);
    *thread = QThread::currentThread();
}

/// One that is dead and not waited for is not; only Linux shows the difference.
bool isAlive(pid_t process) {
    QFile status{u"/proc/%1/stat"_s.arg(process)};
    const bool isZombie = status.open(QIODevice::ReadOnly) && status.readAll().contains(") Z ");
    return !isZombie && kill(process, 0) == 0;
}

/// A Mac's terminal gives a program 256.
void allowDescriptors(rlim_t count) {
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = std::min(limit.rlim_max, std::max(limit.rlim_cur, count));
    setrlimit(RLIMIT_NOFILE, &limit);
}

/// Every variable, each ended by a null.
QByteArray environment() {
    QByteArray all;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        all += *variable;
        all += '\0';
    }
    return all;
}

qint64 numberIn(const QString& path) {
    QFile file{path};
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong() : 0;
}

const QString missingText = u"The command “vorna” could not be found."_s;

}

class TestVornaCLIRunner final : public QObject {
    Q_OBJECT

private slots:
    void init() { m_tool.emplace(); }
    void cleanup() {
        QVERIFY(!hasChild());
        m_tool.reset();
    }

    void summaryIsTheOneLineForAPerson_data();
    void summaryIsTheOneLineForAPerson();

    void findsTheToolOnTheSearchPathFirst();
    void findsTheCheckoutBeforeTheUserInstall();
    void findsTheUserInstallLast();
    void skipsACandidateThatCannotRun_data();
    void skipsACandidateThatCannotRun();
    void namesTheToolWhenItIsNowhere();
    void searchThatFailedIsNotBelieved();

    void missingToolIsReportedInASentence();
    void fileOfThatNameInTheCurrentDirectoryIsNotTheTool();
    void toolThatIsNotExecutableIsReported();
    void toolWithoutItsInterpreterIsReported();
    void fileThatIsNoProgramIsReported();

    void reportsHowTheToolEnded_data();
    void reportsHowTheToolEnded();
    void reportsExitStatusWhenChildSignalsWereIgnored();
    void keepsTheStreamsApart();
    void streamThatIsNotUtf8IsEmptyAlone_data();
    void streamThatIsNotUtf8IsEmptyAlone();
    void validTextArrivesUnchanged_data();
    void validTextArrivesUnchanged();

    void outputOfAPipeFullComesAtOnce();
    void floodWaitsForTheDeadline_data();
    void floodWaitsForTheDeadline();
    void terminatesOnceAndWaitsForTheToolToObey();
    void toolThatIgnoresTheRequestIsReadToItsEnd();
    void endlessFloodIsCutBehindAWholeCharacter();
    void fullStreamOfComplaintsDoesNotHoldUpTheOutput();
    void readsOnWhileAGrandchildHoldsTheStreams();
    void doesNotWaitForAGrandchildWithStreamsOfItsOwn();

    void earlyEndDoesNotWaitForTheDeadline_data();
    void earlyEndDoesNotWaitForTheDeadline();
    void terminatesAtTheDeadline_data();
    void terminatesAtTheDeadline();
    void isNotLongAfterTheDeadline();

    void twoHundredCallsRunAtTheSameTime();
    void leavesNoDescriptorThreadOrZombie();
    void answersOnTheMainThreadWhichStaysFree();

    void passesTheEnvironmentUnchanged();
    void passesArgumentsUntouched();
    void passesStandardInput();
    void passesNoOtherDescriptor();
    void passesNoSignalState();
    void worksWithoutStandardStreamsOfOurOwn();

    void answersWhenThereAreNoDescriptors();
    void answersWhenThereAreNoThreads_data();
    void answersWhenThereAreNoThreads();
    void quittingLeavesTheToolRunning_data();
    void quittingLeavesTheToolRunning();

private:
    [[nodiscard]] bool beTheToolOurselves() const {
        return QFile::link(QCoreApplication::applicationFilePath(), m_tool->onSearchPath());
    }

    std::optional<StandInTool> m_tool;
};

void TestVornaCLIRunner::summaryIsTheOneLineForAPerson_data() {
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("errors");
    QTest::addColumn<QString>("summary");

    QTest::newRow("output, trimmed") << 0 << u"  done\n"_s << QString() << u"done"_s;
    QTest::newRow("complaint, trimmed") << 1 << QString() << u" boom "_s << u"boom"_s;
    QTest::newRow("status alone") << 2 << QString() << QString() << u"exit 2"_s;
    QTest::newRow("negative status") << -3 << QString() << QString() << u"exit -3"_s;
    QTest::newRow("nothing to say") << 0 << QString() << QString() << u"ok"_s;
    QTest::newRow("output wins") << 1 << u"partial"_s << u"text"_s << u"partial"_s;
    QTest::newRow("blank output does not win") << 1 << u" \n\t "_s << u"text"_s << u"text"_s;
    QTest::newRow("both blank") << 7 << u"\r\n"_s << u" \u00a0"_s << u"exit 7"_s;
    QTest::newRow("lines are kept") << 0 << u"\n one\n\n two \n"_s << QString() << u"one\n\n two"_s;
    QTest::newRow("all of Unicode's blanks")
        << 0 << u"\u3000\u2028\u0085\u2003done\u2029\u202f\v"_s << QString() << u"done"_s;
}

void TestVornaCLIRunner::summaryIsTheOneLineForAPerson() {
    QFETCH(int, exitCode);
    QFETCH(QString, output);
    QFETCH(QString, errors);

    const Result result{.exitCode = exitCode, .stdOut = output, .stdErr = errors};
    QTEST(result.summary(), "summary");
}

void TestVornaCLIRunner::findsTheToolOnTheSearchPathFirst() {
    m_tool->write("echo search path");
    m_tool->write("echo checkout", m_tool->inCheckout());
    m_tool->write("echo user install", m_tool->inUserInstall());
    QCOMPARE(VornaCLIRunner::resolveVornaExecutable(), m_tool->onSearchPath().toStdString());
    QCOMPARE(runTool().stdOut, u"search path\n"_s);
}

void TestVornaCLIRunner::findsTheCheckoutBeforeTheUserInstall() {
    m_tool->write("echo checkout", m_tool->inCheckout());
    m_tool->write("echo user install", m_tool->inUserInstall());
    QCOMPARE(VornaCLIRunner::resolveVornaExecutable(), m_tool->inCheckout().toStdString());
    QCOMPARE(runTool().stdOut, u"checkout\n"_s);
}

void TestVornaCLIRunner::findsTheUserInstallLast() {
    m_tool->write("echo user install", m_tool->inUserInstall());
    QCOMPARE(VornaCLIRunner::resolveVornaExecutable(), m_tool->inUserInstall().toStdString());
    QCOMPARE(runTool().stdOut, u"user install\n"_s);
}

void TestVornaCLIRunner::skipsACandidateThatCannotRun_data() {
    QTest::addColumn<bool>("isDirectory");
    QTest::newRow("not executable") << false;
    QTest::newRow("a directory") << true;
}

void TestVornaCLIRunner::skipsACandidateThatCannotRun() {
    QFETCH(bool, isDirectory);
    if (isDirectory) {
        QVERIFY(QDir{}.mkpath(m_tool->inCheckout()));
        QVERIFY(QDir{}.mkpath(m_tool->onSearchPath()));
    } else {
        m_tool->write("echo checkout", m_tool->inCheckout(), StandInTool::Mode::notExecutable);
        m_tool->write("echo search path", m_tool->onSearchPath(), StandInTool::Mode::notExecutable);
    }
    m_tool->write("echo user install", m_tool->inUserInstall());
    QCOMPARE(runTool().stdOut, u"user install\n"_s);
}

void TestVornaCLIRunner::namesTheToolWhenItIsNowhere() {
    QCOMPARE(VornaCLIRunner::resolveVornaExecutable(), std::string{"vorna"});
}

void TestVornaCLIRunner::searchThatFailedIsNotBelieved() {
    const QString which = m_tool->file(u"which"_s);
    m_tool->write("echo checkout", m_tool->inCheckout());
    m_tool->write("echo /found/$1", which);
    QCOMPARE(VornaCLIRunner::resolveVornaExecutable(which.toStdString()), std::string{"/found/vorna"});
    m_tool->write("echo /found/$1; exit 1", which);
    QCOMPARE(VornaCLIRunner::resolveVornaExecutable(which.toStdString()), m_tool->inCheckout().toStdString());
}

void TestVornaCLIRunner::missingToolIsReportedInASentence() {
    const Result result = runTool({u"desk"_s, u"backup"_s});
    QCOMPARE(result, (Result{.exitCode = 127, .stdOut = {}, .stdErr = missingText}));
    QCOMPARE(result.summary(), missingText);
}

void TestVornaCLIRunner::fileOfThatNameInTheCurrentDirectoryIsNotTheTool() {
    m_tool->write("echo wrong one", m_tool->file(u"elsewhere/vorna"_s));
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_tool->file(u"elsewhere"_s)));
    const Result result = runTool();
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(result, (Result{.exitCode = 127, .stdOut = {}, .stdErr = missingText}));
}

void TestVornaCLIRunner::toolThatIsNotExecutableIsReported() {
    m_tool->write("echo never", m_tool->file(u"interpreter"_s), StandInTool::Mode::notExecutable);
    const QByteArray interpreter = QFile::encodeName(m_tool->file(u"interpreter"_s));
    StandInTool::writeFile("#!" + interpreter + "\n", m_tool->onSearchPath(), StandInTool::Mode::executable);
    QCOMPARE(runTool(), (Result{.exitCode = 127, .stdOut = {}, .stdErr = u"The command “vorna” is not executable."_s}));
}

void TestVornaCLIRunner::toolWithoutItsInterpreterIsReported() {
    StandInTool::writeFile("#!/nonexistent/interpreter\n", m_tool->onSearchPath(), StandInTool::Mode::executable);
    const QString text = u"The command “vorna” could not be started: the program that it needs is missing."_s;
    QCOMPARE(runTool(), (Result{.exitCode = 127, .stdOut = {}, .stdErr = text}));
}

void TestVornaCLIRunner::fileThatIsNoProgramIsReported() {
    StandInTool::writeFile("neither script nor binary\n", m_tool->onSearchPath(), StandInTool::Mode::executable);
    const Result result = runTool();
    QCOMPARE(result.exitCode, 127);
    QVERIFY2(result.stdErr.startsWith(u"The command “vorna” could not be started: "_s), qPrintable(result.stdErr));
    QVERIFY(result.stdErr.endsWith(u'.'));
}

void TestVornaCLIRunner::reportsHowTheToolEnded_data() {
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("exit 0") << QByteArray{"exit 0"} << 0;
    QTest::newRow("exit 3") << QByteArray{"exit 3"} << 3;
    QTest::newRow("exit 255") << QByteArray{"exit 255"} << 255;
    QTest::newRow("killed") << QByteArray{"kill -KILL $$"} << SIGKILL;
    QTest::newRow("aborted") << QByteArray{"kill -ABRT $$"} << SIGABRT;
}

void TestVornaCLIRunner::reportsHowTheToolEnded() {
    QFETCH(QByteArray, script);
    m_tool->write("ulimit -c 0; echo out; echo err >&2; " + script);
    const Result result = runTool();
    QTEST(result.exitCode, "exitCode");
    QCOMPARE(result.stdOut, u"out\n"_s);
    QCOMPARE(result.stdErr, u"err\n"_s);
}

void TestVornaCLIRunner::reportsExitStatusWhenChildSignalsWereIgnored() {
    m_tool->write("exit 3");
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    const Result result = runTool();
    std::signal(SIGCHLD, before);
    QCOMPARE(result.exitCode, 3);
}

void TestVornaCLIRunner::keepsTheStreamsApart() {
    m_tool->write("echo error >&2; echo output; echo more >&2");
    QCOMPARE(runTool(), (Result{.exitCode = 0, .stdOut = u"output\n"_s, .stdErr = u"error\nmore\n"_s}));
}

void TestVornaCLIRunner::streamThatIsNotUtf8IsEmptyAlone_data() {
    QTest::addColumn<QByteArray>("escapes");
    QTest::newRow("a stray byte") << QByteArray{R"(fine \377 fine)"};
    QTest::newRow("cut off at the end") << QByteArray{R"(fine \342\202)"};
    QTest::newRow("overlong") << QByteArray{R"(\300\257)"};
    QTest::newRow("a surrogate") << QByteArray{R"(\355\240\200)"};
    QTest::newRow("beyond Unicode") << QByteArray{R"(\364\220\200\200)"};
}

void TestVornaCLIRunner::streamThatIsNotUtf8IsEmptyAlone() {
    QFETCH(QByteArray, escapes);
    m_tool->write("printf '" + escapes + "'; printf fine >&2");
    QCOMPARE(runTool(), (Result{.exitCode = 0, .stdOut = {}, .stdErr = u"fine"_s}));
    m_tool->write("printf '" + escapes + "' >&2; printf fine");
    QCOMPARE(runTool(), (Result{.exitCode = 0, .stdOut = u"fine"_s, .stdErr = {}}));
}

void TestVornaCLIRunner::validTextArrivesUnchanged_data() {
    QTest::addColumn<QByteArray>("escapes");
    QTest::addColumn<QString>("text");
    QTest::newRow("many scripts") << QByteArray{"Grüße · 日本語 · 🙂"} << u"Grüße · 日本語 · 🙂"_s;
    QTest::newRow("a null character") << QByteArray{R"(a\000b)"} << u"a\0b"_s;
    QTest::newRow("a byte order mark") << QByteArray{R"(\357\273\277a)"} << u"\ufeff"_s + u'a';
    QTest::newRow("a non-character") << QByteArray{R"(\357\277\277)"} << QString{QChar{0xffff}};
    QTest::newRow("line ends of all kinds") << QByteArray{R"(a\r\nb\rc\n)"} << u"a\r\nb\rc\n"_s;
}

void TestVornaCLIRunner::validTextArrivesUnchanged() {
    QFETCH(QByteArray, escapes);
    m_tool->write("printf '" + escapes + "'");
    QTEST(runTool().stdOut, "text");
}

void TestVornaCLIRunner::outputOfAPipeFullComesAtOnce() {
    constexpr int pipeFull = 64 * 1024;
    StandInTool::writeFile(QByteArray{pipeFull, 'x'}, m_tool->file(u"text"_s));
    m_tool->write(R"(cat "$1"; exec cat "$1" >&2)");
    QElapsedTimer clock;
    clock.start();
    const Result result = runTool({m_tool->file(u"text"_s)});
    QVERIFY(std::chrono::milliseconds{clock.elapsed()} < 30s);
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.stdOut.size(), pipeFull);
    QCOMPARE(result.stdErr.size(), pipeFull);
}

void TestVornaCLIRunner::floodWaitsForTheDeadline_data() {
    QTest::addColumn<int>("bytes");
    QTest::addColumn<QByteArray>("redirection");
    QTest::newRow("one byte too many") << 65'537 << QByteArray{};
    QTest::newRow("10 MiB") << 10 * 1024 * 1024 << QByteArray{};
    QTest::newRow("10 MiB of complaints") << 10 * 1024 * 1024 << QByteArray{" >&2"};
}

void TestVornaCLIRunner::floodWaitsForTheDeadline() {
    QFETCH(int, bytes);
    QFETCH(QByteArray, redirection);
    StandInTool::writeFile(QByteArray{bytes, 'x'}, m_tool->file(u"text"_s));
    m_tool->write("exec cat \"$1\"" + redirection);
    QElapsedTimer clock;
    clock.start();
    const Result result = runTool({m_tool->file(u"text"_s)}, 1.0);
    QVERIFY(std::chrono::milliseconds{clock.elapsed()} >= 1s);
    QCOMPARE(result.exitCode, SIGTERM);
    const qsizetype arrived = (redirection.isEmpty() ? result.stdOut : result.stdErr).size();
    QVERIFY2(arrived >= 64 * 1024, qPrintable(QString::number(arrived)));
    QVERIFY2(arrived <= 1024 * 1024, qPrintable(QString::number(arrived)));
}

void TestVornaCLIRunner::terminatesOnceAndWaitsForTheToolToObey() {
    m_tool->write("trap 'echo asked' TERM\n"
                  "for turn in 1 2 3 4 5 6 7 8 9 10 11 12; do sleep 0.1; done\n"
                  "echo obeyed; exit 4");
    QElapsedTimer clock;
    clock.start();
    const Result result = runTool({}, 0.3);
    QVERIFY(std::chrono::milliseconds{clock.elapsed()} >= 1200ms);
    QCOMPARE(result.exitCode, 4);
    QCOMPARE(result.stdOut, u"asked\nobeyed\n"_s);
}

void TestVornaCLIRunner::toolThatIgnoresTheRequestIsReadToItsEnd() {
    constexpr int bytes = 300'000;
    StandInTool::writeFile(QByteArray{bytes, 'x'}, m_tool->file(u"text"_s));
    m_tool->write("trap '' TERM; cat \"$1\"; exit 5");
    const Result result = runTool({m_tool->file(u"text"_s)}, 0.3);
    QCOMPARE(result.exitCode, 5);
    QCOMPARE(result.stdOut.size(), bytes);
}

void TestVornaCLIRunner::endlessFloodIsCutBehindAWholeCharacter() {
    constexpr qsizetype mostBytes = 16 * 1024 * 1024;
    constexpr qsizetype pipeFull = 64 * 1024;
    const QString character = u"€"_s;
    m_tool->write("trap '' TERM; yes € | tr -d '\\n'; exit 5");
    const Result result = runTool({}, 0.5);
    QCOMPARE(result.exitCode, 5);
    const auto size = result.stdOut.size();
    const auto bytesOfOne = character.toUtf8().size();
    QVERIFY2(size >= mostBytes / bytesOfOne - 1, qPrintable(QString::number(size)));
    QVERIFY2(size <= (mostBytes + pipeFull) / bytesOfOne, qPrintable(QString::number(size)));
    QCOMPARE(result.stdOut.count(character), size);
}

void TestVornaCLIRunner::fullStreamOfComplaintsDoesNotHoldUpTheOutput() {
    constexpr int bytes = 300'000;
    StandInTool::writeFile(QByteArray{bytes, 'x'}, m_tool->file(u"text"_s));
    m_tool->write("trap '' TERM; cat \"$1\" >&2; echo done; exit 5");
    const Result result = runTool({m_tool->file(u"text"_s)}, 0.5);
    QCOMPARE(result.exitCode, 5);
    QCOMPARE(result.stdOut, u"done\n"_s);
    QCOMPARE(result.stdErr.size(), bytes);
}

void TestVornaCLIRunner::readsOnWhileAGrandchildHoldsTheStreams() {
    m_tool->write("(sleep 1; echo late; echo late error >&2) & echo early; exit 6");
    QElapsedTimer clock;
    clock.start();
    const Result result = runTool();
    QVERIFY(std::chrono::milliseconds{clock.elapsed()} >= 1s);
    QCOMPARE(result, (Result{.exitCode = 6, .stdOut = u"early\nlate\n"_s, .stdErr = u"late error\n"_s}));
}

void TestVornaCLIRunner::doesNotWaitForAGrandchildWithStreamsOfItsOwn() {
    m_tool->write("sleep 100 >/dev/null 2>&1 & echo $!");
    QElapsedTimer clock;
    clock.start();
    const Result result = runTool();
    const auto grandchild = static_cast<pid_t>(result.stdOut.trimmed().toLongLong());
    QVERIFY(grandchild > 0);
    QVERIFY(isAlive(grandchild));
    kill(grandchild, SIGKILL);
    QVERIFY(std::chrono::milliseconds{clock.elapsed()} < 30s);
    QCOMPARE(result.exitCode, 0);
}

void TestVornaCLIRunner::earlyEndDoesNotWaitForTheDeadline_data() {
    QTest::addColumn<double>("timeout");
    QTest::newRow("120 s") << 120.0;
    QTest::newRow("infinite") << infinity;
    QTest::newRow("absurd") << 1e300;
}

void TestVornaCLIRunner::earlyEndDoesNotWaitForTheDeadline() {
    QFETCH(double, timeout);
    m_tool->write("sleep 0.3; echo done");
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(runTool({}, timeout), (Result{.exitCode = 0, .stdOut = u"done\n"_s, .stdErr = {}}));
    QVERIFY(std::chrono::milliseconds{clock.elapsed()} < 30s);
}

void TestVornaCLIRunner::terminatesAtTheDeadline_data() {
    QTest::addColumn<double>("timeout");
    QTest::newRow("0.3 s") << 0.3;
    QTest::newRow("none") << 0.0;
    QTest::newRow("negative") << -1.0;
    QTest::newRow("negative infinity") << -infinity;
    QTest::newRow("not a number") << notANumber;
}

void TestVornaCLIRunner::terminatesAtTheDeadline() {
    QFETCH(double, timeout);
    m_tool->write("exec sleep 100");
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(runTool({}, timeout), (Result{.exitCode = SIGTERM, .stdOut = {}, .stdErr = {}}));
    QVERIFY(std::chrono::milliseconds{clock.elapsed()} < 30s);
    QVERIFY(!(timeout > 0) || std::chrono::milliseconds{clock.elapsed()} >= 300ms);
}

void TestVornaCLIRunner::isNotLongAfterTheDeadline() {
    constexpr auto deadline = 300ms;
    constexpr auto latest = deadline + 1s;
    constexpr int tries = 5; // a busy machine makes one late, but hardly all
    m_tool->write("exec sleep 100");
    auto soonest = std::chrono::milliseconds::max();
    for (int turn = 0; turn < tries && soonest > latest; ++turn) {
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(runTool({}, std::chrono::duration<double>{deadline}.count()).exitCode, SIGTERM);
        soonest = std::min(soonest, std::chrono::milliseconds{clock.elapsed()});
    }
    QVERIFY2(soonest <= latest, qPrintable(u"%1 ms"_s.arg(soonest.count())));
}

void TestVornaCLIRunner::twoHundredCallsRunAtTheSameTime() {
    constexpr int calls = 200;
    allowDescriptors(1024);
    const QByteArray gate = QFile::encodeName(m_tool->file(u"gate"_s));
    QVERIFY(mkfifo(gate.constData(), S_IRUSR | S_IWUSR) == 0);
    QVERIFY(QDir{}.mkpath(m_tool->file(u"arrived"_s)));
    m_tool->write(R"(cd "${0%/*}/.."; : > "arrived/$1"; : < gate; echo "$1")");

    const auto threadsBefore = threads();
    const auto descriptorsBefore = openDescriptors();
    std::vector<Result> results;
    for (int call = 0; call < calls; ++call) {
        runInto(&results, QStringList{QString::number(call)}, 600);
    }
    QTRY_COMPARE_WITH_TIMEOUT(entries(m_tool->file(u"arrived"_s)), calls, patienceMs);
    QVERIFY(results.empty());
    const int opened = open(gate.constData(), O_RDWR | O_CLOEXEC);
    QTRY_COMPARE_WITH_TIMEOUT(results.size(), std::size_t{calls}, patienceMs);
    close(opened);

    QSet<int> answers;
    for (const Result& result : results) {
        QCOMPARE(result.exitCode, 0);
        answers.insert(result.stdOut.trimmed().toInt());
    }
    QCOMPARE(answers.size(), calls);
    QTRY_COMPARE(threads(), threadsBefore);
    QTRY_COMPARE(openDescriptors(), descriptorsBefore);
}

void TestVornaCLIRunner::leavesNoDescriptorThreadOrZombie() {
    m_tool->write("case $1 in slow) exec sleep 100;; *) echo hello;; esac");
    const auto threadsBefore = threads();
    const auto descriptorsBefore = openDescriptors();
    for (int turn = 0; turn < 3; ++turn) {
        QCOMPARE(runTool({u"quick"_s}).stdOut, u"hello\n"_s);
        QCOMPARE(runTool({u"slow"_s}, 0.0).exitCode, SIGTERM);
        QTRY_COMPARE(openDescriptors(), descriptorsBefore);
        QCOMPARE(threads(), threadsBefore);
        QVERIFY(!hasChild());
    }
    QVERIFY(QFile::remove(m_tool->onSearchPath()));
    QCOMPARE(runTool().exitCode, 127);
    QTRY_COMPARE(openDescriptors(), descriptorsBefore);
    QCOMPARE(threads(), threadsBefore);
    QVERIFY(!hasChild());
}

void TestVornaCLIRunner::answersOnTheMainThreadWhichStaysFree() {
    m_tool->write("sleep 0.6");
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&ticks] { ++ticks; });
    timer.start(20ms);

    std::vector<Result> results;
    QThread* answeredOn = nullptr;
    noteThread(&results, &answeredOn);
    QVERIFY(results.empty());
    QTRY_COMPARE_WITH_TIMEOUT(results.size(), std::size_t{1}, patienceMs);
    QCOMPARE(answeredOn, QCoreApplication::instance()->thread());
    QVERIFY2(ticks >= 5, qPrintable(QString::number(ticks)));
}

void TestVornaCLIRunner::passesTheEnvironmentUnchanged() {
    qputenv("VORNA_TEST_TEXT", "two words; $(never) \"run\" Grüße");
    QVERIFY(beTheToolOurselves());
    const QByteArray expected = environment();
    const Result result = runTool({u"--play"_s, u"environment"_s});
    qunsetenv("VORNA_TEST_TEXT");
    QCOMPARE(result.stdOut.toUtf8(), expected);
}

void TestVornaCLIRunner::passesArgumentsUntouched() {
    const QStringList arguments{u"two words"_s,
                                u"\"double\" 'single'"_s,
                                u"$(echo never) `x` $HOME"_s,
                                QString(),
                                u"*"_s,
                                u"back\\slash"_s,
                                u"line\nfeed"_s,
                                u"日本語 🙂"_s,
                                u"--yes"_s,
                                u"-"_s,
                                u"; exit 9"_s};
    m_tool->write(R"(for argument in "$@"; do printf '%s\037' "$argument"; done)");
    const Result result = runTool(arguments);
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.stdOut.chopped(1).split(QChar{037}), arguments);
}

void TestVornaCLIRunner::passesStandardInput() {
    m_tool->write("exec cat");
    StandInTool::writeFile("a line\n", m_tool->file(u"input"_s));
    const int kept = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    const int input = open(QFile::encodeName(m_tool->file(u"input"_s)).constData(), O_RDONLY | O_CLOEXEC);
    if (kept < 0 || input < 0) {
        QFAIL("no descriptor");
    }
    dup2(input, STDIN_FILENO);
    close(input);
    const Result result = runTool();
    dup2(kept, STDIN_FILENO);
    close(kept);
    QCOMPARE(result.stdOut, u"a line\n"_s);
}

void TestVornaCLIRunner::passesNoOtherDescriptor() {
    const int leaky = open("/dev/null", O_RDONLY);
    QVERIFY(leaky > STDERR_FILENO);
    QVERIFY(beTheToolOurselves());
    const Result result = runTool({u"--play"_s, u"descriptors"_s});
    close(leaky);
    QCOMPARE(result.stdOut, u"0\n1\n2\n"_s);
}

void TestVornaCLIRunner::passesNoSignalState() {
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    sigaddset(&blocked, SIGUSR1);
    sigset_t before;
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const auto pipeBefore = std::signal(SIGPIPE, SIG_IGN);
    const auto userBefore = std::signal(SIGUSR2, SIG_IGN);

    QVERIFY(beTheToolOurselves());
    const Result states = runTool({u"--play"_s, u"signals"_s});
    m_tool->write("exec sleep 100");
    const Result ended = runTool({}, 0.3);

    std::signal(SIGPIPE, pipeBefore);
    std::signal(SIGUSR2, userBefore);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    QCOMPARE(states.stdOut, u"neither blocked nor ignored: all others\n"_s);
    QCOMPARE(ended.exitCode, SIGTERM);
}

void TestVornaCLIRunner::worksWithoutStandardStreamsOfOurOwn() {
    m_tool->write("echo output; echo error >&2; exec true");
    constexpr std::array streams{STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO};
    std::array<int, streams.size()> kept{};
    for (const int stream : streams) {
        kept.at(static_cast<std::size_t>(stream)) = fcntl(stream, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
        close(stream);
    }
    const Result result = runTool();
    for (const int stream : streams) {
        dup2(kept.at(static_cast<std::size_t>(stream)), stream);
        close(kept.at(static_cast<std::size_t>(stream)));
    }
    QCOMPARE(result, (Result{.exitCode = 0, .stdOut = u"output\n"_s, .stdErr = u"error\n"_s}));
}

void TestVornaCLIRunner::answersWhenThereAreNoDescriptors() {
    QVERIFY(QDir{}.mkpath(m_tool->inUserInstall().section(u'/', 0, -2)));
    QVERIFY(QFile::link(u"/bin/echo"_s, m_tool->inUserInstall()));
    rlimit before{};
    QVERIFY(getrlimit(RLIMIT_NOFILE, &before) == 0);
    const int lowestFree = open("/dev/null", O_RDONLY | O_CLOEXEC);
    close(lowestFree);
    std::vector<Result> results;
    for (int spare = 0; spare <= 8; ++spare) {
        rlimit scarce = before;
        scarce.rlim_cur = static_cast<rlim_t>(lowestFree + spare);
        QVERIFY(setrlimit(RLIMIT_NOFILE, &scarce) == 0);
        results.push_back(runTool({u"hello"_s}));
    }
    QVERIFY(setrlimit(RLIMIT_NOFILE, &before) == 0);

    const QString text = u"The command “vorna” could not be started: Too many open files."_s;
    const Result refused{.exitCode = 127, .stdOut = {}, .stdErr = text};
    QCOMPARE(results.front(), refused);
    QCOMPARE(results.back().stdOut, u"hello\n"_s);
    for (const Result& result : results) {
        QVERIFY(result == refused || result.stdOut == u"hello\n"_s);
    }
}

void TestVornaCLIRunner::answersWhenThereAreNoThreads_data() {
    QTest::addColumn<int>("threads");
    QTest::newRow("none") << 1;
    QTest::newRow("none for the watchdog") << 2;
}

void TestVornaCLIRunner::answersWhenThereAreNoThreads() {
    QFETCH(int, threads);
    if (geteuid() != 0 || OwnProcess::threads() == 0) {
        QSKIP("needs to become a user without other processes, and a system that counts a user's threads");
    }
    QProcess program;
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(QCoreApplication::applicationFilePath(), {u"--play"_s, u"scarcity"_s, QString::number(threads)});
    QVERIFY(program.waitForFinished(patienceMs));
    QCOMPARE(QString::fromUtf8(program.readAll()),
             u"127 The command “vorna” could not be started: Resource temporarily unavailable.\n"_s);
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
}

void TestVornaCLIRunner::quittingLeavesTheToolRunning_data() {
    QTest::addColumn<QString>("scene");
    QTest::newRow("which runs on when the program is gone") << u"quit"_s;
    QTest::newRow("which ends before the program is gone") << u"linger"_s;
}

void TestVornaCLIRunner::quittingLeavesTheToolRunning() {
    QFETCH(QString, scene);
    const bool lingers = scene == u"linger"_s;
    m_tool->write(QByteArray{"cd \"${0%/*}/..\"; echo $$ > started.new; mv started.new started; "} +
                  (lingers ? "sleep 0.5; echo > ended" : "exec sleep 100"));
    QElapsedTimer clock;
    clock.start();
    QProcess program;
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.setWorkingDirectory(m_tool->file(u"."_s));
    program.start(QCoreApplication::applicationFilePath(), {u"--play"_s, scene});
    QVERIFY(program.waitForFinished(patienceMs));
    const auto tool = static_cast<pid_t>(numberIn(m_tool->file(u"started"_s)));
    QVERIFY(tool > 0);
    const bool alive = isAlive(tool);
    kill(tool, SIGKILL);

    QVERIFY(std::chrono::milliseconds{clock.elapsed()} < 50s);
    QCOMPARE(QString::fromUtf8(program.readAll()), u"quit\n"_s);
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
    QCOMPARE(alive, !lingers);
}

namespace {

QCoro::Task<> printResult(bool* done) {
    auto call = VornaCLIRunner::run(QStringList{}, ample);
    const Result result = co_await call;
    std::printf("%d %s\n", result.exitCode, qPrintable(result.summary()));
    *done = true;
    QCoreApplication::quit();
}

void printDescriptors() {
    constexpr int mostLookedAt = 4096;
    for (int descriptor = 0; descriptor < mostLookedAt; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) != -1) {
            std::printf("%d\n", descriptor);
        }
    }
}

void printEnvironment() {
    const QByteArray variables = environment();
    (void)std::fwrite(variables.constData(), 1, static_cast<std::size_t>(variables.size()), stdout);
}

void printSignals() {
    sigset_t blocked;
    sigemptyset(&blocked);
    pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
    for (int number = 1; number < NSIG; ++number) {
        struct sigaction action{};
        const bool isOurs = sigaction(number, nullptr, &action) == 0; // and not the C library's
        if (isOurs && (sigismember(&blocked, number) == 1 || action.sa_handler == SIG_IGN)) {
            std::printf("%d\n", number);
        }
    }
    std::puts("neither blocked nor ignored: all others");
}

/// A program that quits while the tool is running, and lets the tool end before it ends itself, or not.
int playQuitting(int argc, char** argv, bool lingers) {
    bool done = false;
    {
        QCoreApplication app{argc, argv};
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &app, [] {
            if (QFile::exists(u"started"_s)) {
                QCoreApplication::quit();
            }
        });
        timer.start(10ms);
        printResult(&done);
        QCoreApplication::exec();
    }
    while (lingers && !QFile::exists(u"ended"_s)) {
        QThread::msleep(10);
    }
    QThread::msleep(lingers ? 300 : 0); // the watchdog looks every 0.1 s
    std::puts("quit");
    return 0;
}

/// A program whose user may have so many threads and no more.
int playScarcity(int argc, char** argv, int threads) {
    QCoreApplication app{argc, argv};
    constexpr uid_t lonelyUser = 61'234;
    const rlimit scarce{static_cast<rlim_t>(threads), static_cast<rlim_t>(threads)};
    if (setrlimit(RLIMIT_NPROC, &scarce) != 0 || setuid(lonelyUser) != 0) {
        return 1;
    }
    bool done = false;
    printResult(&done);
    const int status = done ? 0 : QCoreApplication::exec();
    std::fflush(stdout);
    std::_Exit(status); // a leak checker would want a thread, too
}

struct Report {
    std::string_view scene;
    void (*print)();
};

/// What this program says of itself when it is the tool.
constexpr std::array reports{
    Report{"descriptors", printDescriptors},
    Report{"environment", printEnvironment},
    Report{"signals", printSignals},
};

int play(int argc, char** argv) {
    const std::string_view scene{argv[2]};
    if (const auto* report = std::ranges::find(reports, scene, &Report::scene); report != reports.end()) {
        report->print();
        return 0;
    }
    return scene == "scarcity" ? playScarcity(argc, argv, std::atoi(argv[3]))
                               : playQuitting(argc, argv, scene == "linger");
}

}

int main(int argc, char** argv) {
    if (argc > 2 && QByteArray{argv[1]} == "--play") {
        return play(argc, argv);
    }
    QCoreApplication app{argc, argv};
    TestVornaCLIRunner test;
    return QTest::qExec(&test, argc, argv);
}

#include "TestVornaCLIRunner.moc"
