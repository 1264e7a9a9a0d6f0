#include "platform/macos/PendingAnswers.h"

#include <utility>

PendingAnswers::~PendingAnswers() {
    for (const auto& [ticket, answer] : std::exchange(m_open, {})) {
        answer.deliver(0);
    }
}

PendingAnswers::Question PendingAnswers::ask() {
    const Question question{.ticket = ++m_latest, .answer = {}};
    m_open.emplace(question.ticket, question.answer);
    return question;
}

void PendingAnswers::deliver(Ticket ticket, long value) {
    if (const auto entry = m_open.extract(ticket)) {
        entry.mapped().deliver(value);
    }
}
