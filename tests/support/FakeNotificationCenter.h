#pragma once

#include "platform/NotificationCenter.h"

#include <QList>

#include <utility>

/// A notification center that keeps what it is asked to post, and answers at once or when the test says so.
class FakeNotificationCenter final : public NotificationCenter {
public:
    QList<Request> posted;
    Authorization state = Authorization::authorized;
    int authorizationRequests = 0;
    bool answersAtOnce = true;

    void requestAuthorization(std::function<void(bool)> answer) override {
        ++authorizationRequests;
        later([this, answer = std::move(answer)] { answer(state == Authorization::authorized); });
    }
    void authorization(std::function<void(Authorization)> answer) override {
        later([this, answer = std::move(answer)] { answer(state); });
    }
    void post(const Request& request, std::function<void()> done) override {
        posted.append(request);
        later(std::move(done));
    }

    /// Gives the answers that were held back, in order.
    void answerAll() {
        for (const auto& answer : std::exchange(m_waiting, {})) {
            answer();
        }
    }

private:
    void later(std::function<void()> answer) {
        if (answersAtOnce) {
            answer();
        } else {
            m_waiting.append(std::move(answer));
        }
    }

    QList<std::function<void()>> m_waiting;
};
