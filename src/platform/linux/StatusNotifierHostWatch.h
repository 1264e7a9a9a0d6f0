#pragma once

#include <QDBusConnection>
#include <QObject>

/// Knows whether a host shows the status notifier items of the session bus, and hears when that changes. Never waits
/// for the bus. Main thread only.
class StatusNotifierHostWatch final : public QObject {
    Q_OBJECT

public:
    enum class Host { unknown, absent, present };

    explicit StatusNotifierHostWatch(QObject* parent = nullptr);

    /// Unknown until the watcher has answered, and as long as it does not.
    [[nodiscard]] Host host() const { return m_host; }

signals:
    void changed();

private slots:
    void ask();

private:
    void ownerChanged(const QString& owner);
    void settle(Host host);

    QDBusConnection m_bus = QDBusConnection::sessionBus();
    Host m_host = Host::unknown;
    int m_question = 0;
};
