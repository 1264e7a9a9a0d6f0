#include "cli/VornaCLIRunner.h"

#include "cli/BackgroundCalls.h"
#include "cli/ChildProcess.h"
#include "cli/ToolCall.h"
#include "cli/Utf8Text.h"

#include <array>
#include <cstdlib>
#include <optional>
#include <utility>
#include <vector>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// Below the user's home directory, in the order in which they are tried.
constexpr std::array homeRelativeCandidates{"/dev/vorna/.venv/bin/vorna", "/.local/bin/vorna"};

std::optional<std::string> askWhich(const std::string& which, const std::string& command) {
    auto child = ChildProcess::launch(which, {command});
    if (!child || child->waitForExit() != 0) {
        return std::nullopt;
    }
    const std::string path = utf8Text(child->readOutput()).value_or(QString{}).trimmed().toStdString();
    return path.empty() ? std::nullopt : std::optional{path};
}

std::string homeDirectory() {
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') {
        return home;
    }
    passwd entry{};
    passwd* found = nullptr;
    std::array<char, 4096> strings{};
    getpwuid_r(getuid(), &entry, strings.data(), strings.size(), &found);
    return found != nullptr ? found->pw_dir : "";
}

bool isExecutableFile(const std::string& path) {
    struct stat status{};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(path.c_str(), X_OK) == 0;
}

std::vector<std::string> utf8Arguments(const QStringList& arguments) {
    std::vector<std::string> texts;
    for (const QString& argument : arguments) {
        texts.push_back(argument.toStdString());
    }
    return texts;
}

}

namespace VornaCLIRunner {

QString Result::summary() const {
    for (const QString* stream : {&stdOut, &stdErr}) {
        if (const QString text = stream->trimmed(); !text.isEmpty()) {
            return text;
        }
    }
    return exitCode != 0 ? u"exit %1"_s.arg(exitCode) : u"ok"_s;
}

std::string resolveVornaExecutable(const std::string& which) {
    if (const auto path = askWhich(which, toolName)) {
        return *path;
    }
    const std::string home = homeDirectory();
    for (const char* candidate : homeRelativeCandidates) {
        if (std::string path = home + candidate; isExecutableFile(path)) {
            return path;
        }
    }
    return toolName;
}

QCoro::Task<Result> run(QStringList arguments, double timeout) {
    const Deferred<ToolOutcome> answer;
    BackgroundCalls::shared().start([arguments = utf8Arguments(arguments),
                                     timeout] { return callTool(resolveVornaExecutable(), arguments, timeout); },
                                    answer);
    const ToolOutcome outcome = co_await answer;
    Result result;
    result.exitCode = outcome.exitCode;
    result.stdOut = utf8Text(outcome.output).value_or(QString{});
    result.stdErr = utf8Text(outcome.errors).value_or(QString{});
    co_return result;
}

}
