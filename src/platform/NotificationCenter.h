#pragma once

#include <QCoro/QCoroTask>

#include <QString>

#include <memory>

/// The desktop's local notifications. Every operation starts at once, blocks nothing, never fails, and resumes its
/// caller on the main thread; it also ends when the center goes before there is an answer. Main thread only.
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

    /// Asks the user for alerts, badges and sounds; true when they were granted.
    virtual QCoro::Task<bool> requestAuthorization() = 0;

    /// Reads the current state; never asks the user.
    [[nodiscard]] virtual QCoro::Task<Authorization> authorization() = 0;

    /// Hands one notification over; ends when it was taken or refused, or waited for long enough, and does not say
    /// which.
    virtual QCoro::Task<> post(Request request) = 0;
};
