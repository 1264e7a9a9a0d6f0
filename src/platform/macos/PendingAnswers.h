#pragma once

#include "support/Deferred.h"

#include <QtGlobal>

#include <unordered_map>

/// Coroutines that wait for an answer that another thread will find. They stay on the main thread, where they are
/// resumed; the other thread carries a ticket and nothing else. Main thread only.
class PendingAnswers final {
public:
    using Ticket = quint64;

    struct Question final {
        Ticket ticket;
        Deferred<long> answer;
    };

    PendingAnswers() = default;
    Q_DISABLE_COPY_MOVE(PendingAnswers)
    /// Answers what is still open with 0.
    ~PendingAnswers();

    [[nodiscard]] Question ask();

    /// Resumes the coroutine that waits under `ticket`, once.
    void deliver(Ticket ticket, long value);

private:
    std::unordered_map<Ticket, Deferred<long>> m_open;
    Ticket m_latest = 0;
};
