#pragma once

#include "platform/NotificationService.h"
#include "support/Deferred.h"

#include <QList>

#include <utility>

/// A notification service that keeps what it is asked to post, and answers at once or when the test says so.
class FakeNotificationService final : public NotificationService {
public:
    struct Request {
        QString title;
        QString body;
        QString identifier;
    };

    QList<Request> posted;
    Authorization state = Authorization::authorized;
    int authorizationRequests = 0;
    bool answersAtOnce = true;

    FakeNotificationService() = default;
    ~FakeNotificationService() override { answerAll(false); }

    QCoro::Task<bool> requestAuthorization() override {
        ++authorizationRequests;
        co_return co_await authorizationStatus() == Authorization::authorized;
    }
    QCoro::Task<Authorization> authorizationStatus() override {
        const bool isThere = co_await answer();
        co_return isThere ? state : Authorization::notDetermined;
    }
    QCoro::Task<> notify(QString title, QString body, QString identifier) override {
        posted.append({std::move(title), std::move(body), std::move(identifier)});
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
