#include "cli/VornaCLIRunner.h"

#include "cli/ChildProcess.h"
#include "cli/EventLoopWait.h"

#include <QCoreApplication>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <limits>
#include <system_error>
#include <utility>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace VornaCLIRunner {

namespace {

constexpr char toolName[] = "vorna";
/// Below the user's home directory, in the order in which they are tried.
constexpr std::array homeRelativeCandidates{"/dev/vorna/.venv/bin/vorna", "/.local/bin/vorna"};

constexpr auto watchInterval = 100ms;
constexpr auto searchInterval = 5ms;
constexpr double never = std::numeric_limits<double>::infinity();
constexpr qint32 launchFailureExitCode = 127;

/// As a floating-point number, so that any limit, however absurd, can be added and compared.
double secondsSinceEpoch(const Clock& clock) {
    return std::chrono::duration<double>(std::chrono::milliseconds{clock().toMSecsSinceEpoch()}).count();
}

/// Looks at once, and then again and again, until the child has ended or the time has come.
QCoro::Task<> watch(ChildProcess& child, const Surroundings& surroundings, std::chrono::milliseconds interval,
                    double deadline = never) {
    const EventLoopWait pause{
        [&](const auto& callback) { surroundings.callLater(*QCoreApplication::instance(), interval, callback); }};
    while (child.isRunning() && secondsSinceEpoch(surroundings.clock) < deadline) {
        co_await pause;
    }
}

QCoro::Task<std::string> askWhich(const Surroundings& surroundings) {
    auto child = ChildProcess::launch(surroundings.which, {QString::fromLatin1(toolName)});
    if (!child) {
        co_return {};
    }
    co_await watch(*child, surroundings, searchInterval);
    if (child->status() != 0) {
        co_return {};
    }
    const auto output = co_await child->readOutput();
    co_return output.value_or(QString{}).trimmed().toStdString();
}

bool isExecutableFile(const std::string& path) {
    struct stat status{};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(path.c_str(), X_OK) == 0;
}

Result launchFailure(const std::string& executable, int error) {
    const bool lacksAnother = error == ENOENT && executable != toolName && isExecutableFile(executable);
    const std::string reason = std::generic_category().message(error);
    return {.exitCode = launchFailureExitCode,
            .stdOut = {},
            .stdErr = u"The command “%1” could not be started: %2%3."_s.arg(
                QLatin1StringView{toolName}, QString::fromLocal8Bit(reason),
                lacksAnother ? u" (the program that it needs is missing)"_s : QString{})};
}

}

QString Result::summary() const {
    for (const QString* stream : {&stdOut, &stdErr}) {
        if (const QString text = stream->trimmed(); !text.isEmpty()) {
            return text;
        }
    }
    return exitCode != 0 ? u"exit %1"_s.arg(exitCode) : u"ok"_s;
}

std::string homeDirectory() {
    if (const char* home = std::getenv("HOME"); home != nullptr && *home == '/') {
        return home;
    }
    const passwd* entry = getpwuid(getuid());
    return entry != nullptr ? entry->pw_dir : "";
}

QCoro::Task<std::string> resolveVornaExecutable(Surroundings surroundings) {
    if (const std::string path = co_await askWhich(surroundings); !path.empty()) {
        co_return path;
    }
    const std::string home = homeDirectory();
    for (const char* candidate : homeRelativeCandidates) {
        if (const std::string path = home + candidate; isExecutableFile(path)) {
            co_return path;
        }
    }
    co_return toolName;
}

QCoro::Task<Result> run(QStringList arguments, double timeout) {
    return runIn({}, std::move(arguments), timeout);
}

QCoro::Task<Result> runIn(Surroundings surroundings, QStringList arguments, double timeout) {
    const std::string executable = co_await resolveVornaExecutable(surroundings);
    auto child = ChildProcess::launch(executable, arguments);
    if (!child) {
        co_return launchFailure(executable, child.error());
    }
    const double deadline = secondsSinceEpoch(surroundings.clock) + timeout;
    co_await watch(*child, surroundings, watchInterval, deadline);
    child->terminate();
    const auto readingOutput = child->readOutput();
    const auto readingErrors = child->readErrors();
    const auto output = co_await readingOutput;
    const auto errors = co_await readingErrors;
    co_await watch(*child, surroundings, watchInterval);
    co_return Result{child->status(), output.value_or(QString{}), errors.value_or(QString{})};
}

}
