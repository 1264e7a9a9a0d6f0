#pragma once

#include "app/StatusModel.h"
#include "support/Deferred.h"

#include <QList>

/// A command-line tool that keeps how it was called and answers when the test says so. It outlives its model.
class FakeTool final {
public:
    using Result = VornaCLIRunner::Result;

    struct Call final {
        QStringList arguments;
        double timeout;
        Deferred<Result> answer;
    };

    QList<Call> calls;

    [[nodiscard]] StatusModel::ToolRunner runner() {
        return [this](QStringList arguments, double timeout) {
            calls.append({std::move(arguments), timeout, {}});
            return answered(calls.last().answer);
        };
    }

    /// Ends the runs that still wait, as a tool that failed.
    ~FakeTool() {
        for (const auto& call : calls) {
            call.answer.deliver({.exitCode = 1, .stdOut = {}, .stdErr = {}});
        }
    }
    FakeTool() = default;
    FakeTool(const FakeTool&) = delete;
    FakeTool& operator=(const FakeTool&) = delete;

private:
    static QCoro::Task<Result> answered(Deferred<Result> answer) { co_return co_await answer; }
};
