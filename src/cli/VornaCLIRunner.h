#pragma once

#include "support/Clock.h"
#include "support/Ticker.h"

#include <QCoro/QCoroTask>

#include <QString>
#include <QStringList>

#include <string>

/// Runs the platform's command-line tool once as a child process. No instances and no state; calls are independent and
/// may overlap. Call on the main thread, which never blocks; the answer comes there too.
namespace VornaCLIRunner {

struct Result final {
    qint32 exitCode = 0; ///< the child's status; 127 when it could not be started
    QString stdOut;      ///< empty when it is not UTF-8
    QString stdErr;      ///< empty when it is not UTF-8; why the child could not be started

    /// One line for a person: what the tool printed, else what it complained, else its status, else "ok".
    [[nodiscard]] QString summary() const;

    friend bool operator==(const Result&, const Result&) = default;
};

/// What a call takes from its surroundings; a test hands in others.
struct Surroundings final {
    std::string which = "/usr/bin/which";
    Clock clock = wallClock;
    Delay callLater = timerDelay;
};

/// `HOME` where that is absolute, else what the system has on record for this user; else empty.
[[nodiscard]] std::string homeDirectory();

/// The tool's path: from the search path, else the development checkout, else the user's own install, else its bare
/// name. Asks the program `which`, and believes it only when it exits with 0.
[[nodiscard]] QCoro::Task<std::string> resolveVornaExecutable(Surroundings surroundings = {});

/// Runs the tool with `arguments` and ends it (SIGTERM, once) when it outlives `timeout` seconds. Its output is read
/// only after that, so a tool that fills its pipe waits there until the time is over; what writes on without end then
/// is cut off after 16 MiB a stream. Never fails: see `Result`.
[[nodiscard]] QCoro::Task<Result> run(QStringList arguments, double timeout);
[[nodiscard]] QCoro::Task<Result> runIn(Surroundings surroundings, QStringList arguments, double timeout);

}
