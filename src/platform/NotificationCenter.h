#pragma once

#include <QString>

#include <functional>
#include <memory>

/// The desktop's local notifications. Every operation answers exactly once, on the main thread, in a later turn of the
/// event loop or at once; none blocks. An answer that comes after the center is gone is dropped. Main thread only.
class NotificationCenter {
public:
    enum class Authorization { notDetermined, denied, authorized, provisional, ephemeral, unrecognized };

    /// Delivered at once, with the default sound; the identifier keeps it apart from every other.
    struct Request final {
        QString title;
        QString body;
        QString identifier;
    };

    NotificationCenter() = default;
    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;
    virtual ~NotificationCenter() = default;

    [[nodiscard]] static std::unique_ptr<NotificationCenter> standard();

    /// Asks the user for alerts, badges and sounds; answers whether they were granted.
    virtual void requestAuthorization(std::function<void(bool granted)> answer) = 0;

    /// Reads the current state; never asks the user.
    virtual void authorization(std::function<void(Authorization)> answer) = 0;

    /// Hands one notification over; `done` comes when it was taken or refused, or waited for long enough, and does not
    /// say which.
    virtual void post(const Request& request, std::function<void()> done) = 0;
};
