#pragma once

#include <QtGlobal>

#include <functional>
#include <unordered_map>

/// Functions that wait for an answer that another thread will find. They stay on the main thread, where they are called
/// and dropped; the other thread carries a ticket and nothing else. Main thread only.
class PendingAnswers final {
public:
    using Answer = std::function<void(long value)>;
    using Ticket = quint64;

    /// Keeps `answer` until it is delivered, or until this object goes.
    [[nodiscard]] Ticket keep(Answer answer);

    /// Calls the function that waits under `ticket`, once.
    void deliver(Ticket ticket, long value);

private:
    std::unordered_map<Ticket, Answer> m_answers;
    Ticket m_latest = 0;
};
