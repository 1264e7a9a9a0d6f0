#pragma once

#include "platform/NotificationCenter.h"
#include "support/Deferred.h"

#include <QList>

#include <utility>

/// A notification center that keeps what it is asked to post, and answers at once or when the test says so.
class FakeNotificationCenter final : public NotificationCenter {
public:
    QList<Request> posted;
    Authorization state = Authorization::authorized;
    int authorizationRequests = 0;
    bool answersAtOnce = true;

    FakeNotificationCenter() = default;
    ~FakeNotificationCenter() override { answerAll(false); }

    QCoro::Task<bool> requestAuthorization() override {
        ++authorizationRequests;
        co_return co_await authorization() == Authorization::authorized;
    }
    QCoro::Task<Authorization> authorization() override {
        const bool isThere = co_await answer();
        co_return isThere ? state : Authorization::notDetermined;
    }
    QCoro::Task<> post(Request request) override {
        posted.append(std::move(request));
        (void)co_await answer();
    }

    /// Gives the answers that were held back, in order.
    void answerAll(bool isThere = true) {
        for (const auto& waiting : std::exchange(m_waiting, {})) {
            waiting.deliver(isThere);
        }
    }

private:
    Deferred<bool> answer() {
        const Deferred<bool> answer;
        answersAtOnce ? answer.deliver(true) : m_waiting.append(answer);
        return answer;
    }

    QList<Deferred<bool>> m_waiting;
};
