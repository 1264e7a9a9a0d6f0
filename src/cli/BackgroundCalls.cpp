#include "cli/BackgroundCalls.h"

#include "cli/Pipe.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <cerrno>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include <fcntl.h>

struct BackgroundCalls::Call final {
    Deferred<ToolOutcome> answer;
    ToolOutcome outcome;
    std::thread thread;
};

/// Where the threads leave the calls they have finished. Written to by any thread, emptied by the main thread.
class BackgroundCalls::Mailbox final {
public:
    explicit Mailbox(Pipe pipe)
        : m_pipe{std::move(pipe)} {
        for (const Descriptor* end : {&m_pipe.reading, &m_pipe.writing}) {
            fcntl(end->number(), F_SETFL, O_NONBLOCK);
        }
    }

    [[nodiscard]] int descriptor() const { return m_pipe.reading.number(); }

    void put(const Call* call) {
        {
            const std::scoped_lock lock{m_mutex};
            m_finished.push_back(call);
        }
        constexpr char wake = 0;
        (void)!write(m_pipe.writing.number(), &wake, sizeof wake);
    }

    [[nodiscard]] std::vector<const Call*> takeAll() {
        std::array<char, 256> wakes{};
        while (read(m_pipe.reading.number(), wakes.data(), wakes.size()) > 0) {
        }
        const std::scoped_lock lock{m_mutex};
        return std::exchange(m_finished, {});
    }

private:
    Pipe m_pipe;
    std::mutex m_mutex;
    std::vector<const Call*> m_finished;
};

namespace {

ToolOutcome outcomeOf(const BackgroundCalls::Work& work) {
    try {
        return work();
    } catch (const std::system_error& error) {
        return launchFailure(toolName, error.code().value());
    } catch (const std::exception&) {
        return launchFailure(toolName, ENOMEM);
    }
}

}

/// Never destroyed: threads of calls that were let go may be alive until the process is not.
BackgroundCalls& BackgroundCalls::shared() {
    static auto* const calls = new BackgroundCalls;
    return *calls;
}

void BackgroundCalls::start(Work work, const Deferred<ToolOutcome>& answer) {
    if (const int error = openMailbox()) {
        answer.deliver(launchFailure(toolName, error));
        return;
    }
    auto& call = *m_calls.emplace_back(std::make_unique<Call>());
    call.answer = answer;
    try {
        call.thread = std::thread{[&call, mailbox = m_mailbox, work = std::move(work)] {
            call.outcome = outcomeOf(work);
            mailbox->put(&call);
        }};
    } catch (const std::system_error& error) {
        (void)take(&call);
        closeMailbox();
        answer.deliver(launchFailure(toolName, error.code().value()));
    }
}

int BackgroundCalls::openMailbox() {
    if (m_mailbox) {
        return 0;
    }
    if (!m_endIsNoted) {
        qAddPostRoutine([] { shared().letGo(); });
        m_endIsNoted = true;
    }
    auto pipe = Pipe::open();
    if (!pipe) {
        return pipe.error();
    }
    m_mailbox = std::make_shared<Mailbox>(std::move(*pipe));
    m_notifier = std::make_unique<QSocketNotifier>(m_mailbox->descriptor(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { collect(); });
    return 0;
}

void BackgroundCalls::closeMailbox() {
    if (!m_calls.empty()) {
        return;
    }
    if (m_notifier) {
        m_notifier->setEnabled(false);
        m_notifier.release()->deleteLater();
    }
    m_mailbox.reset();
}

void BackgroundCalls::collect() {
    std::vector<std::unique_ptr<Call>> finished;
    for (const Call* call : m_mailbox->takeAll()) {
        finished.push_back(take(call));
        finished.back()->thread.join();
    }
    closeMailbox();
    for (const auto& call : finished) {
        call->answer.deliver(std::move(call->outcome));
    }
}

std::unique_ptr<BackgroundCalls::Call> BackgroundCalls::take(const Call* call) {
    const auto position = std::ranges::find(m_calls, call, &std::unique_ptr<Call>::get);
    auto taken = std::move(*position);
    m_calls.erase(position);
    return taken;
}

void BackgroundCalls::letGo() {
    m_endIsNoted = false;
    m_notifier.reset();
    m_mailbox.reset();
    for (auto& call : m_calls) {
        call->thread.detach();
        m_letGo.push_back(std::move(call));
    }
    m_calls.clear();
}
