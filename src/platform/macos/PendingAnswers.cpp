#include "platform/macos/PendingAnswers.h"

#include <utility>

PendingAnswers::Ticket PendingAnswers::keep(Answer answer) {
    m_answers.emplace(++m_latest, std::move(answer));
    return m_latest;
}

void PendingAnswers::deliver(Ticket ticket, long value) {
    if (const auto waiting = m_answers.extract(ticket); !waiting.empty()) {
        waiting.mapped()(value);
    }
}
