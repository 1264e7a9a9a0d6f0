#include "cli/ChildProcess.h"

#include "cli/StandInTool.h"
#include "cli/VornaCLIRunner.h"
#include "support/OwnProcess.h"

#include <QTest>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <functional>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/wait.h>

extern char** environ; // NOLINT(readability-redundant-declaration): glibc declares it too, the Mac does not.

using namespace Qt::StringLiterals;

namespace {

constexpr int waitMs = 60'000;
char* ownPath = nullptr;

struct Outcome final {
    int status = 0;
    QString output;
    QString errors;
};

bool ends(ChildProcess& child) {
    return QTest::qWaitFor([&child] { return !child.isRunning(); }, waitMs);
}

Outcome outcomeOf(const std::string& executable, const QStringList& arguments) {
    ChildProcess child = ChildProcess::launch(executable, arguments).value();
    const auto output = QCoro::waitFor(child.readOutput());
    const auto errors = QCoro::waitFor(child.readErrors());
    return {ends(child) ? child.status() : -1, output.value_or(QString{}), errors.value_or(QString{})};
}

Outcome shell(const QString& script) {
    return outcomeOf("/bin/sh", {u"-c"_s, script});
}

/// What this program says of itself as the child.
QString scene(const QString& name) {
    return outcomeOf(ownPath, {u"--play"_s, name}).output;
}

/// The same while other descriptors stand in for our standard ones; none does where that is -1.
Outcome shellOver(const QList<int>& others, const QString& script, const std::function<void()>& also = [] {}) {
    QList<int> kept;
    for (int stream = 0; stream < 3; ++stream) {
        kept.append(fcntl(stream, F_DUPFD_CLOEXEC, 3));
        others[stream] < 0 ? close(stream) : dup2(others[stream], stream);
    }
    const Outcome outcome = shell(script);
    also();
    for (int stream = 0; stream < 3; ++stream) {
        dup2(kept[stream], stream);
        close(kept[stream]);
    }
    return outcome;
}

}

