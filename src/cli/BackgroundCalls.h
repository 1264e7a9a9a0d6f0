#pragma once

#include "cli/ToolCall.h"
#include "support/Deferred.h"

#include <functional>
#include <memory>
#include <vector>

class QSocketNotifier;

/// Runs each call on a thread of its own and brings its outcome to the main thread, where the thread is joined. The
/// threads have no object and no event loop of Qt's, only its texts at most: they put their call into a shared mailbox
/// and wake the main thread through a pipe. What is still under way when the application ends is let go: its outcome
/// reaches nobody, and nothing waits for it. Main thread only.
class BackgroundCalls final {
public:
    using Work = std::function<ToolOutcome()>;

    [[nodiscard]] static BackgroundCalls& shared();

    /// Starts `work`, which may throw, and delivers its outcome once; a `launchFailure()` when there is no thread or no
    /// descriptor to be had.
    void start(Work work, const Deferred<ToolOutcome>& answer);

private:
    struct Call;
    class Mailbox;

    [[nodiscard]] int openMailbox();
    void closeMailbox();
    void collect();
    [[nodiscard]] std::unique_ptr<Call> take(const Call* call);
    void letGo();

    std::shared_ptr<Mailbox> m_mailbox;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::vector<std::unique_ptr<Call>> m_calls;
    std::vector<std::unique_ptr<Call>> m_letGo;
    bool m_endIsNoted = false;
};