class TestChildProcess final : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { QVERIFY(!OwnProcess::hasChild()); }

    void saysHowItEnded() {
        QCOMPARE(shell(u"exit 0"_s).status, 0);
        QCOMPARE(shell(u"exit 3"_s).status, 3);
        QCOMPARE(shell(u"exit 255"_s).status, 255);
        QCOMPARE(shell(u"kill -KILL $$"_s).status, SIGKILL);
        QCOMPARE(shell(u"ulimit -c 0; kill -ABRT $$"_s).status, SIGABRT);
        const auto before = std::signal(SIGCHLD, SIG_IGN);
        const int status = shell(u"exit 4"_s).status;
        std::signal(SIGCHLD, before);
        QCOMPARE(status, 4);
    }

    void processThatIsNotShownToUsRunsOn() {
        ChildProcess child{shell(u"sleep 100 >/dev/null 2>&1 & echo $!"_s).output.toInt(), {}, {}}; // as one debugged
        QVERIFY(child.isRunning());
        child.terminate();
        QVERIFY(ends(child));
        QCOMPARE(child.status(), ChildProcess::unknownStatus);
    }

    void requestAfterTheEndReachesNobody() { QCOMPARE(scene(u"late request"_s), u"still here\n"_s); }

    void requestReachesAStoppedChildAndNobodyElse() {
        const auto script = u"trap 'echo asked; exit 3' TERM; trap 'echo went on' CONT\n"
                            "(trap 'echo wrong' TERM CONT; echo ready; sleep 1; echo left alone) & sleep 0.2\n"
                            "kill -STOP $$; while :; do sleep 0.1; done"_s;
        auto child = ChildProcess::launch("/bin/sh", {u"-c"_s, script});
        auto reading = child->readOutput();
        QVERIFY(QTest::qWaitFor([] { return OwnProcess::hasChildThat(WSTOPPED); }, waitMs));
        child->terminate();
        QVERIFY(ends(*child));
        QCOMPARE(child->status(), 3);
        QCOMPARE(QCoro::waitFor(reading), u"ready\nasked\nleft alone\n"_s);
    }

    void passesArgumentsUntouched() {
        QStringList arguments{u"two words"_s, u"\"double\" 'single'"_s, u"$(echo never) `x` $HOME"_s, QString(),
                              u"*"_s};
        arguments << u"back\\slash"_s << u"line\nfeed"_s << u"日本語 🙂"_s << u"--yes"_s;
        const auto script = uR"(for argument in "$@"; do printf '%s\037' "$argument"; done)"_s;
        const Outcome outcome = outcomeOf("/bin/sh", QStringList{u"-c"_s, script, u"sh"_s} + arguments);
        QCOMPARE(outcome.output.chopped(1).split(QChar{037}), arguments);
    }

    void passesEnvironmentAndDirectory() {
        qputenv("VORNA_TEST_TEXT", "two words; $(never) \"run\" Grüße");
        QByteArray expected;
        for (char** variable = environ; *variable != nullptr; ++variable) {
            expected += QByteArray{*variable} + '\0';
        }
        QCOMPARE(outcomeOf("/usr/bin/env", {u"-0"_s}).output.toUtf8(), expected);
        qunsetenv("VORNA_TEST_TEXT");
        const StandInTool place;
        const QString before = QDir::currentPath();
        QDir::setCurrent(place.home());
        QCOMPARE(shell(u"pwd -P"_s).output.trimmed(), QDir{place.home()}.canonicalPath());
        QDir::setCurrent(before);
    }

    void passesStandardInputAndNoOtherDescriptor() {
        const int leaky = open("/dev/null", O_RDONLY);
        const StandInTool place;
        StandInTool::writeFile("a line", place.file(u"input"_s));
        const int input = open(QFile::encodeName(place.file(u"input"_s)).constData(), O_RDONLY | O_CLOEXEC);
        const QString script = u"n=0; while [ $n -lt 99 ]; do [ ! -e /dev/fd/$n ] || echo $n; n=$((n + 1)); done"_s;
        QCOMPARE(shell(script).output, u"0\n1\n2\n"_s);
        QCOMPARE(shellOver({input, 1, 2}, u"cat"_s).output, u"a line"_s);
        close(input);
        close(leaky);
    }

    void worksWithoutStandardStreamsOfOurOwn() {
        std::optional<Pipe> pipe;
        const Outcome outcome =
            shellOver({-1, -1, -1}, u"echo output; echo error >&2"_s, [&] { pipe = *Pipe::open(); });
        QCOMPARE(outcome.output + outcome.errors, u"output\nerror\n"_s);
        QVERIFY(pipe->reading.number() > STDERR_FILENO && pipe->writing.number() > STDERR_FILENO);
    }

    void passesNoSignalState() {
        for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGUSR1, SIGUSR2}) {
            sigset_t blocked;
            sigset_t maskBefore;
            sigemptyset(&blocked);
            sigaddset(&blocked, number);
            pthread_sigmask(SIG_BLOCK, &blocked, &maskBefore);
            const auto before = std::signal(number, number == SIGTERM ? SIG_DFL : SIG_IGN);
            const int status = shell(u"ulimit -c 0; kill -%1 $$"_s.arg(number)).status;
            std::signal(number, before);
            pthread_sigmask(SIG_SETMASK, &maskBefore, nullptr);
            QCOMPARE(status, number);
        }
    }

    void saysWhenThereAreNoDescriptors() {
        const auto descriptors = OwnProcess::openDescriptors();
        const int lowestFree = dup(STDIN_FILENO);
        close(lowestFree);
        rlimit before{};
        QVERIFY(getrlimit(RLIMIT_NOFILE, &before) == 0);
        for (int spare = 0; spare < 4; ++spare) {
            const rlimit scarce{static_cast<rlim_t>(lowestFree + spare), before.rlim_max};
            QVERIFY(setrlimit(RLIMIT_NOFILE, &scarce) == 0);
            const auto child = ChildProcess::launch("/bin/sh", {});
            QVERIFY(setrlimit(RLIMIT_NOFILE, &before) == 0);
            QCOMPARE(child ? 0 : child.error(), EMFILE);
        }
        QCOMPARE(OwnProcess::openDescriptors(), descriptors);
    }

    void programWithoutATerminalDoesNotStopWithItsTool() {
        const StandInTool tool;
        tool.write("read line; echo \"got $line\"");
        QCOMPARE(scene(u"terminal"_s), u"15 exit 15\nended\n"_s);
    }

    void quittingLeavesTheToolRunning() {
        for (const QByteArray script : {"exec sleep 100", "exit 0", "sleep 100 & exit 0"}) {
            const StandInTool tool;
            tool.write("cd ${0%/*}/../home; echo $$ > new; mv new started; " + script);
            const QString before = QDir::currentPath();
            QVERIFY(QDir::setCurrent(tool.home()));
            const Outcome outcome = outcomeOf(ownPath, {u"--play"_s, u"quit"_s});
            QVERIFY(QDir::setCurrent(before));
            QFile started{tool.home() + u"/started"_s};
            QVERIFY(started.open(QIODevice::ReadOnly));
            const pid_t process = started.readAll().trimmed().toInt();
            QCOMPARE(OwnProcess::isAlive(process), script.startsWith("exec"));
            kill(-process, SIGKILL);
            QCOMPARE(outcome.output + outcome.errors, u"quit\n"_s);
            QCOMPARE(outcome.status, 0);
        }
    }
};

namespace {

void playLateRequest() {
    setsid(); // what goes wrong here ends this group alone
    auto child = ChildProcess::launch("/bin/sh", {u"-c"_s, u"exit 0"_s});
    while (child->isRunning()) {
        QThread::msleep(1);
    }
    child->terminate();
    std::puts("still here");
}

QCoro::Task<> printResult() {
    const auto result = co_await VornaCLIRunner::run({}, 0.5);
    std::printf("%d %s\n", result.exitCode, qPrintable(result.summary()));
    QCoreApplication::quit();
}

void playJob() {
    int count = 0;
    const QCoreApplication app{count, nullptr};
    printResult();
    QCoreApplication::exec();
}

/// A shell with job control, less everything else: starts a job in the background of a terminal and says how it went.
void playTerminal() {
    setsid();
    const int keyboard = posix_openpt(O_RDWR | O_NOCTTY);
    grantpt(keyboard);
    unlockpt(keyboard);
    const int terminal = open(ptsname(keyboard), O_RDWR);
    ioctl(terminal, TIOCSCTTY, 0);
    const pid_t job = fork();
    if (job == 0) {
        setpgid(0, 0);
        dup2(terminal, STDIN_FILENO);
        execl(ownPath, ownPath, "--play", "job", nullptr);
    }
    int status = 0;
    waitpid(job, &status, WUNTRACED);
    std::puts(WIFSTOPPED(status) ? "stopped" : "ended");
    kill(job, SIGKILL);
}

/// A program that quits while the tool is running or being read, and stays for long enough to notice its end.
void playQuitting() {
    {
        int count = 0;
        const QCoreApplication app{count, nullptr};
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &app, [] {
            if (QFile::exists(u"started"_s)) {
                QTimer::singleShot(300, QCoreApplication::instance(), &QCoreApplication::quit);
            }
        });
        timer.start(10);
        const auto call = VornaCLIRunner::run({}, 120);
        QCoreApplication::exec();
    }
    QThread::msleep(300);
    std::puts("quit");
}

using Scene = std::pair<std::string_view, void (*)()>;
constexpr std::array scenes{Scene{"late request", playLateRequest}, Scene{"job", playJob},
                            Scene{"terminal", playTerminal}, Scene{"quit", playQuitting}};

}

int main(int argc, char** argv) {
    ownPath = realpath(argv[0], nullptr);
    if (argc > 2 && std::string_view{argv[1]} == "--play") {
        std::ranges::find(scenes, std::string_view{argv[2]}, &Scene::first)->second();
        return 0;
    }
    QCoreApplication app{argc, argv};
    TestChildProcess test;
    return QTest::qExec(&test, argc, argv);
}

#include "TestChildProcess.moc"
